// SER clips of the tests' own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tarn::testing {

struct SerClip {
    int width = 0;
    int height = 0;
    int bits = 8;
    int color = 0;
    bool highByteFirst = false;
    std::vector<std::vector<int>> frames{}; // samples as stored
    std::vector<std::int64_t> ticks{};      // of each frame, or none
    int framesStated = -1;                  // those that there are
};

inline void AppendNumber(std::string& bytes, std::int64_t number, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(char(number >> (8 * i) & 0xFF));
}

inline std::string SerBytes(const SerClip& clip) {
    constexpr std::size_t kName = 40;
    std::string bytes = "LUCAM-RECORDER";
    const int stated = clip.framesStated < 0 ? int(clip.frames.size()) : clip.framesStated;
    for (const int word : {0, clip.color, 0, clip.width, clip.height, clip.bits, stated})
        AppendNumber(bytes, word, 4);
    for (const char* name : {"An observer", "A camera", "A telescope"}) {
        std::string field = name;
        field.resize(kName, ' ');
        bytes += field;
    }
    AppendNumber(bytes, 0, 8);
    AppendNumber(bytes, 0, 8);
    for (const auto& frame : clip.frames)
        for (const int sample : frame) {
            if (clip.bits <= 8) {
                bytes.push_back(char(sample));
                continue;
            }
            const char low = char(sample & 0xFF);
            const char high = char(sample >> 8);
            bytes.push_back(clip.highByteFirst ? high : low);
            bytes.push_back(clip.highByteFirst ? low : high);
        }
    for (const std::int64_t ticks : clip.ticks) AppendNumber(bytes, ticks, 8);
    return bytes;
}

} // namespace tarn::testing
