// Clips whose frames carry their number: eight black or white fields side by side, the lowest bit
// first, made with ffmpeg.
#pragma once

#include "MadeSer.h"

#include <QImage>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>

namespace tarn::testing {

inline constexpr int kBits = 8;
inline constexpr int kField = 16; // pixels

inline QImage NumberedFrame(int number) {
    QImage frame(kBits * kField, 64, QImage::Format_RGB888);
    frame.fill(Qt::black);
    for (int bit = 0; bit < kBits; ++bit)
        for (int x = 0; x < kField && (number >> bit & 1) != 0; ++x)
            for (int y = 0; y < frame.height(); ++y)
                frame.setPixelColor(bit * kField + x, y, Qt::white);
    return frame;
}

// What a shown frame says; -1 for no picture.
inline int NumberOf(const QImage& frame) {
    if (frame.isNull()) return -1;
    int number = 0;
    for (int bit = 0; bit < kBits; ++bit) {
        const int x = (bit * kField + kField / 2) * frame.width() / (kBits * kField);
        if (qGray(frame.pixel(x, frame.height() / 2)) > 127) number |= 1 << bit;
    }
    return number;
}

// `options` of the encoder and its container, `inputs` beside the frames; false when ffmpeg could
// not make it.
inline bool MakeClip(const std::string& path, int frames, const std::string& options,
                     const std::string& filter = "null", const std::string& inputs = "") {
    const std::string command =
        "ffmpeg -nostdin -loglevel error -y -f rawvideo -pix_fmt rgb24 -s 128x64 -r 25 -i - " +
        inputs + " -vf '" + filter + "' " + options + " '" + path + "'";
    std::FILE* pipe = ::popen(command.c_str(), "w");
    if (!pipe) return false;
    for (int i = 0; i < frames; ++i) {
        const QImage frame = NumberedFrame(i);
        for (int y = 0; y < frame.height(); ++y)
            std::fwrite(frame.constScanLine(y), 1, std::size_t(frame.width()) * 3, pipe);
    }
    return ::pclose(pipe) == 0;
}

// Writes into an MP4 file how it is to be shown: turned clockwise.
inline void TurnClip(const std::string& path, int degrees) {
    constexpr std::size_t kMatrix = 44; // behind the name of the track's header
    constexpr std::uint32_t kOne = 0x10000;
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    file.clear();
    file.seekp(std::streamoff(bytes.find("tkhd") + kMatrix));
    const std::uint32_t cosine = degrees == 180 ? -kOne : 0;
    const std::uint32_t sine = degrees == 90 ? kOne : degrees == 270 ? -kOne : 0;
    for (const std::uint32_t number : {cosine, sine, 0U, -sine, cosine, 0U})
        for (int byte = 3; byte >= 0; --byte) file.put(char(number >> (8 * byte)));
}

// The same frames as a SER clip of 12 bits, one every 40 ms.
inline std::string NumberedSer(int frames) {
    constexpr int kWhite = 4095;
    constexpr std::int64_t kTicks = 400000;
    SerClip clip{kBits * kField, 64, 12, 0, false, {}, {}};
    for (int i = 0; i < frames; ++i) {
        const QImage frame = NumberedFrame(i);
        clip.frames.emplace_back();
        for (int y = 0; y < frame.height(); ++y)
            for (int x = 0; x < frame.width(); ++x)
                clip.frames.back().push_back(qGray(frame.pixel(x, y)) > 127 ? kWhite : 0);
        clip.ticks.push_back(kTicks * (i + 1));
    }
    return SerBytes(clip);
}

} // namespace tarn::testing
