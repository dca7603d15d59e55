#include "convert/ConvertPicture.h"

#include "imaging/JpegWriter.h"
#include "pictureinfo/PictureInfoReader.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <cmath>
#include <memory>

namespace tarn {

namespace {

constexpr double kLinesOfHeight = 60.0; // so many lines of text would fill the picture

// Part of a damaged picture is no picture to make a copy of.
const std::string& FaultOf(const ImgX& picture) {
    return picture.LoadError().empty() ? picture.ErrorText() : picture.LoadError();
}

// Nothing is drawn on pixels that stand in for ones that could not be had any more.
std::string DrawText(ImgX& picture, const ConvertOptions& options) {
    QImage drawn = picture.FullPicture();
    if (std::string fault = FaultOf(picture); !fault.empty()) return fault;
    DrawCaption(drawn, options, drawn.height(), 1, 0);
    picture.TakePicture(drawn);
    return {};
}

// What the end message says of it.
std::string MakeSmaller(ImgX& picture, const ConvertOptions& options) {
    std::string suffix;
    if (options.maxWidth > 0 && options.maxWidth < picture.Width()) {
        picture.Scale(options.maxWidth, 0);
        suffix = ", width = " + std::to_string(options.maxWidth);
    }
    if (options.maxHeight > 0 && options.maxHeight < picture.Height()) {
        const double width = double(options.maxHeight) / picture.Height() * picture.Width();
        picture.Scale(std::max(1, int(std::lround(width))), options.maxHeight);
        suffix = ", height = " + std::to_string(options.maxHeight);
    }
    return suffix;
}

} // namespace

std::string FaultOfLimit(int limit, const char* side) {
    if (limit >= kLeastLimit) return {};
    return std::string("Convert to Jpg max ") + side + " too small, must be > 9.";
}

CaptionPlace PlaceOfCaption(int pictureHeight) {
    const double height = pictureHeight / kLinesOfHeight;
    return {2 * height, pictureHeight - 2 * height, height};
}

void DrawCaption(QImage& picture, const ConvertOptions& options, int pictureHeight, double scale,
                 double top) {
    const CaptionPlace place = PlaceOfCaption(pictureHeight);
    QFont font(QString::fromStdString(options.font));
    font.setPixelSize(std::max(1, int(std::lround(place.height * scale))));
    QPainter painter(&picture);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(QRgb(options.rgb)));
    const double ascent = QFontMetricsF(font).ascent();
    painter.drawText(QPointF(place.left * scale, (place.top - top) * scale + ascent),
                     QString::fromStdString(options.text));
}

int OrientationOf(const ImgX& picture) {
    if (!picture.Facts() || picture.IsUpright()) return 1;
    const auto reader = std::make_unique<PictureInfoReader>(); // large
    PictureInfo info;
    reader->ReadPictureInfo(info, PictureFile(picture.Facts()->look, picture.Facts()->front));
    return info.ExpOrientation;
}

Converted ConvertPicture(ImgX& picture, const ConvertOptions& options) {
    const Turn upright = Turn::Upright(options.orientation);
    picture.TurnBy(upright);
    Converted result;
    result.error = picture.LoadError();
    if (!options.text.empty() && result.error.empty()) result.error = DrawText(picture, options);
    if (result.error.empty()) {
        result.suffix = MakeSmaller(picture, options);
        const QImage& pixels = picture.FullPicture();
        result.error = FaultOf(picture);
        if (result.error.empty()) result.jpeg = EncodeJpeg(pixels, options.quality, &result.error);
    }
    picture.TurnBy(upright.Inverse());
    return result;
}

} // namespace tarn
