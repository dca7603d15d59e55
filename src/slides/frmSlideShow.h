// The window of the shows: it covers the screen, shows what it is given from one backing picture,
// and turns keys and mouse into the signals that the loop of a show reads. It decides nothing.
#pragma once

#include "desk/commands/Commands.h"
#include "desk/state/SlideState.h"
#include "slides/ShowSignals.h"
#include "widgets/WheelNotches.h"

#include <QElapsedTimer>
#include <QImage>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QLineEdit;

namespace tarn {

// A line of text over the backing picture; place and width in device pixels. It has a ground of
// the background's colour, and is moved up where it would reach below the window.
struct SlideLine {
    std::string text;
    int left = 0;
    int top = 0;
    int width = 0;
};

class frmSlideShow : public QWidget {
public:
    frmSlideShow(const SlideState& state, ShowSignals& told, SlideCommands& slides);
    ~frmSlideShow() override;

    // Covers the screen on which that window stands.
    void ShowOver(const QWidget& window);

    // Fills the backing picture, and paints into it at device pixels. Seen after Refresh.
    void Clear();
    void PutPicture(const QImage& picture, int left, int top);
    void SetLines(std::vector<SlideLine> lines) { m_lines = std::move(lines); }
    // Round the picture that stands in these device pixels; an empty one takes it away.
    void SetFrame(const QRect& picture) { m_frame = picture; }
    void Refresh() { repaint(); }
    const QImage& Backing() const { return m_backing; }
    const std::vector<SlideLine>& Lines() const { return m_lines; }
    const QRect& Frame() const { return m_frame; }

    // How much of the time until the next picture is over, 0 to 1, as a thin line at the bottom; 0
    // takes it away.
    void ShowProgress(double part);

    // The pointer over the slide; it hides when the mouse has rested for two seconds.
    void SetPointer(Qt::CursorShape shape);

    // The program's window of this object name comes to stand above this one.
    void Lift(const char* window);
    // The keyboard comes back here from a window that was just opened, which gets it a moment
    // later.
    void TakeFocusBack();
    void LetOthersGo(); // and what comes up from now on is none of this window's

    void SlideDone() { m_slides.SlideDone(); }
    void SlideKeyUp(int keycode) { m_slides.SlideKeyUp(keycode); }
    void SlideAdvance() { m_signals.SlideNext = true; }

    // Where the pointer is, as long as it is seen.
    void PutPointer(ViewWish& wish) const;

    int BottomLine() const;

    // A key held down repeats; whether it steps by that.
    std::function<bool(int keycode)> onHeld;

    static QFont TextFont(const SlideState& state);
    static QColor TextColor(const SlideState& state);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // A key that is down, and whether it has acted by being held.
    struct Pressed {
        int keycode;
        int acts; // the code with what is held down beside it
        bool repeated = false;
    };

    Pressed* Find(int keycode);
    void ButtonTimer_Timer();
    void Click(Qt::MouseButton button, QPoint place);
    void DragTo(QPointF place);
    void PutPlace(ViewWish& wish, QPointF place) const;
    void ClickPicture(Qt::MouseButton button, int x);
    int BackKey() const;
    int CodeOf(const QKeyEvent& event) const;
    void DrawFrame(QPainter& painter) const;
    void DrawLine(QPainter& painter, const SlideLine& line) const;
    void ShowCursor();

    const SlideState& m_state;
    ShowSignals& m_signals;
    SlideCommands& m_slides;
    QImage m_backing;
    std::vector<SlideLine> m_lines;
    QRect m_frame;
    double m_progress = 0;

    QTimer m_buttonTimer; // ButtonTimer
    QLineEdit* m_name;    // SlideNameText
    std::vector<Pressed> m_pressed;
    int m_releasedKey = 0;
    unsigned long m_releasedAt = 0;
    bool m_mousePressed = false;
    QPointF m_pressedAt; // then the place of the last drag
    bool m_dragged = false;
    WheelNotches m_wheel;

    QTimer m_pointerTimer;
    Qt::CursorShape m_pointer = Qt::ArrowCursor;
    QPoint m_mouseAt{-1, -1};
    QElapsedTimer m_focusAsked;              // since TakeFocusBack, until it has worked
    std::vector<QPointer<QWindow>> m_lifted; // belong to this window until it goes
};

} // namespace tarn
