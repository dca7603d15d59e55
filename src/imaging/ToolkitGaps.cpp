#include "imaging/ToolkitGaps.h"

#include "imaging/PictureFormat.h"
#include "imaging/exif/FileBytes.h"
#include "imaging/exif/FileKind.h"

#include <QRgba64>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <vector>

namespace tarn {

namespace {

constexpr std::size_t kHeaderBytes = 128;        // of a bitmap, as much of it as counts here
constexpr std::size_t kArrayHead = 14;           // in front of the first bitmap of an array
constexpr std::int64_t kSlack = 3;               // some writers leave out the last row's filling
constexpr QRgb kUnread = 0xFF808080;             // grey, as the rest of a JPEG file cut short
constexpr std::int64_t kMostMissing = 100;       // parts, of pixels of which one is there
constexpr std::int64_t kMostHeld = 512LL << 20U; // bytes of a file that is put right in memory

std::uint32_t Little(const std::string& bytes, std::size_t place, int size) {
    return std::uint32_t(NumberAt(bytes, place, size, false));
}

// One colour of a pixel.
struct Channel {
    explicit Channel(std::uint32_t bits)
        : mask(bits), shift(bits == 0 ? 0 : std::countr_zero(bits)), most(bits >> shift) {}
    int Of(std::uint32_t pixel) const {
        return most == 0 ? 0
                         : int((std::uint64_t((pixel & mask) >> shift) * 255 + most / 2) / most);
    }
    std::uint32_t mask;
    int shift;
    std::uint32_t most;
};

struct MaskedBitmap {
    explicit MaskedBitmap(const std::string& header)
        : pixels(Little(header, 10, 4)), width(std::int32_t(Little(header, 18, 4))),
          height(std::int32_t(Little(header, 22, 4))), bits(int(Little(header, 28, 2))),
          channels{Channel(Little(header, 54, 4)), Channel(Little(header, 58, 4)),
                   Channel(Little(header, 62, 4)),
                   Channel(HasAlpha(header) ? Little(header, 66, 4) : 0)} {}

    static bool HasAlpha(const std::string& header) {
        constexpr std::uint32_t kWithAlpha = 56; // length of the first header that has the mask
        return Little(header, 14, 4) >= kWithAlpha || Little(header, 30, 4) == 6;
    }
    static bool Is(const std::string& header) {
        const std::uint32_t packing = Little(header, 30, 4);
        const std::uint32_t bits = Little(header, 28, 2);
        return header.starts_with("BM") && Little(header, 14, 4) >= 40 &&
               (packing == 3 || packing == 6) && (bits == 16 || bits == 32);
    }
    bool IsPossible() const {
        const std::int64_t rows = std::abs(std::int64_t(height));
        return width > 0 && rows > 0 && rows <= INT32_MAX &&
               width * rows <= PictureMemoryLimit() / 4;
    }
    QRgb Pixel(std::uint32_t number) const {
        const int alpha = channels[3].mask == 0 ? 255 : channels[3].Of(number);
        return qRgba(channels[0].Of(number), channels[1].Of(number), channels[2].Of(number), alpha);
    }

    std::uint32_t pixels; // their place
    std::int64_t width;
    std::int32_t height; // below 0: from the top to the bottom
    int bits;
    std::array<Channel, 4> channels; // red, green, blue, alpha
};

// Some programs write the mask and no alpha.
bool ShinesThrough(const QImage& picture) {
    bool all = true;
    bool none = true;
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            all = all && qAlpha(row[x]) == 255;
            none = none && qAlpha(row[x]) == 0;
        }
    }
    return !all && !none;
}

// How the rows of a bitmap lie in its file, by the part of it that begins with the mark; nothing of
// other files, and of bitmaps with masks, which are read here.
struct BitmapRows {
    explicit BitmapRows(const std::string& header) {
        constexpr std::uint32_t kOldHeader = 12; // its sizes have two bytes
        const std::uint32_t length = Little(header, 14, 4);
        const std::uint32_t packing = length == kOldHeader ? 0 : Little(header, 30, 4);
        if (!header.starts_with("BM") || (length != kOldHeader && length < 40) || packing > 2)
            return;
        pixels = Little(header, 10, 4);
        packed = packing == 0 ? 0 : Little(header, 34, 4);
        if (packing != 0) return;
        const bool old = length == kOldHeader;
        width = old ? Little(header, 18, 2) : std::int32_t(Little(header, 18, 4));
        topDown = !old && std::int32_t(Little(header, 22, 4)) < 0;
        bits = std::int64_t(Little(header, old ? 24 : 28, 2));
    }

    std::int64_t pixels = 0; // their place in the file
    std::int64_t packed = 0; // bytes of packed pixels, where that is told
    std::int64_t width = 0;
    std::int64_t bits = 0; // a pixel
    bool topDown = false;
};

// Bytes of a colour table, by the flags in front of it.
std::int64_t TableBytes(char flags) {
    return (flags & 0x80) != 0 ? 3LL << ((flags & 7) + 1) : 0;
}

// Walks the blocks up to the end of the first picture.
bool GifEndsTooEarly(const FileBytes& bytes, const std::string& header) {
    constexpr std::int64_t kScreen = 13;
    std::int64_t place = kScreen + TableBytes(header.size() > 10 ? header[10] : '\0');
    for (;;) {
        const std::string head = bytes.At(place, 10);
        if (head.empty()) return true;
        const bool picture = head[0] == ',';
        if (!picture && head[0] != '!') return false; // the end, or nothing known
        if (picture && head.size() < 10) return true;
        place += picture ? 10 + TableBytes(head[9]) + 1 : 2;
        for (std::string count = bytes.At(place, 1); count != std::string(1, '\0');
             count = bytes.At(place, 1)) {
            if (count.empty()) return true;
            place += 1 + std::uint8_t(count[0]);
        }
        if (picture) return false;
        ++place;
    }
}

} // namespace

std::optional<QImage> DecodeBitMasks(std::FILE* file, std::string& error) {
    const FileBytes bytes(::fileno(file));
    const std::string header = bytes.At(0, kHeaderBytes);
    if (!MaskedBitmap::Is(header)) return {};
    const MaskedBitmap bitmap(header);
    if (!bitmap.IsPossible()) return error = "The size of the bitmap is wrong", QImage();
    const int rows = std::abs(bitmap.height);
    const int size = bitmap.bits / 8;
    const std::int64_t rowBytes = (bitmap.width * size + 3) / 4 * 4;
    if (rowBytes * rows > kMostHeld && rowBytes * rows / kMostMissing > bytes.Size())
        return error = "The file is too small for its pixels", QImage();
    QImage picture(int(bitmap.width), rows, QImage::Format_ARGB32);
    if (picture.isNull()) return error = "Not enough memory", QImage();
    picture.fill(kUnread);
    bool any = false;
    for (int row = 0; row < rows; ++row) {
        const std::string data =
            bytes.At(bitmap.pixels + row * rowBytes, std::size_t(bitmap.width * size));
        if (data.size() < std::size_t(bitmap.width * size)) {
            error = "The file ends too early";
            break;
        }
        auto* to =
            reinterpret_cast<QRgb*>(picture.scanLine(bitmap.height < 0 ? row : rows - 1 - row));
        for (std::size_t x = 0; x < std::size_t(bitmap.width); ++x)
            to[x] = bitmap.Pixel(Little(data, x * std::size_t(size), size));
        any = true;
    }
    if (!any) return QImage();
    if (ShinesThrough(picture)) return picture;
    picture.reinterpretAsFormat(QImage::Format_RGB32);
    return picture;
}

bool EndsTooEarly(std::FILE* file, QImage& picture) {
    const FileBytes bytes(::fileno(file));
    const std::string start = bytes.At(0, kHeaderBytes);
    if (start.starts_with("GIF8")) return GifEndsTooEarly(bytes, start);
    const BitmapRows rows(start.starts_with("BA") ? bytes.At(kArrayHead, kHeaderBytes) : start);
    if (rows.packed > 0) return rows.pixels + rows.packed > bytes.Size() + kSlack;
    const std::int64_t rowBytes = (rows.width * rows.bits + 31) / 32 * 4;
    const std::int64_t height = picture.height();
    if (rowBytes <= 0 || rows.pixels + rowBytes * height <= bytes.Size() + kSlack) return false;
    const std::int64_t there =
        std::clamp<std::int64_t>((bytes.Size() - rows.pixels) / rowBytes, 0, height);
    for (std::int64_t row = there; row < height; ++row) {
        auto* line =
            reinterpret_cast<QRgb*>(picture.scanLine(int(rows.topDown ? row : height - 1 - row)));
        std::fill_n(line, picture.width(), kUnread);
    }
    return true;
}

std::optional<KeyColor> FindKeyColor(std::FILE* file) {
    constexpr std::size_t kFirstChunk = 33; // where the header chunk ends
    constexpr char kDeep = 16;
    const FileBytes bytes(::fileno(file));
    const std::string start = bytes.At(0, kFirstChunk);
    if (!IsPng(start) || start.size() < kFirstChunk || start[24] != kDeep) return {};
    const bool grey = start[25] == 0;
    if ((!grey && start[25] != 2) || bytes.Size() > kMostHeld) return {};
    std::int64_t place = kFirstChunk;
    for (std::string head = bytes.At(place, 14); head.size() == 14; head = bytes.At(place, 14)) {
        const std::string name = head.substr(4, 4);
        const std::int64_t length = 12 + std::int64_t(NumberAt(head, 0, 4, true));
        if (name == "IDAT") return {};
        if (name == "tRNS") {
            const auto level = [&](std::size_t at) { return quint16(NumberAt(head, at, 2, true)); };
            std::string rest = bytes.At(place + length, std::size_t(bytes.Size()));
            return KeyColor{bytes.At(0, std::size_t(place)) + rest, level(8), level(grey ? 8 : 10),
                            level(grey ? 8 : 12)};
        }
        place += length;
    }
    return {};
}

bool HasLongChunk(std::FILE* file) {
    constexpr std::int64_t kLongest = 32 << 20;
    constexpr int kMostChunks = 10'000; // looked at
    const FileBytes bytes(::fileno(file));
    if (!IsPng(bytes.At(0, 8))) return false;
    std::int64_t place = 8;
    for (int i = 0; i < kMostChunks; ++i) {
        const std::string head = bytes.At(place, 8);
        if (head.size() < 8 || head.ends_with("IDAT")) return false;
        const auto length = std::int64_t(NumberAt(head, 0, 4, true));
        if (length > kLongest) return true;
        place += 12 + length;
    }
    return false;
}

QImage ShineThrough(const QImage& picture, const KeyColor& key) {
    QImage deep = picture.convertToFormat(QImage::Format_RGBA64);
    for (int y = 0; y < deep.height(); ++y) {
        auto* row = reinterpret_cast<QRgba64*>(deep.scanLine(y));
        for (int x = 0; x < deep.width(); ++x)
            if (row[x].red() == key.red && row[x].green() == key.green && row[x].blue() == key.blue)
                row[x].setAlpha(0);
    }
    return deep;
}

std::string FirstOfBitmaps(std::FILE* file) {
    constexpr std::size_t kPixelsPlace = 10;
    const FileBytes bytes(::fileno(file));
    const std::string start = bytes.At(0, kArrayHead + kArrayHead);
    if (start.size() < kArrayHead + kArrayHead || !start.starts_with("BA") ||
        start.compare(kArrayHead, 2, "BM") != 0 || bytes.Size() > kMostHeld)
        return {};
    std::string bitmap = bytes.At(kArrayHead, std::size_t(bytes.Size()));
    const std::uint32_t place = Little(bitmap, kPixelsPlace, 4) - std::uint32_t(kArrayHead);
    for (int i = 0; i < 4; ++i) bitmap[kPixelsPlace + std::size_t(i)] = char(place >> (8 * i));
    return bitmap;
}

} // namespace tarn
