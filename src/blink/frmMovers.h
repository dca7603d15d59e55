// The window "Find What Moves": what moves among the stars of a series, with a strip of cuts for
// each; a click blinks there.
#pragma once

#include "blink/AwaitedFrames.h"
#include "blink/BlinkOrder.h"
#include "blink/LateWork.h"
#include "blink/MoverStrips.h"
#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"

#include <QDialog>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QBoxLayout;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace tarn {

class ElidedLabel;

class frmMovers : public QDialog {
public:
    explicit frmMovers(Context& context);
    ~frmMovers() override;

    // In these files, with a reason for those among them that are not to be used.
    void Find(std::vector<std::string> paths, std::vector<std::string> left);
    void FramesChanged(); // more of them are measured
    void BreakOff();

    std::function<void(const std::vector<std::string>& paths, const BlinkPlace& at)> onBlink;

    static std::vector<keys::KeyLine> KeyLines();

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override; // Esc
    void keyPressEvent(QKeyEvent* event) override;

private:
    // How far the search is; of its own threads.
    struct Search {
        std::atomic<std::size_t> done = 0;
        std::atomic<std::size_t> total = 0;
    };

    void MakeTable();
    QBoxLayout* MakeActs();
    void Begin(AwaitedFrames::Known known);
    LateWork::Answer Work(AwaitedFrames::Known known, const std::shared_ptr<Search>& search,
                          std::atomic<bool>& givenUp);
    void ShowSearch();
    void End(std::shared_ptr<const FoundMovers> found);
    void FillRow(int row);
    const Mover* Current() const;
    void SetRunning(bool running);
    void Cancel();
    void BlinkCurrent();
    void KeepCurrent();
    void CopyTexts();

    Context& m;
    KeptPlace m_place;
    QTableWidget* m_table;
    ElidedLabel* m_said;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QPushButton* m_blink;
    QPushButton* m_keep;
    QPushButton* m_copy;
    AwaitedFrames m_awaited;
    std::vector<std::string> m_left;
    std::shared_ptr<Search> m_search;
    std::shared_ptr<const FoundMovers> m_found;
    std::unique_ptr<LateWork> m_work;
};

} // namespace tarn
