#include "widgets/Themes.h"

#include "widgets/RedStyle.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QToolTip>

namespace tarn {

namespace {

struct Colours {
    QColor window, base, alternate, button, text, faint, chosen, chosenText, link;
};

// Neutral, so that pictures are judged by their own colours.
const Colours kDark{0x303030, 0x262626, 0x2C2C2C, 0x3A3A3A, 0xDEDEDE,
                    0x8A8A8A, 0x4F7CAA, 0xFFFFFF, 0x8AB4E8};
const Colours kRed{0x160000, 0x0C0000, 0x140000, 0x260000, 0xFF2020,
                   0x801010, 0x480000, 0xFF2828, 0xFF2828};

QPalette PaletteOf(const Colours& c) {
    QPalette palette(c.text, c.button, c.button.lighter(150), c.button.darker(200),
                     c.button.darker(140), c.text, c.chosenText, c.base, c.window);
    palette.setColor(QPalette::AlternateBase, c.alternate);
    palette.setColor(QPalette::Midlight, c.button.lighter(125));
    palette.setColor(QPalette::Shadow, c.window.darker(300));
    palette.setColor(QPalette::ButtonText, c.text);
    palette.setColor(QPalette::Highlight, c.chosen);
    palette.setColor(QPalette::HighlightedText, c.chosenText);
    palette.setColor(QPalette::Link, c.link);
    palette.setColor(QPalette::LinkVisited, c.link);
    palette.setColor(QPalette::ToolTipBase, c.button);
    palette.setColor(QPalette::ToolTipText, c.text);
    palette.setColor(QPalette::PlaceholderText, c.faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::BrightText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, c.faint);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, c.button);
    return palette;
}

// What the desktop gave, for the way back.
struct Given {
    QString style;
    QPalette toolTip;
    bool native;
};
Given& FromDesktop() {
    static Given given;
    return given;
}

Theme& Now() {
    static Theme theme = Theme::Desktop;
    return theme;
}

QString NameOf(const QStyle& style) {
    const auto* proxy = dynamic_cast<const QProxyStyle*>(&style);
    return proxy ? NameOf(*proxy->baseStyle()) : style.name();
}

} // namespace

Theme CurrentTheme() {
    return Now();
}

void ApplyTheme(Theme theme) {
    if (theme == Now()) return;
    Given& given = FromDesktop();
    if (Now() == Theme::Desktop)
        given = {NameOf(*QApplication::style()), QToolTip::palette(),
                 QApplication::testAttribute(Qt::AA_DontUseNativeDialogs)};
    Now() = theme;
    // Dialogs of the desktop would come in its own colours, and not every style of it takes ours.
    const bool own = theme != Theme::Desktop;
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs, own || given.native);
    const QString base = own ? QStringLiteral("Fusion") : given.style;
    QApplication::setStyle(theme == Theme::Red ? new RedStyle(base) : new ClearOutlines(base));
    const QPalette palette = own ? PaletteOf(theme == Theme::Dark ? kDark : kRed) : QPalette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(own ? palette : given.toolTip);
}

QColor Themed(const QColor& colour) {
    if (Now() != Theme::Red) return colour;
    return QColor(std::max({colour.red(), colour.green(), colour.blue()}), 0, 0, colour.alpha());
}

QImage Themed(const QImage& picture) {
    if (Now() != Theme::Red) return picture;
    QImage red = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Redden(red);
    return red;
}

} // namespace tarn
