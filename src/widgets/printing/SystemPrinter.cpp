// Pages to a printer of the system.
#include "platform/QtText.h"
#include "widgets/printing/PagePainter.h"
#include "widgets/printing/PageSizes.h"
#include "widgets/printing/RecordedPaper.h"

#include <QPainter>
#include <QPrinter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kMostPictureDpi = 600; // more is lost on paper and takes its time

std::unique_ptr<QPrinter> OpenPrinter(const PrinterChoice& choice) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    if (!choice.printer.empty()) printer->setPrinterName(ToQt(choice.printer));
    printer->setPageSize(PageSizeOf(choice.paper));
    printer->setPageOrientation(choice.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer->setCopyCount(std::max(1, choice.copies));
    printer->setCreator(QStringLiteral("Tarn_View"));
    QPageLayout layout = printer->pageLayout();
    layout.setMargins(layout.minimumMargins());
    printer->setPageLayout(layout);
    return printer;
}

class SystemPrinter : public RecordedPaper {
public:
    SystemPrinter(std::unique_ptr<QPrinter> printer, const PrinterChoice& choice)
        : RecordedPaper(InTwips(PageSizeOf(choice.paper), choice.landscape),
                        std::min(printer->resolution(), kMostPictureDpi)),
          m_printer(std::move(printer)) {}

    bool End(std::string* error) override {
        *error = "printer '" + FromQt(m_printer->printerName()) + "' does not take the pages";
        QPainter painter;
        if (!m_printer->isValid() || !painter.begin(m_printer.get())) return false;
        const double dots = m_printer->resolution() / kTwipsPerInch;
        painter.scale(dots, dots);
        for (const PaperPage& page : Pages()) {
            if (&page != &Pages().front() && !m_printer->newPage()) return Abort(painter);
            PaintPage(painter, page);
            if (m_printer->printerState() == QPrinter::Error) return Abort(painter);
        }
        if (!painter.end()) return false;
        error->clear();
        return true;
    }

private:
    bool Abort(QPainter& painter) {
        m_printer->abort();
        painter.end();
        return false;
    }

    std::unique_ptr<QPrinter> m_printer;
};

class SystemPrinting : public Printing {
public:
    explicit SystemPrinting(Files& files) : m_files(files) {}

    std::unique_ptr<Printer> Open(const PrinterChoice& choice) override {
        if (choice.toFile) return MakePdfPrinter(m_files, choice);
        return std::make_unique<SystemPrinter>(OpenPrinter(choice), choice);
    }

private:
    Files& m_files;
};

} // namespace

std::unique_ptr<Printing> MakePrinting(Files& files) {
    return std::make_unique<SystemPrinting>(files);
}

} // namespace tarn
