// The time of a show: its window, what is changed while it runs and put back at its end, and the
// wait for the user or the clock.
#pragma once

#include "desk/Context.h"
#include "slides/ShowZoom.h"
#include "slides/SlideArithmetic.h"
#include "slides/frmSlideShow.h"

#include <deque>
#include <functional>
#include <memory>

namespace tarn {

class ShowTime {
public:
    // `titleOn`: whether slides have titles, from one show to the next.
    ShowTime(Context& context, SlideLayout layout, bool& titleOn);
    ~ShowTime();
    ShowTime(const ShowTime&) = delete;
    ShowTime& operator=(const ShowTime&) = delete;

    // The window goes, and everything comes back as it was; may come twice. The loop leaves at its
    // next round.
    void End();

    // The loop has left: no show runs any more.
    void Close();

    std::function<void()> onEnd;   // what the kind of show has to put back, before the main window
    std::function<void()> onAgain; // the slide is to be shown anew

    // The pictures that stand, as turned, and their painting in another view; `zoomed` says that
    // they are seen whole no more, or again.
    std::function<std::vector<PixelSize>()> pictures;
    std::function<void(bool zoomed)> onView;

    // Whether the loop is to leave.
    bool Ends() const;

    // A key from the window or from another room. What comes while a key is at work is its own
    // effect, and counts only where it ends the show.
    void KeyUp(int keycode);
    // A key that is held steps once for each picture that was painted.
    bool KeyHeld(int keycode); // whether it is a step
    // The slide anew once the keys before are done, however often it is asked for.
    void ShowAgain();

    // Lets events in and hands on each key, until the picture is to be left: by Slideloop, by a
    // click, by the clock, or because the show ends.
    void Wait(const std::function<void(int keycode)>& dispatch);

    // Lets events in between two files.
    void Pump();

    // Effects that all shows share; each leaves the window to be refreshed.
    void ShowHelp(int page);
    void NextTextColor();
    void NextTextFont();
    void NextTextSize();
    void NextBackground();
    void ToggleCameraSettings();
    void ZoomBy(int steps); // at the pointer; by 0 back to whole pictures

    ShowZoom& Zoom() { return m_zoom; }
    frmSlideShow& Window() { return *m_window; }
    ShowSignals& Signals() { return m_signals; }
    bool& TitleOn() { return m_titleOn; }
    const SlideScreen& Screen() const { return m_screen; }
    SlideLayout Layout() const { return m_layout; }

    // The sizes to which pictures will be scaled, for a worker that prepares them: none while they
    // are zoomed.
    std::function<std::vector<QSize>(QSize)> ShownSizes() const;

private:
    void TakeKey();
    void WaitForClock();
    bool TakeAgain();
    void TakeView();

    Context& m;
    SlideLayout m_layout;
    SlideScreen m_screen;
    ShowZoom m_zoom;
    ShowSignals m_signals;
    bool& m_titleOn;
    std::unique_ptr<frmSlideShow> m_window;
    std::deque<int> m_keys; // that came before they could be looked at
    bool m_again = false;
    bool m_dispatching = false;
    bool m_ended = false;
};

} // namespace tarn
