#include "thumbnails/ScalePicture.h"

#include "imaging/JpegWriter.h"
#include "imaging/PictureLoader.h"
#include "imaging/Pixels.h"
#include "imaging/Turn.h"
#include "imaging/fits/ScreenStretch.h"
#include "pictureinfo/PictureInfoReader.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace tarn {

namespace {

constexpr int kHighestJpeg = 65500;

// By the eight values of the camera data.
Turn UprightTurn(const std::string& path) {
    const auto reader = std::make_unique<PictureInfoReader>(); // each picture for itself
    PictureInfo info;
    info.Filename = path;
    reader->ReadPictureInfo(info);
    return Turn::Upright(info.ExpOrientation);
}

// The least of an eighth, a quarter, a half and the whole that has the pixels: the library is quick
// at those.
QSize ReadingFor(QSize stored, QSize wanted) {
    constexpr int kSmallest = 8;
    for (int part = kSmallest; part > 1; part /= 2) {
        const QSize reading((stored.width() + part - 1) / part,
                            (stored.height() + part - 1) / part);
        if (reading.width() >= wanted.width() && reading.height() >= wanted.height())
            return reading;
    }
    return {};
}

std::shared_ptr<PictureSource> OpenPicture(const std::string& path, QImage& decoded,
                                           std::string& error) {
    auto source = PictureLoader::Open(path, error);
    if (source && source->Size().isEmpty()) { // a header that does not tell
        decoded = source->Decode({}, error);
        if (decoded.isNull()) return nullptr;
    }
    return source;
}

} // namespace

QSize ThumbnailSize(QSize picture, int width) {
    if (picture.isEmpty()) return {};
    const double height = double(width) * picture.height() / picture.width();
    if (height > kHighestJpeg) return {};
    return {width, std::max(1, int(std::lround(height)))};
}

SmallPicture ScalePicture(const std::string& path, const std::function<QSize(QSize)>& sizeFor) {
    SmallPicture small;
    QImage decoded;
    const auto source = OpenPicture(path, decoded, small.error);
    if (!source) return small;
    const QSize stored = decoded.isNull() ? source->Size() : decoded.size();
    const Turn turn = source->IsUpright() ? Turn() : UprightTurn(path);
    const QSize upright = sizeFor(turn.Of(stored));
    if (upright.isEmpty()) {
        small.error = "Too high for a thumbnail";
        return small;
    }
    const QSize size = turn.SwapsSides() ? upright.transposed() : upright;
    if (decoded.isNull()) decoded = source->Decode(ReadingFor(stored, size), small.error);
    if (!decoded.isNull()) small.pixels = turn.Of(Resampled(decoded, size));
    return small;
}

std::string ThumbnailJpeg(const std::string& path, int width, int quality, std::string& error) {
    const AutomaticStretchOnly automatic; // what is chosen for the moment does not last
    SmallPicture small =
        ScalePicture(path, [width](QSize picture) { return ThumbnailSize(picture, width); });
    error = small.error;
    if (small.pixels.isNull()) return {};
    return EncodeJpeg(small.pixels, quality, &error);
}

} // namespace tarn
