// The shows: one picture on the whole screen, two or four, and two to be compared; and the time
// after which they go on by themselves.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "slides/SlideArithmetic.h"
#include "slides/frmSlideDelay.h"

#include <memory>
#include <string>

namespace tarn {

class ShowTime;
struct ShowSignals;
class frmSlideShow;

class SlideRoom : public SlideCommands, public Room {
public:
    explicit SlideRoom(Context& context) : m(context) {}

    void ConnectControls() override;
    void BreakOff() override { SlideDone(); } // what a show changed is not what is saved

    // Each runs a whole show and returns at its end; nothing while one runs already, while a video
    // is shown, or for an empty list.
    void SlideButton_Click();
    void Slides4Button_Click();
    void Slides4LButton_Click();
    void Slides2Button_Click();
    void Slides2VButton_Click();
    void SlidesC2Button_Click();
    void SlidesC2VButton_Click();

    void SetSlideShowAutoUpdateButton_Click();
    void ResetSlideShowAutoUpdateButton_Click();

    void SlideDone() override;
    void SlideKeyUp(int keycode) override;
    void ShowSlideAgain() override;
    void CompareRows(int stays, int other) override;

    frmSlideShow* Window() const; // null while no show runs
    ShowSignals* Signals() const; // the same

private:
    bool MayStart() const;
    void ShowMany(SlideLayout layout, const std::string& beside = {});
    frmSlideDelay& DelayWindow();

    Context& m;
    bool m_landscape = false; // SlidesLandscape
    bool m_vertical = false;  // SlidesVertical
    bool m_titleOn = true;    // SlideTitleOn
    ShowTime* m_time = nullptr;
    std::unique_ptr<frmSlideDelay> m_delay; // made when it is first asked for
};

} // namespace tarn
