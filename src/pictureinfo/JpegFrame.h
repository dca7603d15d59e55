// The size of a JPEG picture by its markers alone, for who has the first bytes and no decoder.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace tarn {

struct JpegFrame {
    int width = 0; // pixels, as stored
    int height = 0;
};

// None where the bytes do not reach to the first scan, or where anything is out of the ordinary, so
// that the decoder's own word is to be had.
std::optional<JpegFrame> FindJpegFrame(std::span<const std::uint8_t> bytes);

} // namespace tarn
