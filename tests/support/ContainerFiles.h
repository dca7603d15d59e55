// Picture files of all kinds around camera data that begin as a TIFF file does. They have no
// pixels.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tarn::testing {

inline std::string HighFirst(std::uint64_t number, int size) {
    std::string bytes;
    for (int i = size - 1; i >= 0; --i) bytes.push_back(char(number >> (8 * i)));
    return bytes;
}

inline std::string LowFirst(std::uint64_t number, int size) {
    const std::string bytes = HighFirst(number, size);
    return {bytes.rbegin(), bytes.rend()};
}

// The camera data of a JPEG file that begins with them.
inline std::string TiffOf(const std::string& jpeg) {
    return jpeg.substr(12, jpeg.size() - 14);
}

// The sum behind a chunk is 0: those who look for camera data do not ask it.
inline std::string PngChunk(const std::string& name, const std::string& data) {
    return HighFirst(data.size(), 4) + name + data + std::string(4, '\0');
}

inline std::string PngWith(const std::string& tiff, bool behindPixels,
                           std::size_t pixelBytes = 300000) {
    using namespace std::string_literals;
    const std::string pixels = PngChunk("IDAT", std::string(pixelBytes, 'x'));
    const std::string exif = PngChunk("eXIf", tiff);
    return "\x89PNG\r\n\x1A\n"s + PngChunk("IHDR", std::string(13, '\0')) +
           (behindPixels ? pixels + exif : exif + pixels) + PngChunk("IEND", "");
}

inline std::string RiffChunk(const std::string& name, const std::string& data) {
    return name + LowFirst(data.size(), 4) + data + std::string(data.size() % 2, '\0');
}

inline std::string WebPWith(const std::string& tiff) {
    const std::string chunks = RiffChunk("VP8X", std::string(10, '\0')) + RiffChunk("VP8 ", "odd") +
                               RiffChunk("EXIF", tiff);
    return "RIFF" + LowFirst(chunks.size() + 4, 4) + "WEBP" + chunks;
}

inline std::string Box(const std::string& name, const std::string& data) {
    return HighFirst(data.size() + 8, 4) + name + data;
}

struct HeifOptions {
    int version = 1;          // of the list of places
    bool inSmallData = false; // beside the list, not in the file's data
    bool turns = false;
};

inline std::string HeifWith(const std::string& tiff, const HeifOptions& options = {}) {
    using namespace std::string_literals;
    const std::string item = HighFirst(6, 4) + "Exif\0\0"s + tiff; // words in front of the header
    const std::string none = std::string(4, '\0');
    const auto entry = [&](int number, const std::string& type) {
        return Box("infe",
                   "\2\0\0\0"s + HighFirst(std::uint64_t(number), 2) + "\0\0"s + type + '\0');
    };
    const std::string list =
        Box("iinf", none + HighFirst(2, 2) + entry(1, "hvc1") + entry(2, "Exif"));
    const std::string property =
        options.turns ? Box("irot", "\1") : Box("ispe", none + HighFirst(64, 4) + HighFirst(48, 4));
    const std::string properties = Box("iprp", Box("ipco", property));
    const auto places = [&](std::size_t at) {
        const int method = options.inSmallData ? 1 : 0;
        const auto place = [&](int number, std::size_t from, std::size_t length) {
            return HighFirst(std::uint64_t(number), 2) +
                   (options.version == 0 ? "" : HighFirst(std::uint64_t(method), 2)) +
                   HighFirst(0, 2) + HighFirst(1, 2) + HighFirst(from, 4) + HighFirst(length, 4);
        };
        return Box("iloc", std::string(1, char(options.version)) + "\0\0\0\x44\0"s +
                               HighFirst(2, 2) + place(1, 0, 1) + place(2, at, item.size()));
    };
    const auto meta = [&](std::size_t at) {
        return Box("meta", none + list + places(at) + properties +
                               (options.inSmallData ? Box("idat", item) : ""));
    };
    const std::string head = Box("ftyp", "heic"s + none + "mif1heic");
    const std::size_t data = head.size() + meta(0).size() + 8;
    return head + meta(options.inSmallData ? 0 : data) +
           (options.inSmallData ? "" : Box("mdat", item));
}

inline std::string JxlWith(const std::string& tiff) {
    using namespace std::string_literals;
    return "\0\0\0\x0CJXL \r\n\x87\n"s + Box("ftyp", "jxl \0\0\0\0jxl "s) +
           Box("Exif", HighFirst(0, 4) + tiff) + Box("jxlc", "\xFF\x0A");
}

// Blocks of the first directory, the Exif directory, the maker's note and what satellites tell, as
// one maker parts them.
inline std::string RawBoxes(const std::string& first, const std::string& exif,
                            const std::string& note, const std::string& satellites = {}) {
    using namespace std::string_literals;
    return Box("ftyp", "crx \0\0\0\1crx isom"s) +
           Box("moov", Box("uuid", std::string(16, 'u') + Box("CNCV", "x") + Box("CMT1", first) +
                                       Box("CMT2", exif) + Box("CMT3", note) +
                                       (satellites.empty() ? "" : Box("CMT4", satellites))));
}

inline std::string RawAroundJpeg(const std::string& jpeg) {
    std::string head = "FUJIFILMCCD-RAW ";
    head.resize(84, '\0');
    head += HighFirst(300, 4) + HighFirst(jpeg.size(), 4);
    head.resize(300, '\0');
    return head + jpeg;
}

} // namespace tarn::testing
