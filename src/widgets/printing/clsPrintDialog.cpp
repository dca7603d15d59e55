#include "widgets/printing/clsPrintDialog.h"

#include "widgets/Dialogs.h"

namespace tarn {

bool clsPrintDialog::ShowPrinter() {
    PrintQuestion question;
    question.setup = (Flags & kSetup) != 0;
    question.least = Min;
    question.most = Max;
    question.from = FromPage;
    question.to = ToPage;
    question.choice = m_current;
    if (!m_dialogs.ChoosePrinter(question)) {
        if (CancelError) throw PrintDialogError();
        return false;
    }
    m_current = question.choice;
    FromPage = question.from;
    ToPage = question.to;
    return true;
}

} // namespace tarn
