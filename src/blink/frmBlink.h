// The window "Blink": the frames of a series laid over each other by their stars and shown one
// after the other, at one stretch and one place, so that the stars stand still.
#pragma once

#include "blink/AwaitedFrames.h"
#include "blink/BlinkOrder.h"
#include "blink/FrameMaker.h"
#include "blink/LateWork.h"
#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "sky/stack/SeriesPlan.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QAbstractButton;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QPushButton;
class QSlider;
class QToolButton;

namespace tarn {

class ElidedLabel;
class SeenPane;

class frmBlink : public QDialog {
public:
    explicit frmBlink(Context& context);
    ~frmBlink() override;

    // Measured first where they are not yet.
    void Blink(std::vector<std::string> paths, std::optional<BlinkPlace> at = {});
    void FramesChanged(); // more of them are measured
    void MarksChanged();
    void BreakOff(); // nothing is made any more

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override; // Esc
    void keyPressEvent(QKeyEvent* event) override;

private:
    // The layout.
    QBoxLayout* MakePlayer();
    QBoxLayout* MakeChoices();
    QToolButton* WayButton(QBoxLayout& bar, const char* name, const char* caption, const char* tip,
                           BlinkWay way);

    // From paths to frames.
    void Plan(AwaitedFrames::Known known);
    void Planned(const SeriesPlan& plan, const std::vector<JudgedFrame>& known);
    void MakerTold();
    void TakeGround();

    // Play.
    void SetPlaying(bool playing);
    void SetWay(BlinkWay way);
    void SetRate(int rate);
    void Tick();
    void Expect();
    void Step(int by);
    void GoToEnd(bool last);
    void Arrange();
    void Moved();
    void ShowCurrent();
    void ShowProgress();
    void ShowView();
    void SetDifference(bool shown);
    void MarkCurrent(const MarkChange& change);

    struct Key;
    static const std::vector<Key>& Keys();

    Context& m;
    KeptPlace m_place;
    SeenPane* m_pane;
    QPushButton* m_play;
    std::array<QToolButton*, 3> m_ways{};
    QSlider* m_rate;
    QLabel* m_rateSaid;
    QCheckBox* m_byScore;
    QCheckBox* m_skips;
    QCheckBox* m_differs;
    ElidedLabel* m_said;
    QLabel* m_zoomSaid;

    AwaitedFrames m_awaited;
    std::vector<BlinkFrame> m_frames;   // that are laid over each other
    std::vector<FrameMap> m_maps;       // of these onto the one that all lie on, pixels
    std::vector<std::string> m_leftOut; // reasons, one for each that is not
    std::optional<BlinkPlace> m_goTo;
    BlinkOrder m_order;
    bool m_isOld = false; // the order: what was marked leaves it with the next step
    bool m_plays = false;
    QTimer m_tick;
    QTimer m_rest;         // of a view that changes
    QElapsedTimer m_clock; // of what is played
    double m_due = 0;      // milliseconds of the clock, of the next frame
    std::unique_ptr<FrameMaker> m_maker;
    std::unique_ptr<LateWork> m_planning;
};

} // namespace tarn
