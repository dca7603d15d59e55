// The window "Sum": frames laid over each other and averaged before the eyes, and saved.
#pragma once

#include "blink/AwaitedFrames.h"
#include "blink/FrameMaker.h"
#include "blink/LateWork.h"
#include "blink/SumPixels.h"
#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "sky/series/SumFile.h"

#include <QDialog>
#include <QTimer>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QDoubleSpinBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace tarn {

class ElidedLabel;
class SeenPane;

class frmSum : public QDialog {
public:
    explicit frmSum(Context& context);
    ~frmSum() override;

    // These files, with a reason for those among them that are not to be used.
    // Several filters are summed where the user has selected them.
    void Sum(std::vector<std::string> paths, std::vector<std::string> left, bool isSelected);
    void FramesChanged(); // more of them are measured
    void BreakOff();

    static std::vector<keys::KeyLine> KeyLines();

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override; // Esc
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Finished {
        std::vector<std::string> paths; // of the plan's numbers
        SeriesPlan plan;
        StackResult result;
        std::shared_ptr<SumPixels> pixels;
        bool bottomUp = false;
    };
    // The last of what has come while it is summed.
    struct Growing {
        std::mutex mutex;
        std::size_t done = 0;
        std::size_t total = 0;
        std::shared_ptr<const PartialSum> sum; // null: none that has not been shown
        int shrink = 1;
        bool bottomUp = false;
    };

    QBoxLayout* MakeChoices();
    QBoxLayout* MakeProgress();
    void Begin();
    LateWork::Answer Work(AwaitedFrames::Known known, StackOrder order,
                          std::shared_ptr<Growing> growing);
    void Grown();
    void Show(FrameSamples samples, int cell, bool bottomUp);
    void End(std::shared_ptr<const Finished> finished);
    void TellLeftOut(const Finished& finished);
    void SetRunning(bool running);
    void Cancel();
    void SaveButton_Click();
    bool LeaveOtherFilters(const Finished& finished, AwaitedFrames::Known& known) const;
    void Save(const std::shared_ptr<SumFile>& file, const std::string& target, std::size_t count);
    void TellNotSaved();
    void Say(const std::string& text);

    Context& m;
    KeptPlace m_place;
    SeenPane* m_pane;
    QCheckBox* m_byScore;
    QDoubleSpinBox* m_sigma;
    QPushButton* m_again;
    QPushButton* m_save;
    QListWidget* m_leftOut;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    ElidedLabel* m_said;
    QTimer m_rest; // of a view that changes
    AwaitedFrames m_awaited;
    std::vector<std::string> m_left;
    bool m_isSelected = false;
    std::string m_saves; // path of the file that is being written; empty: none
    AwaitedFrames::Known m_known;
    std::shared_ptr<Growing> m_growing;
    std::shared_ptr<const Finished> m_finished;
    std::unique_ptr<FrameMaker> m_maker;
    std::unique_ptr<LateWork> m_work;
};

} // namespace tarn
