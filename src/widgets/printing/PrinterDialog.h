// The system's print dialog.
#pragma once

namespace tarn {

struct PrintQuestion;

bool ShowPrinterDialog(PrintQuestion& question);

} // namespace tarn
