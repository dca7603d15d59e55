// Sheets as PDF files, for the console companion. Needs the toolkit's application with fonts.
#pragma once

#include "console/SheetCommand.h"

namespace tarn {

SheetResult WriteSheet(const SheetRequest& request);

} // namespace tarn
