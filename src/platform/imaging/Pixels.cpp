#include "platform/imaging/Pixels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr int kWhite = 255;

// How far a picture shrinks to fit into the box, 1 when it fits as it is.
double FitScale(QSize picture, QSize box) {
    return std::min(
        {1.0, double(box.width()) / picture.width(), double(box.height()) / picture.height()});
}

} // namespace

QImage InOwnFormat(const QImage& picture) {
    return picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                             : QImage::Format_RGB32);
}

QImage Resampled(const QImage& picture, QSize size) {
    return InOwnFormat(picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

QImage Brightened(QImage picture, int value) {
    const int added = int(std::lround(value * kWhite / 100.0));
    std::array<int, kWhite + 1> table{};
    for (int i = 0; i <= kWhite; ++i) table[i] = std::clamp(i + added, 0, kWhite);
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (QRgb* pixel = line; pixel != line + picture.width(); ++pixel)
            *pixel = qRgba(table[qRed(*pixel)], table[qGreen(*pixel)], table[qBlue(*pixel)],
                           qAlpha(*pixel));
    }
    return picture;
}

QSize LeastFor(QSize picture, QSize box) {
    if (box.isEmpty() || picture.isEmpty()) return {};
    const double scale = std::max(FitScale(picture, box), FitScale(picture.transposed(), box));
    return {int(std::ceil(picture.width() * scale)), int(std::ceil(picture.height() * scale))};
}

} // namespace tarn
