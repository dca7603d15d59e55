#include "slides/ShowTime.h"

#include "common/keys.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "slides/SlideKeys.h"
#include "slides/SlidePainter.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QScopedValueRollback>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

constexpr int kRound = 10;      // milliseconds of a round of the wait
constexpr int kClockStep = 200; // milliseconds between two looks at the clock
constexpr int kSecond = 1000;

SlideScreen ScreenUnder(const QWidget& window) {
    const double unit = window.screen()->devicePixelRatio();
    const QSizeF pixels = QSizeF(window.screen()->size()) * unit;
    return SlideScreenOf(pixels.width(), pixels.height(), unit);
}

// The row after `index`, from the last one back to `first`.
template <typename Rows> void TriggerNext(const Rows& rows, int& index, int first) {
    const int last = static_cast<int>(rows.size()) - 1;
    index = index >= last ? first : index + 1;
    rows[static_cast<std::size_t>(index)]->trigger();
}

} // namespace

ShowTime::ShowTime(Context& context, SlideLayout layout, bool& titleOn)
    : m(context), m_layout(layout), m_screen(ScreenUnder(*context.controls.FileListBox->window())),
      m_zoom(layout, m_screen), m_titleOn(titleOn),
      m_window(std::make_unique<frmSlideShow>(context.state, m_signals, context.slides)) {
    ProgramState& s = m.state;
    s.SlidesPerPage = AreasOf(layout);
    s.SlideViewing = true;
    s.SlideZoomed = false;
    m_window->onHeld = [this](int keycode) { return KeyHeld(keycode); };
    // The main window goes behind the show, so that the desktop is never seen between them.
    m_window->ShowOver(*m.controls.FileListBox->window());
    m.navigation.SetFilterShown(false);
    m.copies.SetCaptionShown(false);
    m.shell.SetMainShown(false);
    m.desktop.HoldAwake(true);
}

ShowTime::~ShowTime() {
    Close();
}

void ShowTime::Close() {
    End();
    m.state.SlideViewing = false;
    m.state.SlideZoomed = false;
    m_signals.Slideloop = false;
    m.state.SlidesPerPage = 0;
}

void ShowTime::End() {
    m_signals.SlideStop = true;
    if (m_ended) return;
    m_ended = true;
    m.desktop.HoldAwake(false);
    m_window->LetOthersGo();
    if (onEnd) onEnd();
    m.shell.SetMainShown(true);
    if (!m.state.Closing) {
        m.navigation.SetFilterShown(true);
        m.copies.SetCaptionShown(true);
    }
    m_window->hide();
}

bool ShowTime::Ends() const {
    return m_signals.SlideStop || m.state.Closing || m.events.ProgramEnds();
}

void ShowTime::KeyUp(int keycode) {
    if (keycode == keys::kEscape || keycode == 'X') End();
    if (m_dispatching) return;
    m_signals.SlideKey = keycode;
    m_keys.push_back(keycode);
}

// What is at work on the slide shows it anew by itself.
void ShowTime::ShowAgain() {
    if (!m_dispatching) m_again = true;
}

bool ShowTime::TakeAgain() {
    if (!m_again || !m_keys.empty()) return false;
    m_again = false;
    if (onAgain) onAgain();
    return true;
}

// A picture that is being left is not painted once more: the next one is seen so.
void ShowTime::TakeView() {
    if (!m_signals.Slideloop) return;
    const ViewWish wish = std::exchange(m_signals.View, {});
    if (wish == ViewWish() || !pictures || Ends()) return;
    const bool before = m_zoom.IsZoomed();
    if (!m_zoom.Follow(wish, pictures())) return;
    m.state.SlideZoomed = m_zoom.IsZoomed();
    const bool turnsOver = m_zoom.IsZoomed() != before; // for which all pixels are fetched
    if (!turnsOver) return onView(false);
    const Qt::CursorShape pointer = m_window->cursor().shape();
    m_window->SetPointer(Qt::WaitCursor);
    onView(true);
    m_window->SetPointer(pointer);
}

void ShowTime::ZoomBy(int steps) {
    m_signals.View.steps += steps;
    m_signals.View.fit = steps == 0;
    m_window->PutPointer(m_signals.View);
}

std::function<std::vector<QSize>(QSize)> ShowTime::ShownSizes() const {
    if (m_zoom.IsZoomed()) return {};
    return SizesIn(m_layout, m_screen);
}

bool ShowTime::KeyHeld(int keycode) {
    const SlideEffect effect = m_layout == SlideLayout::One
                                   ? FullEffectOf(keycode, m.state.SlideAltArrowKeys)
                                   : ManyEffectOf(keycode);
    if (!IsSlideStep(effect)) return false;
    if (m_keys.empty()) KeyUp(keycode);
    return true;
}

void ShowTime::Pump() {
    m.events.Pump();
}

void ShowTime::TakeKey() {
    if (m_keys.empty()) {
        m.events.Sleep(kRound);
        m.events.Pump();
    }
    m_signals.SlideKey = keys::kNone;
    if (m_keys.empty()) return;
    m_signals.SlideKey = m_keys.front();
    m_keys.pop_front();
}

void ShowTime::Wait(const std::function<void(int)>& dispatch) {
    const ProgramState& s = m.state;
    m_signals.Slideloop = true;
    while (m_signals.Slideloop && !Ends()) {
        TakeKey();
        if (Ends()) return;
        {
            const QScopedValueRollback<bool> dispatching(m_dispatching, true);
            dispatch(m_signals.SlideKey);
            TakeAgain();
            TakeView();
        }
        if (m_signals.Slideloop && s.SlideDelay > 0) {
            WaitForClock();
            // Only keys lose their effect.
            const QScopedValueRollback<bool> dispatching(m_dispatching, true);
            if (m_signals.SlideMouse != 0 && !Ends()) dispatch(keys::kNone);
        }
        if (m_signals.SlideNext) m_signals.Slideloop = false;
    }
}

// Any key ends it and has no other effect, save those that end the show.
void ShowTime::WaitForClock() {
    m_window->SetPointer(Qt::BusyCursor);
    const long whole = m.state.SlideDelay * kSecond;
    for (long waited = 0; waited < whole && m_keys.empty() && m_signals.SlideMouse == 0 &&
                          !m_signals.SlideNext && !m_again && !Ends();
         waited += kClockStep) {
        m_window->ShowProgress(double(waited) / double(whole));
        m.events.Sleep(kClockStep);
        m.events.Pump();
        TakeView();
    }
    TakeAgain();
    m_keys.clear();
    m_window->ShowProgress(0);
    m_window->SetPointer(Qt::ArrowCursor);
    m_signals.Slideloop = false;
}

void ShowTime::ShowHelp(int page) {
    m.shell.ShowHelpPage(page);
    m_window->Lift("frmHelp");
}

void ShowTime::NextTextColor() {
    TriggerNext(m.controls.SlideTextColorButton, m.state.SlideTextColorIndex, 0);
}

void ShowTime::NextTextFont() {
    TriggerNext(m.controls.SlideTextButton, m.state.SlideFontIndex, 1);
}

void ShowTime::NextTextSize() {
    TriggerNext(m.controls.SlideTextSizeButton, m.state.SlideFontSizeIndex, 1);
}

void ShowTime::NextBackground() {
    TriggerNext(m.controls.SlideBackgroundButton, m.state.SlideBackgroundIndex, 1);
}

void ShowTime::ToggleCameraSettings() {
    m.controls.CameraSettingsButton->trigger();
}

} // namespace tarn
