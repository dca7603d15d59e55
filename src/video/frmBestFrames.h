// The window "Best Frames": how sharp each frame of the clip that is shown is, as a graph; the best
// are marked in it, looked at in the clip's pane and taken out as files.
#pragma once

#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "sky/night/LateRating.h"
#include "video/BestChoice.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace tarn {

class ElidedLabel;
class MeasureGraph;

// The clip in the window.
struct ClipInPane {
    std::function<int()> frames;         // 0: none is open
    std::function<void(int)> show;       // this frame
    std::function<void(QPoint)> shiftBy; // what is shown, pixels of the clip
};

class frmBestFrames : public QDialog {
public:
    frmBestFrames(Context& context, ClipInPane pane);

    void Form_Load();
    void FollowCurrent();
    void BreakOff();  // no more is rated
    void StopBlink(); // the frame stays, where it really stands

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override; // Esc
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The layout.
    QBoxLayout* MakeChoosers();
    QBoxLayout* MakeTaking();
    QBoxLayout* MakeProgress();
    QCheckBox* Check(QBoxLayout& row, const char* name, const char* caption, const char* tip,
                     bool checked, std::function<void(bool)> changed);

    void Begin(const std::string& path);
    void TakeNews();
    void FillGraph();
    void ShowChoice();
    void ShowActs();
    void ShowSummary();
    void ShowWanted();

    void ChooseByNumber();
    void NumberChanged();
    void InPercentChanged(bool inPercent);
    void LimitMoved(double limit);
    void PointClicked(int point);
    void BlinkButton_Click();
    void ShowBlink();
    void EndBlink();
    void CancelButton_Click();

    // Taking out.
    void TakeButton_Click();
    TakeOrder OrderFor(const std::string& folder) const;
    bool MayTake(const TakeOrder& order, std::vector<std::string>& standing);
    Outcome Take(const TakeOrder& order, const std::vector<std::string>& standing);

    Context& m;
    ClipInPane m_pane;
    KeptPlace m_place;
    MeasureGraph* m_graph;
    QSpinBox* m_number;
    QCheckBox* m_percent;
    QCheckBox* m_sorted;
    QPushButton* m_blink;
    QPushButton* m_take;
    QPushButton* m_cancel;
    QCheckBox* m_byTime;
    ElidedLabel* m_said;
    ElidedLabel* m_summary;
    QProgressBar* m_progress;

    std::string m_path; // of the clip that is rated; empty: none
    std::vector<RatedFrame> m_frames;
    std::shared_ptr<const RatedClip> m_whole; // once it is
    FrameNumbers m_shown;                     // the graph's points
    FrameNumbers m_chosen;                    // the sharpest first
    std::optional<double> m_limit;            // dragged; else the number counts
    std::vector<std::size_t> m_looked;        // at the last two frames
    std::array<std::size_t, 2> m_pair{};      // that blink
    std::size_t m_turn = 0;
    QTimer m_blinking;
    QElapsedTimer m_filled;               // since the graph was
    qint64 m_fillTook = 0;                // milliseconds
    std::unique_ptr<LateRating> m_rating; // last: it calls back
};

} // namespace tarn
