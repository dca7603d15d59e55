#include "app/start/frmSplash.h"

#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "widgets/Themes.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QTimer>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kTime = 250; // milliseconds

void DrawText(QPainter& painter, QPoint topLeft, int points, const std::string& text) {
    QFont font = QGuiApplication::font();
    font.setPointSize(points);
    painter.setFont(font);
    painter.drawText(topLeft + QPoint(0, QFontMetrics(font).ascent()), ToQt(text));
}

} // namespace

frmSplash::frmSplash(const std::string& version, const std::string& detail)
    // No splash type: such a window is never given the keyboard.
    : QWidget(nullptr, Qt::Dialog | Qt::FramelessWindowHint),
      m_picture(ToQt(ProgramFile("splash.png"))) {
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Tarn_View"));
    setFocusPolicy(Qt::StrongFocus);
    if (m_picture.isNull()) {
        m_picture = QPixmap(480, 300);
        m_picture.fill(Qt::black);
    }
    QPainter painter(&m_picture);
    painter.setPen(QColor(235, 240, 250));
    DrawText(painter, QPoint(170, 5), 14, version);
    DrawText(painter, QPoint(10, 180), 9, detail);
    painter.end();
    setFixedSize(m_picture.size());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.center() - rect().center());
    m_shown.start();
}

void frmSplash::paintEvent(QPaintEvent*) {
    QPainter(this).drawImage(0, 0, Themed(m_picture.toImage()));
}

void frmSplash::LeaveInTime() {
    const int left = kTime - static_cast<int>(m_shown.elapsed());
    QTimer::singleShot(std::max(0, left), this, [this] { hide(); });
}

void frmSplash::ShowOnTop() {
    setWindowFlag(Qt::WindowStaysOnTopHint);
    show();
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    hide();
}

void frmSplash::keyReleaseEvent(QKeyEvent*) {
    hide();
}

} // namespace tarn
