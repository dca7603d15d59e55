// Pages as a PDF file.
#include "platform/Files.h"
#include "widgets/printing/PagePainter.h"
#include "widgets/printing/PageSizes.h"
#include "widgets/printing/RecordedPaper.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

namespace tarn {

namespace {

constexpr int kPdfPictureDpi = 300;

// A page of its own size where it is none of the known ones.
QPageLayout LayoutOf(PaperSize size) {
    const bool landscape = size.width > size.height;
    QSizeF points(size.width / 20, size.height / 20);
    if (landscape) points.transpose();
    return {QPageSize(points, QPageSize::Point, {}, QPageSize::FuzzyMatch),
            landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()};
}

class PdfPrinter : public RecordedPaper {
public:
    PdfPrinter(Files& files, const PrinterChoice& choice)
        : RecordedPaper(InTwips(PageSizeOf(choice.paper), choice.landscape), kPdfPictureDpi),
          m_files(files), m_path(choice.pdf) {}

    bool End(std::string* error) override {
        return WritePdf(m_files, m_path, PageSize(), Pages(), error);
    }

private:
    Files& m_files;
    std::string m_path;
};

} // namespace

bool WritePdf(Files& files, const std::string& path, PaperSize size,
              const std::vector<PaperPage>& pages, std::string* error) {
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&bytes);
        writer.setResolution(static_cast<int>(kTwipsPerInch));
        writer.setPageLayout(LayoutOf(size));
        writer.setCreator(QStringLiteral("Tarn_View"));
        QPainter painter;
        if (!painter.begin(&writer)) {
            *error = "the PDF cannot be made";
            return false;
        }
        for (const PaperPage& page : pages) {
            if (&page != &pages.front()) writer.newPage();
            PaintPage(painter, page);
        }
    }
    const QByteArray& made = bytes.data();
    return files.Write(path, {made.constData(), static_cast<std::size_t>(made.size())}, error);
}

std::unique_ptr<Printer> MakePdfPrinter(Files& files, const PrinterChoice& choice) {
    return std::make_unique<PdfPrinter>(files, choice);
}

} // namespace tarn
