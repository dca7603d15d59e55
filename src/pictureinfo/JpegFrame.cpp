#include "pictureinfo/JpegFrame.h"

#include <cstddef>

namespace tarn {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kMostSide = 16384; // larger ones are weighed by the decoder
constexpr std::uint8_t kFill = 0xFF;

enum Marker : std::uint8_t {
    kBaseline = 0xC0,
    kProgressive = 0xC2,
    kHuffman = 0xC4,
    kStart = 0xD8,
    kScan = 0xDA,
    kQuantize = 0xDB,
    kRestart = 0xDD,
    kFirstApp = 0xE0,
    kLastApp = 0xEF,
    kComment = 0xFE,
};

std::size_t Word(Bytes bytes, std::size_t at) {
    return std::size_t(bytes[at]) << 8 | bytes[at + 1];
}

bool AreQuantizers(Bytes rest) {
    while (!rest.empty()) {
        const std::size_t size = 1 + (rest[0] >> 4 != 0 ? 128 : 64);
        if ((rest[0] & 15) > 3 || rest[0] >> 4 > 1 || rest.size() < size) return false;
        rest = rest.subspan(size);
    }
    return true;
}

bool AreHuffmanTables(Bytes rest) {
    constexpr std::size_t kHead = 17; // class and number, then how many codes of each length
    while (!rest.empty()) {
        if ((rest[0] & ~0x13) != 0 || rest.size() < kHead) return false;
        std::size_t codes = 0;
        for (std::size_t i = 1; i < kHead; ++i) codes += rest[i];
        if (codes > 256 || rest.size() < kHead + codes) return false;
        rest = rest.subspan(kHead + codes);
    }
    return true;
}

// Precision, height, width, and of each component: name, sampling, table.
std::optional<JpegFrame> FrameOf(Bytes body) {
    constexpr std::size_t kHead = 6;
    if (body.size() < kHead || body[0] != 8) return std::nullopt;
    const std::size_t height = Word(body, 1);
    const std::size_t width = Word(body, 3);
    const std::size_t components = body[5];
    const auto fits = [](std::size_t side) { return side >= 1 && side <= kMostSide; };
    if (!fits(width) || !fits(height) || (components != 1 && components != 3) ||
        body.size() != kHead + 3 * components)
        return std::nullopt;
    for (std::size_t i = 0; i < components; ++i) {
        const std::uint8_t sampling = body[kHead + 3 * i + 1];
        const int across = sampling >> 4;
        const int down = sampling & 15;
        if (across < 1 || across > 4 || down < 1 || down > 4) return std::nullopt;
    }
    return JpegFrame{int(width), int(height)};
}

// A scan of the frame's own components, each once.
bool IsScanOf(Bytes frame, Bytes body) {
    if (body.empty() || body[0] < 1 || body[0] > 4 || body.size() != 4 + 2 * std::size_t(body[0]))
        return false;
    for (std::size_t i = 0; i < body[0]; ++i) {
        const std::uint8_t name = body[1 + 2 * i];
        bool known = false;
        for (std::size_t part = 6; part < frame.size(); part += 3)
            known = known || frame[part] == name;
        for (std::size_t before = 0; before < i; ++before)
            if (body[1 + 2 * before] == name) return false;
        if (!known) return false;
    }
    return true;
}

bool IsPassedOver(std::uint8_t marker, Bytes body) {
    if (marker == kQuantize) return AreQuantizers(body);
    if (marker == kHuffman) return AreHuffmanTables(body);
    if (marker == kRestart) return body.size() == 2;
    return (marker >= kFirstApp && marker <= kLastApp) || marker == kComment;
}

} // namespace

std::optional<JpegFrame> FindJpegFrame(Bytes bytes) {
    if (bytes.size() < 2 || bytes[0] != kFill || bytes[1] != kStart) return std::nullopt;
    Bytes frame;
    std::optional<JpegFrame> found;
    std::size_t at = 2;
    while (at + 4 <= bytes.size() && bytes[at] == kFill) {
        const std::uint8_t marker = bytes[at + 1];
        const std::size_t length = Word(bytes, at + 2);
        if (length < 2 || at + 2 + length > bytes.size()) return std::nullopt;
        const Bytes body = bytes.subspan(at + 4, length - 2);
        if (marker == kScan) return found && IsScanOf(frame, body) ? found : std::nullopt;
        if (marker >= kBaseline && marker <= kProgressive) {
            if (found) return std::nullopt;
            found = FrameOf(body);
            frame = body;
            if (!found) return std::nullopt;
        } else if (!IsPassedOver(marker, body)) {
            return std::nullopt;
        }
        at += 2 + length;
    }
    return std::nullopt;
}

} // namespace tarn
