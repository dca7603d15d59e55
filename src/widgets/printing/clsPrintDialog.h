// The print dialog: what is chosen there becomes the program's current printer.
#pragma once

#include "widgets/printing/Printer.h"

#include <stdexcept>

namespace tarn {

class Dialogs;

// The dialog was cancelled, where the caller wants that as an error.
struct PrintDialogError : std::runtime_error {
    PrintDialogError() : std::runtime_error("Cancel.") {}
    static constexpr char kSource[] = "LM PrintDialog";
};

class clsPrintDialog {
public:
    static constexpr long kNormal = 0x100004;
    static constexpr long kSetup = 64; // this bit: only the printer is chosen, nothing printed

    // `current` is the printer that the dialog begins with.
    clsPrintDialog(Dialogs& dialogs, PrinterChoice& current)
        : m_dialogs(dialogs), m_current(current) {}

    long Flags = kNormal;
    int Min = 1; // pages that may be asked for
    int Max = 1;
    int FromPage = 1;
    int ToPage = 1;
    bool CancelError = false;

    // False when it was cancelled: the current printer stays.
    bool ShowPrinter();

private:
    Dialogs& m_dialogs;
    PrinterChoice& m_current;
};

} // namespace tarn
