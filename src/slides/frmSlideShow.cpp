#include "slides/frmSlideShow.h"

#include "common/colors.h"
#include "common/keys.h"
#include "common/mark.h"
#include "platform/QtText.h"
#include "widgets/Themes.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cstdlib>

namespace tarn {

namespace {

constexpr int kBottom = 20;           // logical pixels of the strip below BottomLine
constexpr int kHeld = 500;            // milliseconds until a held press shows the name
constexpr int kFocusComes = 1000;     // milliseconds after which a window was activated by hand
constexpr int kPointerRests = 2000;   // milliseconds until the pointer hides
constexpr double kProgressHeight = 2; // logical pixels
constexpr int kFrameWidth = 3;        // logical pixels

// As in the main window these act with Ctrl, too.
bool IsZoomKey(int keycode) {
    return keycode == keys::kPlus || keycode == keys::kMinus || keycode == '9';
}

} // namespace

frmSlideShow::frmSlideShow(const SlideState& state, ShowSignals& told, SlideCommands& slides)
    : m_state(state), m_signals(told), m_slides(slides),
      m_name(new QLineEdit(QStringLiteral("Filename"), this)) {
    setObjectName(QStringLiteral("frmSlideShow"));
    setWindowTitle(QStringLiteral("Tarn_View - Slides"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_OpaquePaintEvent); // every pixel is painted once, so nothing flickers
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    m_name->setObjectName(QStringLiteral("SlideNameText"));
    m_name->setAccessibleName(QStringLiteral("Name of the picture"));
    m_name->setReadOnly(true);
    m_name->setFocusPolicy(Qt::NoFocus);
    m_name->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_name->hide();
    m_buttonTimer.setObjectName(QStringLiteral("ButtonTimer"));
    m_buttonTimer.setSingleShot(true);
    m_buttonTimer.setInterval(kHeld);
    connect(&m_buttonTimer, &QTimer::timeout, this, [this] { ButtonTimer_Timer(); });
    m_pointerTimer.setSingleShot(true);
    m_pointerTimer.setInterval(kPointerRests);
    connect(&m_pointerTimer, &QTimer::timeout, this, [this] { ShowCursor(); });
    qApp->installEventFilter(this);
}

frmSlideShow::~frmSlideShow() {
    LetOthersGo();
}

void frmSlideShow::LetOthersGo() {
    qApp->removeEventFilter(this);
    for (const QPointer<QWindow>& window : m_lifted)
        if (window) window->setTransientParent(nullptr);
    m_lifted.clear();
}

void frmSlideShow::ShowOver(const QWidget& window) {
    setScreen(window.screen());
    setGeometry(window.screen()->geometry());
    m_pointerTimer.start();
    showFullScreen();
    raise();
    activateWindow();
    setFocus();
}

int frmSlideShow::BottomLine() const {
    return height() - kBottom;
}

QFont frmSlideShow::TextFont(const SlideState& state) {
    QFont font(ToQt(state.SlideFont));
    const double points = ToQt(state.SlideFontSize).toDouble();
    if (points > 0) font.setPointSizeF(points);
    return font;
}

QColor frmSlideShow::TextColor(const SlideState& state) {
    return QColor::fromRgb(
        QRgb(RgbFromLong(state.SlideTextColors.at(std::size_t(state.SlideTextColorIndex)))));
}

void frmSlideShow::Clear() {
    const double unit = devicePixelRatioF();
    const QSize pixels = (QSizeF(size()) * unit).toSize();
    if (m_backing.size() != pixels) m_backing = QImage(pixels, QImage::Format_RGB32);
    m_backing.setDevicePixelRatio(1);
    m_backing.fill(QColor::fromRgb(QRgb(m_state.SlideBackground)));
    m_lines.clear();
}

void frmSlideShow::PutPicture(const QImage& picture, int left, int top) {
    QPainter(&m_backing).drawImage(left, top, picture);
}

void frmSlideShow::ShowProgress(double part) {
    const bool changed = part != m_progress;
    m_progress = part;
    const int line = int(kProgressHeight) + 1;
    if (changed) update(0, height() - line, width(), line);
}

void frmSlideShow::resizeEvent(QResizeEvent* event) {
    m_name->setGeometry(20, 10, std::max(1, width() - 40), m_name->sizeHint().height());
    QWidget::resizeEvent(event);
}

void frmSlideShow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor ground = QColor::fromRgb(QRgb(m_state.SlideBackground));
    if (m_backing.isNull()) {
        painter.fillRect(rect(), ground);
        return;
    }
    QImage backing = m_backing; // shares the pixels
    backing.setDevicePixelRatio(devicePixelRatioF());
    painter.drawImage(0, 0, backing);
    painter.setFont(TextFont(m_state));
    for (const SlideLine& line : m_lines) DrawLine(painter, line);
    DrawFrame(painter);
    if (m_progress > 0)
        painter.fillRect(
            QRectF(0, height() - kProgressHeight, width() * m_progress, kProgressHeight),
            TextColor(m_state));
}

// Light and dark, so that it is seen on any picture.
void frmSlideShow::DrawFrame(QPainter& painter) const {
    if (m_frame.isEmpty()) return;
    const double unit = devicePixelRatioF();
    const QRectF place(m_frame.left() / unit, m_frame.top() / unit, m_frame.width() / unit,
                       m_frame.height() / unit);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Themed(Qt::black), kFrameWidth + 2));
    painter.drawRect(place);
    painter.setPen(QPen(Themed(QColor(0xFF, 0xB3, 0x00)), kFrameWidth));
    painter.drawRect(place);
}

void frmSlideShow::DrawLine(QPainter& painter, const SlideLine& line) const {
    const double unit = devicePixelRatioF();
    const QFontMetricsF metrics(painter.font());
    const double top = std::min(line.top / unit, height() - metrics.height());
    const double left = line.left / unit;
    const QRectF place(left, top, std::min(line.width / unit, width() - left), metrics.height());
    const QString text = metrics.elidedText(ToQt(line.text), Qt::ElideMiddle, place.width());
    QRectF ground = place; // only under the text: it may stand over a picture
    ground.setWidth(std::min(place.width(), metrics.horizontalAdvance(text)));
    painter.fillRect(ground, QColor::fromRgb(QRgb(m_state.SlideBackground)));
    painter.setPen(TextColor(m_state));
    painter.drawText(QPointF(place.left(), top + metrics.ascent()), text);
}

frmSlideShow::Pressed* frmSlideShow::Find(int keycode) {
    for (Pressed& each : m_pressed)
        if (each.keycode == keycode) return &each;
    return nullptr;
}

// With Ctrl the keys of the zoom and of the stars count, and with Shift the arrows where there are
// several pictures, each as another key.
int frmSlideShow::CodeOf(const QKeyEvent& event) const {
    const Qt::KeyboardModifiers with =
        event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const int key = keys::KeyCode(event.key());
    if (with == Qt::ControlModifier && key >= '0' && key <= '0' + kMostStars)
        return keys::kControl + key;
    if (with == Qt::ControlModifier && IsZoomKey(key)) return key;
    if (with) return keys::kNone;
    const bool arrow = key >= keys::kLeft && key <= keys::kDown;
    const bool frames =
        arrow && (event.modifiers() & Qt::ShiftModifier) && m_state.SlidesPerPage > 1;
    return frames ? keys::kShift + key : key;
}

void frmSlideShow::keyPressEvent(QKeyEvent* event) {
    const int acts = CodeOf(*event);
    if (acts == keys::kNone) return;
    const int keycode = keys::KeyCode(event->key());
    // The window system may send a repeat as a release and a press of the same instant.
    const bool halves = keycode == m_releasedKey && event->timestamp() == m_releasedAt &&
                        event->spontaneous() && m_releasedAt != 0;
    const bool repeats = event->isAutoRepeat() || halves;
    if (!Find(keycode))
        m_pressed.push_back({keycode, acts, event->isAutoRepeat()}); // the show's own key
    if (!repeats) *Find(keycode) = {keycode, acts};
    // What steps while it is held does not step once more on its release; any other key acts there.
    if (repeats && onHeld && onHeld(acts)) Find(keycode)->repeated = true;
}

void frmSlideShow::keyReleaseEvent(QKeyEvent* event) {
    const int keycode = keys::KeyCode(event->key());
    const Pressed* pressed = Find(keycode);
    if (!pressed || event->isAutoRepeat()) return;
    const int acts = pressed->repeated ? keys::kNone : pressed->acts;
    std::erase_if(m_pressed, [keycode](const Pressed& each) { return each.keycode == keycode; });
    m_releasedKey = keycode;
    m_releasedAt = event->timestamp();
    if (acts != keys::kNone) SlideKeyUp(acts);
}

// The releases go to another window.
void frmSlideShow::focusOutEvent(QFocusEvent* event) {
    m_pressed.clear();
    QWidget::focusOutEvent(event);
}

void frmSlideShow::mousePressEvent(QMouseEvent* event) {
    m_mousePressed = true;
    m_dragged = false;
    m_pressedAt = event->position();
    if (event->button() == Qt::LeftButton && m_state.SlidesPerPage == 1) m_buttonTimer.start();
}

void frmSlideShow::ButtonTimer_Timer() {
    QFont font(ToQt(m_state.SlideFont));
    m_name->setFont(font);
    m_name->setText(ToQt(m_state.SlideNameOnly));
    m_name->show();
}

void frmSlideShow::mouseReleaseEvent(QMouseEvent* event) {
    m_buttonTimer.stop();
    const bool ours = m_mousePressed && !m_dragged;
    m_mousePressed = m_dragged = false;
    ShowCursor();
    if (m_name->isVisible())
        m_name->hide();
    else if (ours)
        Click(event->button(), event->position().toPoint());
}

void frmSlideShow::Click(Qt::MouseButton button, QPoint place) {
    if (place.y() <= BottomLine())
        ClickPicture(button, place.x());
    else if (button == Qt::LeftButton)
        SlideDone();
    else
        SlideKeyUp('Y');
}

void frmSlideShow::ClickPicture(Qt::MouseButton button, int x) {
    const bool right = button == Qt::RightButton;
    if (!m_state.SlideViewing) {
        if (!right) SlideDone();
        return;
    }
    const bool paging = m_state.SlidesPerPage > 1 && (m_state.Slides4Mouse || m_state.SlideCompare);
    if (paging && button != Qt::MiddleButton)
        m_signals.SlideMouse = right ? kSlideRight : kSlideLeft;
    else if (right)
        SlideKeyUp('D');
    else if (2 * x > width())
        SlideAdvance();
    else
        SlideKeyUp(BackKey());
}

// In the alternate layout the arrow turns.
int frmSlideShow::BackKey() const {
    return m_state.SlideAltArrowKeys ? 'P' : keys::kUp;
}

void frmSlideShow::wheelEvent(QWheelEvent* event) {
    event->accept();
    const int notches = m_wheel.Turned(*event);
    if (event->modifiers() & Qt::ControlModifier) {
        m_signals.View.steps += notches;
        PutPlace(m_signals.View, event->position());
        return;
    }
    for (int i = 0; i < std::abs(notches); ++i) SlideKeyUp(notches < 0 ? 'N' : 'P');
}

// What is zoomed follows the pointer; the release does nothing more then.
void frmSlideShow::DragTo(QPointF place) {
    const QPointF way = (place - m_pressedAt) * devicePixelRatioF();
    if (!m_dragged && (place - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
        return;
    m_dragged = true;
    m_buttonTimer.stop();
    m_name->hide();
    m_pressedAt = place;
    m_signals.View.panX += way.x();
    m_signals.View.panY += way.y();
    PutPlace(m_signals.View, place);
}

void frmSlideShow::PutPlace(ViewWish& wish, QPointF place) const {
    wish.atX = std::max(0, int(place.x() * devicePixelRatioF()));
    wish.atY = std::max(0, int(place.y() * devicePixelRatioF()));
}

void frmSlideShow::PutPointer(ViewWish& wish) const {
    const QPoint place = mapFromGlobal(QCursor::pos());
    if (!m_pointerTimer.isActive() || !rect().contains(place)) return;
    PutPlace(wish, place);
}

void frmSlideShow::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->globalPosition().toPoint();
    if (place == m_mouseAt) return; // the window system says so when a window appears
    m_mouseAt = place;
    m_pointerTimer.start();
    if (m_mousePressed && m_state.SlideZoomed && (event->buttons() & Qt::LeftButton))
        DragTo(event->position());
    ShowCursor();
}

void frmSlideShow::SetPointer(Qt::CursorShape shape) {
    m_pointer = shape;
    ShowCursor();
}

void frmSlideShow::ShowCursor() {
    Qt::CursorShape shape = m_pointerTimer.isActive() ? m_pointer : Qt::BlankCursor;
    if (shape == Qt::ArrowCursor && m_state.SlideZoomed)
        shape = m_dragged ? Qt::ClosedHandCursor : Qt::OpenHandCursor;
    if (cursor().shape() != shape) setCursor(shape);
}

void frmSlideShow::closeEvent(QCloseEvent* event) {
    event->accept(); // or the session's end would be held up
    SlideDone();
}

// A window that comes up during the show belongs to this one. The toolkit sends the event before
// the window system is asked, which would be too late.
bool frmSlideShow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::WindowActivate && m_focusAsked.isValid() && watched != this &&
        watched->isWidgetType() && static_cast<QWidget*>(watched)->isWindow()) {
        if (m_focusAsked.elapsed() < kFocusComes) activateWindow();
        m_focusAsked.invalidate();
    }
    if (event->type() != QEvent::Show || !watched->isWidgetType() || watched == this ||
        !isVisible())
        return false;
    QWindow* window = static_cast<QWidget*>(watched)->windowHandle();
    if (!window || window->transientParent()) return false;
    window->setTransientParent(windowHandle());
    m_lifted.emplace_back(window);
    return false;
}

void frmSlideShow::TakeFocusBack() {
    activateWindow();
    m_focusAsked.start();
}

void frmSlideShow::Lift(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() != QLatin1String(name) || !window->isVisible() ||
            !window->windowHandle() || window->windowHandle()->transientParent())
            continue;
        window->hide(); // so that it comes up anew, above
        window->show();
    }
}

} // namespace tarn
