#include "imaging/Pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace tarn {

namespace {

constexpr int kWhite = 255;
constexpr QRgb kAlpha = 0xFF000000;
constexpr QRgb kOneChannel = 0x000000FF;
constexpr QRgb kTwoChannels = 0x00FF00FF;
constexpr QRgb kEachOfTwo = 0x00010001;
constexpr QRgb kAbove = 0x01000100; // the bit over each of two channels

// Two channels at once, each with room above it for what it overflows by. Stops at white.
QRgb Raised(QRgb two, QRgb amount) {
    const QRgb sum = two + amount;
    const QRgb over = sum & kAbove;
    return (sum | (over - (over >> 8))) & kTwoChannels;
}

// Stops at black.
QRgb Lowered(QRgb two, QRgb amount) {
    const QRgb rest = (two | kAbove) - amount;
    const QRgb left = rest & kAbove; // gone where it had to be borrowed
    return rest & (left - (left >> 8)) & kTwoChannels;
}

// How far a picture shrinks to fit into the box, 1 when it fits as it is.
double FitScale(QSize picture, QSize box) {
    return std::min(
        {1.0, double(box.width()) / picture.width(), double(box.height()) / picture.height()});
}

template <QRgb (*change)(QRgb, QRgb)> QRgb Changed(QRgb pixel, QRgb amount) {
    const QRgb redBlue = change(pixel & kTwoChannels, amount);
    const QRgb green = change(pixel >> 8 & kOneChannel, amount) & kOneChannel;
    return (pixel & kAlpha) | redBlue | green << 8;
}

} // namespace

QImage InOwnFormat(const QImage& picture) {
    QImage own = picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                                   : QImage::Format_RGB32);
    // Text is drawn in points of the screen, whatever the file says of its paper.
    const QImage screen(1, 1, QImage::Format_RGB32);
    own.setDotsPerMeterX(screen.dotsPerMeterX());
    own.setDotsPerMeterY(screen.dotsPerMeterY());
    return own;
}

QImage Resampled(const QImage& picture, QSize size) {
    return InOwnFormat(picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

// The lines of one line of the picture are alike.
QImage Enlarged(const QImage& picture, int times, const QRect& wanted) {
    const QRect part = wanted & QRect(QPoint(), picture.size() * times);
    if (times == 1 && part == picture.rect()) return picture;
    QImage enlarged(part.size(), picture.format());
    for (int y = 0; y < enlarged.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(enlarged.scanLine(y));
        const int from = (part.top() + y) / times;
        if (y > 0 && from == (part.top() + y - 1) / times) {
            std::memcpy(line, enlarged.constScanLine(y - 1), std::size_t(enlarged.width()) * 4);
            continue;
        }
        const auto* pixels = reinterpret_cast<const QRgb*>(picture.constScanLine(from));
        for (int x = 0; x < enlarged.width(); ++x) line[x] = pixels[(part.left() + x) / times];
    }
    return enlarged;
}

QImage Brightened(QImage picture, int value) {
    const int added = int(std::lround(value * kWhite / double(kMostBrightness)));
    const QRgb amount = QRgb(std::abs(added)) * kEachOfTwo;
    const int width = picture.width();
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        if (added > 0)
            for (int x = 0; x < width; ++x) line[x] = Changed<Raised>(line[x], amount);
        else
            for (int x = 0; x < width; ++x) line[x] = Changed<Lowered>(line[x], amount);
    }
    return picture;
}

QSize LeastFor(QSize picture, QSize box) {
    if (box.isEmpty() || picture.isEmpty()) return {};
    const double scale = std::max(FitScale(picture, box), FitScale(picture.transposed(), box));
    return {int(std::ceil(picture.width() * scale)), int(std::ceil(picture.height() * scale))};
}

} // namespace tarn
