#include "widgets/ClearOutlines.h"

#include <QPainter>
#include <QStyleOption>

namespace tarn {

namespace {

constexpr int kNearBlack = 24; // of 255
constexpr int kDark = 96;

bool Lost(const QStyleOption& option, int below = kNearBlack) {
    return option.palette.color(QPalette::Window).lightness() < below;
}

void Outline(QPainter& painter, const QStyleOption& option, const QRect& rect, bool round = false) {
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, round);
    painter.setBrush(Qt::NoBrush);
    QColor ink =
        option.palette.color(enabled ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    if (!Lost(option)) ink.setAlphaF(0.6F);
    painter.setPen(ink);
    const QRect inside = rect.adjusted(0, 0, -1, -1);
    if (round)
        painter.drawEllipse(inside);
    else
        painter.drawRect(inside);
    painter.restore();
}

} // namespace

void ClearOutlines::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                                  QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    // An empty box is nothing but its outline.
    const bool box = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton;
    if (!Lost(*option, box ? kDark : kNearBlack)) return;
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_PanelButtonCommand:
    case PE_PanelButtonTool:
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
    case PE_Frame:
        Outline(*painter, *option, option->rect);
        break;
    case PE_IndicatorRadioButton:
        Outline(*painter, *option, option->rect, true);
        break;
    default:
        break;
    }
}

void ClearOutlines::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                       QPainter* painter, const QWidget* widget) const {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (!Lost(*option)) return;
    const auto outline = [&](SubControl part) {
        Outline(*painter, *option, subControlRect(control, option, part, widget));
    };
    switch (control) {
    case CC_ComboBox:
        Outline(*painter, *option, option->rect);
        break;
    case CC_Slider:
        outline(SC_SliderGroove);
        outline(SC_SliderHandle);
        break;
    case CC_ScrollBar:
        outline(SC_ScrollBarSlider);
        break;
    case CC_GroupBox:
        outline(SC_GroupBoxContents);
        break;
    default:
        break;
    }
}

} // namespace tarn
