#include "night/frmCorners.h"

#include "common/numbers.h"
#include "desk/state/Replay.h"
#include "imaging/StoredRaster.h"
#include "night/Corners.h"
#include "platform/QtText.h"
#include "widgets/Named.h"
#include "widgets/Themes.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tarn {

namespace {

constexpr QSize kDesign(780, 620);
constexpr int kLeast = 90; // logical pixels a side of a cut
constexpr int kMargin = 5;
constexpr double kNeedle = 26; // half of its length at an elongation of 1
constexpr double kShown = 0.2; // elongation that has a direction
constexpr QRgb kGround = 0xFF282828;
constexpr QRgb kInk = 0xFFE8E8E8;
constexpr QRgb kNeedleInk = 0xFFFFC840;

const char* const kNames[] = {"top left", "top",         "top right", "left",        "middle",
                              "right",    "bottom left", "bottom",    "bottom right"};

} // namespace

// One cut with what is measured there.
class CornerCut : public QWidget {
public:
    explicit CornerCut(const char* name) {
        setAccessibleName(QString::fromUtf8(name));
        setMinimumSize(kLeast, kLeast);
    }
    void Show(const QImage& cut) {
        m_cut = cut;
        update();
    }
    // `way` is the direction in which the stars are drawn out, as shown.
    void Tell(const QString& text, double elongation, QPointF way) {
        m_text = text;
        m_elongation = elongation;
        m_way = way;
        setAccessibleDescription(text);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(kGround));
        const double ratio = devicePixelRatioF();
        if (!m_cut.isNull()) {
            const QSizeF size = QSizeF(m_cut.size()) / ratio;
            painter.drawImage(
                QRectF(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size),
                m_cut);
        }
        if (m_text.isEmpty()) return;
        const QRectF bar(0, height() - fontMetrics().height() - 2 * kMargin, width(),
                         fontMetrics().height() + 2 * kMargin);
        painter.fillRect(bar, QColor(0, 0, 0, 170));
        painter.setPen(Themed(QColor(kInk)));
        painter.drawText(bar.adjusted(kMargin, 0, -kMargin, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         m_text);
        PaintNeedle(painter);
    }

private:
    void PaintNeedle(QPainter& painter) const {
        if (m_elongation < kShown) return;
        painter.setRenderHint(QPainter::Antialiasing);
        const QPointF middle(width() - kNeedle - kMargin, kNeedle + kMargin);
        const QPointF half = kNeedle * m_elongation * m_way;
        for (const auto& [colour, broad] :
             {std::pair(QColor(0, 0, 0, 170), 5.0), std::pair(Themed(QColor(kNeedleInk)), 2.5)}) {
            painter.setPen(QPen(colour, broad, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(middle - half, middle + half);
        }
    }

    QImage m_cut; // device pixels
    QString m_text;
    double m_elongation = 0;
    QPointF m_way;
};

frmCorners::frmCorners(Context& context)
    : m(context), m_place(*this, context.state.CornersPlace),
      m_line(Named(new QLabel(), "CornersLine")) {
    setObjectName(QStringLiteral("frmCorners"));
    setWindowFlags(Qt::Window);
    setWindowTitle(QStringLiteral("Corners"));
    auto* all = new QVBoxLayout(this);
    auto* grid = new QGridLayout();
    grid->setSpacing(3);
    for (std::size_t i = 0; i < m_cuts.size(); ++i) {
        m_cuts[i] = Named(new CornerCut(kNames[i]), "CornerCut_" + std::to_string(i));
        grid->addWidget(m_cuts[i], int(i) / 3, int(i) % 3);
    }
    m_line->setTextFormat(Qt::PlainText);
    m_line->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    all->addLayout(grid, 1);
    all->addWidget(m_line);
}

frmCorners::~frmCorners() = default;

void frmCorners::Form_Load() {
    if (!isVisible()) m_place.Restore(kDesign);
    m.state.CornersShown = true;
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    setFocus();
    Follow();
}

void frmCorners::Closed() {
    m.state.CornersShown = false;
    m_picture.Clear();
    m_stars.reset();
    if (onClosed) onClosed();
}

void frmCorners::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    Closed();
}

void frmCorners::done(int result) {
    QDialog::done(result);
    Closed();
}

// Steps as in the other windows that follow the picture.
void frmCorners::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool on = key == Qt::Key_Down || key == Qt::Key_N || key == Qt::Key_Space;
    const bool back = key == Qt::Key_Up || key == Qt::Key_P;
    if ((on || back) && !m.state.BatchRuns && !m.state.SlideViewing)
        return m.navigation.StepBy(on ? 1 : -1, KeepingKeyboard());
    QDialog::keyPressEvent(event);
}

void frmCorners::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    ShowCuts();
}

void frmCorners::Follow() {
    if (!isVisible() || m.state.SlideViewing || m.state.BatchRuns) return;
    const ProgramState& s = m.state;
    m_picture.Clear();
    if (m_stars && m_stars->path != s.Filename) m_stars.reset();
    if (s.ImageLoaded && s.Kind == FileKind::Picture && s.ImageWidth > 0) {
        m_picture.CopyFrom(s.ImgXfull);
        ReplayTurns(s, m_picture);
        m_turn = TurnOf(s, 1);
        m_picture.FetchAll();
        m_picture.Brightness(s.BrightnessValue);
    }
    setWindowTitle(ToQt("Corners  " + s.FileNameOnly));
    ShowCuts();
    ShowTexts();
}

void frmCorners::ShowStars(const StarsOfFile& stars) {
    if (stars.path != m.state.Filename) return;
    m_stars = stars;
    ShowTexts();
}

void frmCorners::ShowCuts() {
    for (std::size_t i = 0; i < m_cuts.size(); ++i) {
        if (!m_picture.HasImage()) {
            m_cuts[i]->Show({});
            continue;
        }
        const QSize size = (QSizeF(m_cuts[i]->size()) * devicePixelRatioF()).toSize();
        const auto begin = [](int whole, int part, int place) {
            return std::max(0, (whole - part) * place / 2);
        };
        ImgX cut;
        cut.CopyFrom(m_picture);
        cut.Crop(begin(m_picture.Width(), size.width(), int(i) % 3),
                 begin(m_picture.Height(), size.height(), int(i) / 3), size.width(), size.height());
        m_cuts[i]->Show(Themed(cut.FullPicture()));
    }
}

void frmCorners::ShowTexts() {
    for (CornerCut* cut : m_cuts) cut->Tell({}, 0, {});
    if (!m_picture.HasImage()) return m_line->setText(QStringLiteral("No picture is shown"));
    if (!m_stars) return m_line->setText(QStringLiteral("Measuring the stars"));
    const ListedStars& listed = m_stars->listed;
    const StoredRaster raster{listed.width, listed.height, listed.bottomUp};
    const QSize turned(m_picture.Width(), m_picture.Height());
    const auto corners = CornersOf(listed.stars, listed.width, listed.height);
    double least = kNotMeasured;
    double most = kNotMeasured;
    for (int i = 0; i < int(corners.size()); ++i) {
        const CornerStars& corner = corners[std::size_t(i)];
        const double x = listed.width * (i % 3 + 0.5) / 3;
        const double y = listed.height * (i / 3 + 0.5) / 3;
        const double turn = corner.angle * std::numbers::pi / 180;
        const QPointF middle = raster.Seen(x, y, m_turn, turned);
        const QPointF way =
            raster.Seen(x + std::cos(turn), y + std::sin(turn), m_turn, turned) - middle;
        const int column = std::clamp(int(3 * middle.x() / turned.width()), 0, 2);
        const int row = std::clamp(int(3 * middle.y() / turned.height()), 0, 2);
        const QString text = std::isfinite(corner.hfr)
                                 ? ToQt("HFR " + FormatFixed(corner.hfr, 2) + "   e " +
                                        FormatFixed(corner.elongation, 2) + "   " +
                                        std::to_string(corner.stars) + " stars")
                                 : QStringLiteral("too few stars");
        m_cuts[std::size_t(3 * row + column)]->Tell(text, corner.elongation, way);
        least = std::fmin(least, corner.hfr);
        most = std::fmax(most, corner.hfr);
    }
    m_line->setText(!listed.fault.empty() ? ToQt("Not measured: " + listed.fault)
                    : std::isfinite(least)
                        ? ToQt("HFR from " + FormatFixed(least, 2) + " to " + FormatFixed(most, 2) +
                               ": the softest part is " + FormatFixed(100 * (most / least - 1), 0) +
                               " % larger. Line: direction in which stars are drawn out")
                        : QStringLiteral("No stars that can be measured"));
}

} // namespace tarn
