// Boxes, buttons and fields keep an outline where the palette leaves them none.
#pragma once

#include <QProxyStyle>

namespace tarn {

// Styles take outlines from the window's colour made darker. On a window that is black already
// (palettes of high contrast) nothing is left of them; then they are drawn in the text's colour.
class ClearOutlines : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

} // namespace tarn
