#include "display/FrmPic.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "desk/state/Replay.h"
#include "platform/QtText.h"
#include "widgets/WindowPlaces.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr int kHelpSize = 3;
constexpr QSize kDesign(800, 600);
constexpr double kZoomStep = 1.25;
constexpr double kMostZoom = 32;

} // namespace

FrmPic::FrmPic(Context& context) : m(context), m_place(*this, context.state.PicPlace) {
    setObjectName(QStringLiteral("FrmPic"));
    setWindowTitle(QStringLiteral("Image"));
    setAttribute(Qt::WA_OpaquePaintEvent); // every pixel is painted once, so nothing flickers
    setFocusPolicy(Qt::StrongFocus);
    constexpr int kRest = 250; // milliseconds
    m_rest.setSingleShot(true);
    m_rest.setInterval(kRest);
    connect(&m_rest, &QTimer::timeout, this, [this] {
        if (onRest && isVisible()) onRest();
    });
}

PixelSize FrmPic::Inside() const {
    const double ratio = devicePixelRatioF();
    return {int(width() * ratio), int(height() * ratio)};
}

void FrmPic::Form_Load() {
    const QScopedValueRollback<bool> loading(m_loading, true);
    setWindowState(windowState() & ~(Qt::WindowMinimized | Qt::WindowMaximized));
    m_place.Restore(kDesign);
    m_zoom = 1;
    show();
    if (m_followsScreen) return;
    m_followsScreen = true; // another may have finer pixels
    connect(windowHandle(), &QWindow::screenChanged, this, [this] {
        if (isVisible()) PaintPicture();
    });
}

void FrmPic::ViewFull() {
    if (!isVisible()) Form_Load();
    PaintPicture();
}

void FrmPic::Follow() {
    if (isVisible() && !m.state.SlideViewing) PaintPicture();
}

void FrmPic::PaintPicture() {
    const ProgramState& s = m.state;
    const PixelSize inside = Inside();
    FitPicture(inside);
    const std::string error = m_work.ErrorText();
    if (!error.empty()) m.shell.ShowMessage(error + " - " + s.FileNameOnly); // an enlargement
    const std::string caption = SizeCaption(LastPart(s.Filename), inside,
                                            PercentText(inside.width, s.ImageWidth), s.TextNumOf);
    setWindowTitle(ToQt(caption));
    m_painted = false;
    update();
}

// From the full copy each time, so that nothing adds up. Brightness comes last, as it takes time by
// the pixel.
void FrmPic::FitPicture(PixelSize inside) {
    const ProgramState& s = m.state;
    ImgX& work = m_work;
    work.CopyFrom(s.ImgXfull);
    ReplayTurns(s, work);
    const PixelSize picture{work.Width(), work.Height()};
    m_fit = FitSizeWindow(picture, inside);
    if (work.HasImage() && m_zoom > 1) {
        const ZoomedPart zoomed = ZoomPart(picture, m_fit, inside, m_zoom, m_zoomX, m_zoomY);
        work.Crop(zoomed.part.left, zoomed.part.top, zoomed.part.width, zoomed.part.height);
        work.Scale(zoomed.drawn.width, zoomed.drawn.height);
    } else if (m_fit != picture) {
        work.Scale(m_fit.width, m_fit.height);
    }
    work.Brightness(s.BrightnessValue);
    m_picture = work.FullPicture();
}

void FrmPic::paintEvent(QPaintEvent*) {
    m_painted = true;
    const double ratio = devicePixelRatioF();
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(QRgb(m.state.SlideBackground)));
    const PixelSize inside = Inside();
    const QPointF place(double(RoundHalfEven((inside.width - m_picture.width()) / 2.0)),
                        double(RoundHalfEven((inside.height - m_picture.height()) / 2.0)));
    painter.scale(1 / ratio, 1 / ratio);
    painter.drawImage(place, m_picture);
}

void FrmPic::resizeEvent(QResizeEvent*) {
    if (m_loading || !isVisible() || isMinimized()) return;
    PaintPicture();
    m_rest.start();
}

void FrmPic::closeEvent(QCloseEvent*) {
    m_picture = {};
    m_work.Clear();
    if (m.shell.MainMinimised()) m.shell.SetMainMinimised(false);
}

void FrmPic::keyPressEvent(QKeyEvent* event) {
    Form_KeyUp(m_keys.Press(*event, m_painted));
}

void FrmPic::keyReleaseEvent(QKeyEvent* event) {
    Form_KeyUp(m_keys.Release(*event));
}

// clang-format off
const FrmPic::KeyRow FrmPic::kKeys[] = {
    {keys::kEscape, "closes the window", [](FrmPic& w) { w.close(); }},
    {'X', "closes the window", [](FrmPic& w) { w.close(); }},
    {keys::kDown, "next file", [](FrmPic& w) { StepFiles(w.m, 1); }},
    {keys::kUp, "previous file", [](FrmPic& w) { StepFiles(w.m, -1); }},
    {'Y', "copies the file to the \"Copy to\" folder", [](FrmPic& w) { w.Copy(); }},
    {keys::kF1, "help", [](FrmPic& w) { w.m.shell.ShowHelpPage(kHelpSize); }},
};
// clang-format on

std::vector<keys::KeyLine> FrmPic::KeyLines() {
    std::vector<keys::KeyLine> lines;
    for (const KeyRow& row : kKeys) keys::AddLine(lines, keys::NameOf(row.keycode), row.says);
    return lines;
}

void FrmPic::Form_KeyUp(int keycode) {
    for (const KeyRow& row : kKeys)
        if (row.keycode == keycode) return row.act(*this);
}

void FrmPic::Copy() {
    if (!m.state.SlideViewing) m.shell.Tell(m.copies.CopyImage());
}

void FrmPic::mousePressEvent(QMouseEvent*) {
    m_pressed = true;
}

void FrmPic::mouseReleaseEvent(QMouseEvent* event) {
    const bool ours = m_pressed;
    m_pressed = false;
    if (!ours) return;
    if (event->button() == Qt::LeftButton)
        StepFiles(m, 2 * event->position().x() >= width() ? 1 : -1);
    else
        ToggleTop();
}

void FrmPic::ToggleTop() {
    const bool top = !IsOnTop(*this);
    SetOnTop(*this, top);
    m.shell.ShowMessage(top ? "Size window set to Top" : "Size window set to Normal");
}

void FrmPic::wheelEvent(QWheelEvent* event) {
    const int notches = m_wheel.Turned(*event);
    if (event->modifiers() & Qt::ControlModifier) {
        if (notches != 0) Zoom(notches, event->position());
        return;
    }
    for (int i = 0; i < std::abs(notches); ++i) StepFiles(m, notches < 0 ? 1 : -1);
}

// The point under the pointer stays where it is, as far as the picture's edges allow.
void FrmPic::Zoom(int notches, QPointF at) {
    const double before = m_zoom;
    m_zoom = std::clamp(m_zoom * std::pow(kZoomStep, notches), 1.0, kMostZoom);
    if (m_zoom < (1 + kZoomStep) / 2) m_zoom = 1; // back at the fit, whatever was rounded
    const double ratio = devicePixelRatioF();
    const PixelSize inside = Inside();
    const auto middle = [&](double old, double offset, int fitted, int window) {
        if (fitted <= 0) return old;
        const double moved = old + offset * ratio * (1 / before - 1 / m_zoom) / fitted;
        const double half = std::min(0.5, window / (2.0 * fitted * m_zoom));
        return std::clamp(moved, half, 1 - half);
    };
    m_zoomX = middle(m_zoomX, at.x() - width() / 2.0, m_fit.width, inside.width);
    m_zoomY = middle(m_zoomY, at.y() - height() / 2.0, m_fit.height, inside.height);
    PaintPicture();
}

} // namespace tarn
