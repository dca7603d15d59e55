#include "widgets/printing/PrinterDialog.h"

#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/printing/PageSizes.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>

namespace tarn {

namespace {

// The file is offered where there is no printer at all, so that every machine can print.
void Prepare(QPrinter& printer, const PrinterChoice& choice) {
    const bool known = !QPrinterInfo::printerInfo(ToQt(choice.printer)).isNull();
    if (choice.toFile || QPrinterInfo::availablePrinterNames().isEmpty()) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(ToQt(choice.pdf));
    } else if (known) {
        printer.setPrinterName(ToQt(choice.printer));
    }
    if (IsKnownPaper(choice.paper)) printer.setPageSize(PageSizeOf(choice.paper));
    printer.setPageOrientation(choice.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setCopyCount(choice.copies);
}

// What the dialog does not ask stays as it was: a PDF does not forget the printer.
PrinterChoice Chosen(const QPrinter& printer, PrinterChoice choice) {
    choice.toFile =
        printer.outputFormat() == QPrinter::PdfFormat || !printer.outputFileName().isEmpty();
    if (choice.toFile)
        choice.pdf = FromQt(printer.outputFileName());
    else
        choice.printer = FromQt(printer.printerName());
    choice.paper = PaperNameOf(printer.pageLayout().pageSize());
    choice.landscape = printer.pageLayout().orientation() == QPageLayout::Landscape;
    choice.copies = printer.copyCount();
    return choice;
}

void TurnIntoSetup(QPrintDialog& dialog) {
    dialog.setWindowTitle(QStringLiteral("Print Setup"));
    for (auto* box : dialog.findChildren<QDialogButtonBox*>())
        if (auto* print = box->button(QDialogButtonBox::Ok)) print->setText(QStringLiteral("OK"));
}

} // namespace

bool ShowPrinterDialog(PrintQuestion& question) {
    QPrinter printer(QPrinter::HighResolution);
    Prepare(printer, question.choice);
    QPrintDialog dialog(&printer, QApplication::activeWindow());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    dialog.setMinMax(question.least, question.most);
    dialog.setFromTo(question.from, question.to);
    dialog.setWindowTitle(QStringLiteral("Print"));
    if (question.setup) TurnIntoSetup(dialog);
    if (dialog.exec() != QDialog::Accepted) return false;
    question.choice = Chosen(printer, question.choice);
    question.from = dialog.fromPage();
    question.to = dialog.toPage();
    return true;
}

} // namespace tarn
