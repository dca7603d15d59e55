#include "widgets/printing/RecordedPaper.h"

#include "imaging/JpegWriter.h"
#include "platform/QtText.h"
#include "widgets/printing/PagePainter.h"

#include <QFontMetricsF>

#include <cmath>

namespace tarn {

namespace {

constexpr int kPictureQuality = 94; // at which a PDF keeps them, too

} // namespace

double RecordedPaper::TextWidth(const PaperFont& font, std::string_view text) const {
    return QFontMetricsF(ToTwipFont(font)).horizontalAdvance(ToQt(text));
}

double RecordedPaper::LineHeight(const PaperFont& font) const {
    return QFontMetricsF(ToTwipFont(font)).height();
}

QSize RecordedPaper::PixelsFor(double width, double height) const {
    const double pixels = m_pictureDpi / kTwipsPerInch;
    return {static_cast<int>(std::ceil(width * pixels)),
            static_cast<int>(std::ceil(height * pixels))};
}

void RecordedPaper::Text(double x, double y, const PaperFont& font, std::string_view text) {
    if (!text.empty()) m_pages.back().push_back(PaperText{x, y, font, std::string(text)});
}

void RecordedPaper::Rule(double x, double y, double toX) {
    m_pages.back().push_back(PaperRule{x, y, toX});
}

void RecordedPaper::Box(const PaperBox& box) {
    m_pages.back().push_back(box);
}

void RecordedPaper::Picture(const PaperBox& place, const QImage& picture) {
    if (picture.isNull()) return;
    std::string error;
    std::string jpeg = EncodeJpeg(picture, kPictureQuality, &error);
    if (!jpeg.empty()) m_pages.back().push_back(PaperPicture{place, std::move(jpeg)});
}

} // namespace tarn
