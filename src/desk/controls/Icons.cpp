#include "desk/controls/Icons.h"

#include "platform/ProgramFiles.h"
#include "platform/QtText.h"

#include <QAbstractButton>
#include <QEvent>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <utility>

namespace tarn {

namespace {

// Drawn when it is seen, at the size that the screen asks for: most of a window's buttons are never
// seen in the other colour.
class ColouredIcon : public QIconEngine {
public:
    ColouredIcon(QByteArray svg, const QPalette& palette)
        : m_svg(std::move(svg)), m_ink(palette.color(QPalette::Active, QPalette::ButtonText)),
          m_disabled(palette.color(QPalette::Disabled, QPalette::ButtonText)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        QSvgRenderer(Coloured(mode)).render(painter, rect);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const bool disabled = mode == QIcon::Disabled;
        QPixmap& kept = m_kept[disabled ? 1 : 0];
        if (kept.size() == size) return kept;
        kept = QPixmap(size);
        kept.fill(Qt::transparent);
        QPainter painter(&kept);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return kept;
    }
    QIconEngine* clone() const override { return new ColouredIcon(*this); }

private:
    QByteArray Coloured(QIcon::Mode mode) const {
        QByteArray svg = m_svg;
        const QColor& ink = mode == QIcon::Disabled ? m_disabled : m_ink;
        return svg.replace("#000", ink.name().toLatin1());
    }

    QByteArray m_svg;
    QColor m_ink;
    QColor m_disabled;
    std::array<QPixmap, 2> m_kept; // as last drawn, the disabled one second
};

// Draws the icon anew when the palette or the font of its button changes.
class IconKeeper : public QObject {
public:
    IconKeeper(QAbstractButton& button, QByteArray svg)
        : QObject(&button), m_button(button), m_svg(std::move(svg)) {
        button.installEventFilter(this);
        Draw();
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) Draw();
        return false;
    }

private:
    void Draw() {
        const int side = m_button.fontMetrics().height() + 4;
        m_button.setIconSize(QSize(side, side));
        m_button.setIcon(QIcon(new ColouredIcon(m_svg, m_button.palette())));
    }

    QAbstractButton& m_button;
    QByteArray m_svg;
};

} // namespace

void SetButtonIcon(QAbstractButton& button, const QString& name) {
    QFile file(ToQt(ProgramFile(FromQt(QStringLiteral("icons/%1.svg").arg(name)))));
    if (!file.open(QIODevice::ReadOnly)) return;
    new IconKeeper(button, file.readAll());
}

} // namespace tarn
