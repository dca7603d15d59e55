// Marks drawn beside names and on pictures, told apart by shape as well as by colour.
#pragma once

#include "common/mark.h"

#include <QColor>
#include <QFontMetrics>

class QPainter;
class QRectF;

namespace tarn {

struct ShownMark {
    Mark mark;
    bool keptAside = false; // not in its sidecar: drawn hollow
    bool operator==(const ShownMark&) const = default;
};

// What a mark takes beside a line of this font, with a gap behind.
int MarkWidth(const QFontMetrics& font);

// Into the left part of a line; `ink` is the colour of the text beside it.
void DrawMark(QPainter& painter, const QRectF& line, const ShownMark& shown, const QColor& ink);

} // namespace tarn
