#include "desk/controls/Icons.h"

#include "platform/ProgramFiles.h"
#include "platform/QtText.h"

#include <QAbstractButton>
#include <QEvent>
#include <QFile>
#include <QIcon>
#include <QPainter>
#include <QSvgRenderer>

namespace tarn {

namespace {

QPixmap Drawn(const QByteArray& svg, const QColor& colour, int side, qreal ratio) {
    QByteArray coloured = svg;
    coloured.replace("#000", colour.name().toLatin1());
    QSvgRenderer renderer(coloured);
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

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
        const QPalette palette = m_button.palette();
        QIcon icon;
        for (const qreal ratio : {1.0, 2.0}) {
            icon.addPixmap(
                Drawn(m_svg, palette.color(QPalette::Active, QPalette::ButtonText), side, ratio));
            icon.addPixmap(
                Drawn(m_svg, palette.color(QPalette::Disabled, QPalette::ButtonText), side, ratio),
                QIcon::Disabled);
        }
        m_button.setIconSize(QSize(side, side));
        m_button.setIcon(icon);
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
