// Pixels out of an answer of the decoder process.
#pragma once

#include "decoder/Decoder.h"

#include <QImage>

#include <memory>

namespace tarn {

// No memory, or as many pixels as it says.
inline bool IsDecodedPicture(const DecoderAnswer& answer) {
    constexpr std::int64_t kMostSide = 1 << 24;
    const auto [width, height, kind, rest] = answer.numbers;
    if (!answer.memory) return width == 0 && height == 0;
    return width > 0 && width <= kMostSide && height > 0 && height <= kMostSide &&
           (kind == std::int64_t(PixelKind::Opaque) ||
            kind == std::int64_t(PixelKind::ShinesThrough)) &&
           answer.memory.Size() / 4 / std::uint64_t(width) >= std::uint64_t(height);
}

// Over the very memory, of an answer that is one.
inline QImage TakeDecodedPicture(DecoderAnswer answer) {
    if (!answer.memory) return {};
    const auto [width, height, kind, rest] = answer.numbers;
    auto held = std::make_unique<SharedMemory>(std::move(answer.memory));
    QImage picture(
        held->Bytes(), int(width), int(height), qsizetype(width) * 4,
        kind == std::int64_t(PixelKind::ShinesThrough) ? QImage::Format_ARGB32
                                                       : QImage::Format_RGB32,
        [](void* memory) { delete static_cast<SharedMemory*>(memory); }, held.get());
    if (!picture.isNull()) held.release();
    return picture;
}

} // namespace tarn
