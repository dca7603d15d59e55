// Draws recorded pages, on whatever: a PDF, a printer, the screen.
#pragma once

#include "widgets/printing/PaperOrders.h"

#include <QFont>

class QPainter;

namespace tarn {

// A unit of the painter is a twip.
void PaintPage(QPainter& painter, const PaperPage& page);

// The font at a pixel for a twip, so that its measures do not hang on a device.
QFont ToTwipFont(const PaperFont& font);

} // namespace tarn
