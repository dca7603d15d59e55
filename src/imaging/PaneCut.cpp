#include "imaging/PaneCut.h"

#include "common/numbers.h"
#include "imaging/Pixels.h"

#include <QRegion>

#include <algorithm>
#include <cstring>

namespace tarn {

namespace {

QRect RectOf(const SeenPart& part) {
    return {part.left, part.top, part.width, part.height};
}

// Pixels of 32 bits, line by line.
void Put(const QImage& from, const QRect& part, QImage& into, QPoint at) {
    for (int y = 0; y < part.height(); ++y)
        std::memcpy(into.scanLine(at.y() + y) + qsizetype(at.x()) * 4,
                    from.constScanLine(part.top() + y) + qsizetype(part.left()) * 4,
                    std::size_t(part.width()) * 4);
}

} // namespace

// The double size without doubling what lies outside the cut: a large picture would take four times
// its memory. Some pixels more than needed go along, so that the edges come out as from the whole.
void CutForPane(ImgX& picture, const PreviewCrop& crop, bool doubled) {
    constexpr int kEdge = 2;
    const int left = int(RoundHalfEven(crop.left));
    const int top = int(RoundHalfEven(crop.top));
    if (!doubled) {
        picture.Crop(left, top, crop.width, crop.height);
        return;
    }
    const int sourceLeft = std::max(0, left / 2 - kEdge);
    const int sourceTop = std::max(0, top / 2 - kEdge);
    picture.Crop(sourceLeft, sourceTop, crop.width / 2 + 1 + 2 * kEdge,
                 crop.height / 2 + 1 + 2 * kEdge);
    picture.Scale(picture.Width() * 2, picture.Height() * 2);
    picture.Crop(left - sourceLeft * 2, top - sourceTop * 2, crop.width, crop.height);
}

ImgX PixelsOf(ImgX picture, int times, const SeenPart& part) {
    const int left = part.left / times;
    const int top = part.top / times;
    picture.Crop(left, top, (part.left + part.width - 1) / times - left + 1,
                 (part.top + part.height - 1) / times - top + 1);
    return picture;
}

QImage SeenOf(const ImgX& picture, int times, const SeenPart& part, int brightness) {
    ImgX pixels = PixelsOf(picture, times, part);
    pixels.Brightness(brightness);
    return Enlarged(pixels.FullPicture(), times,
                    QRect(part.left % times, part.top % times, part.width, part.height));
}

QImage SeenMoved(const QImage& before, const SeenPart& was, const ImgX& picture, int times,
                 const SeenPart& part, int brightness) {
    const QRect now = RectOf(part);
    const QRect old = RectOf(was);
    const QRect stays = now & old;
    if (before.size() != now.size() || before.depth() != 32 || stays.isEmpty())
        return SeenOf(picture, times, part, brightness);
    QImage seen(now.size(), before.format());
    Put(before, stays.translated(-old.topLeft()), seen, stays.topLeft() - now.topLeft());
    for (const QRect& fresh : QRegion(now) - QRegion(stays)) {
        const SeenPart strip{fresh.left(), fresh.top(), fresh.width(), fresh.height()};
        const QImage made = SeenOf(picture, times, strip, brightness);
        if (made.size() != fresh.size() || made.depth() != seen.depth())
            return SeenOf(picture, times, part, brightness); // its pixels went away meanwhile
        Put(made, made.rect(), seen, fresh.topLeft() - now.topLeft());
    }
    return seen;
}

} // namespace tarn
