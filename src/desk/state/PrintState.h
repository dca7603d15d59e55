// Printing: the printer that was chosen last.
#pragma once

#include <string>

namespace tarn {

struct PrintState {
    std::string PrinterName; // as the system calls it; empty: its default
    bool PrintToFile = false;
    std::string PrintFolder; // where the last PDF file went
    std::string PrintPaper = "A4";
    bool PrintLandscape = false; // of the data sheet; thumbnail sheets are upright
    int PrintCopies = 1;
    bool PrintPreview = false; // pages are looked at before they are sent
};

} // namespace tarn
