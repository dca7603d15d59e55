// Paper by the name that printers and settings give it.
#pragma once

#include "widgets/printing/PaperOrders.h"

#include <QPageSize>

#include <string>

namespace tarn {

// "A4", "Letter"; a name that nobody knows is A4.
QPageSize PageSizeOf(const std::string& paper);
// The size's name, or its sides where it has none: "101.6x152.4mm". PageSizeOf knows both.
std::string PaperNameOf(const QPageSize& page);

bool IsKnownPaper(const std::string& paper);

PaperSize InTwips(const QPageSize& page, bool landscape);

} // namespace tarn
