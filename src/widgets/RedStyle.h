// Draws whatever the style draws, in red alone: gradients, outlines and icons that no palette
// reaches, too.
#pragma once

#include "widgets/ClearOutlines.h"

namespace tarn {

// The light of each pixel as a red of the same cover; colours multiplied by their cover.
void Redden(QImage& image);

// The caret of a text field turns the colours under it round, which makes it white: red over it.
class RedCaret : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_inside = false;
};

class RedStyle : public ClearOutlines {
public:
    using ClearOutlines::ClearOutlines;
    using ClearOutlines::polish;
    using ClearOutlines::unpolish;

    void polish(QWidget* widget) override;
    void unpolish(QWidget* widget) override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    void drawItemPixmap(QPainter* painter, const QRect& rect, int alignment,
                        const QPixmap& pixmap) const override;

private:
    template <typename Draw>
    void InRed(const QStyleOption& option, QPainter& painter, const Draw& draw) const;

    RedCaret m_caret;
    mutable bool m_inside = false; // of an element, whose parts are drawn with it
};

} // namespace tarn
