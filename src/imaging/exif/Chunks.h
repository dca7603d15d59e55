// Chunks of PNG and WebP files, segments of JPEG files.
#pragma once

#include "imaging/exif/Boxes.h"

#include <algorithm>

namespace tarn {

inline constexpr int kMostChunks = 10000;

// Of a PNG file from here on, each with its length in front and a sum behind.
class PngChunks {
public:
    PngChunks(const FileBytes& file, std::int64_t place) : m_file(file), m_next(place) {}
    bool Next() {
        const std::string head = m_file.At(m_next, 8);
        if (head.size() < 8 || m_seen++ == kMostChunks) return false;
        name = head.substr(4);
        data = {m_next + 8, std::int64_t(NumberAt(head, 0, 4, true))};
        m_next = data.place + data.length + 4;
        return m_next <= m_file.Size();
    }
    std::string name;
    Span data;

private:
    const FileBytes& m_file;
    std::int64_t m_next;
    int m_seen = 0;
};

// Of a WebP file, the first of this name; of no length where there is none.
inline Span FindWebPChunk(const FileBytes& file, std::string_view name) {
    std::int64_t place = 12;
    for (int i = 0; i < kMostChunks; ++i) {
        const std::string head = file.At(place, 8);
        if (head.size() < 8) return {};
        const auto length = std::int64_t(NumberAt(head, 4, 4, false));
        if (head.starts_with(name)) return {place + 8, std::min(length, file.Size() - place - 8)};
        place += 8 + length + length % 2;
    }
    return {};
}

inline constexpr int kMostSegments = 200; // of a JPEG file, in front of its pixels

// What is behind the name in the first segment of the kind that begins with it, of a JPEG file from
// behind its first marker on; of no length where there is none.
inline Span FindJpegSegment(const FileBytes& file, std::int64_t place, char kind,
                            std::string_view name) {
    const auto named = std::int64_t(name.size());
    for (int i = 0; i < kMostSegments; ++i) {
        const std::string head = file.At(place, 4 + name.size());
        if (head.size() < 4 || head[0] != '\xFF' || head[1] == '\xDA') return {};
        const auto length = std::int64_t(NumberAt(head, 2, 2, true));
        if (head[1] == kind && head.ends_with(name) && length >= named + 2)
            return {place + 4 + named, length - 2 - named};
        place += 2 + length;
    }
    return {};
}

} // namespace tarn
