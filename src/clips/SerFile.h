// Clips of planets and the Sun as their cameras write them: a header of 178 bytes, frames of equal
// size without compression, and perhaps the time of each frame behind them. No toolkit.
#pragma once

#include "common/file_handle.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarn {

struct SerHeader {
    enum Color { Mono = 0, Rggb = 8, Grbg = 9, Gbrg = 10, Bggr = 11, Rgb = 100, Bgr = 101 };

    int width = 0; // pixels
    int height = 0;
    int bits = 8;     // that a sample uses, 1 to 16; more than 8 take two bytes
    int color = Mono; // other numbers than these are shown as Mono
    int frames = 0;   // that the file really has
    std::string observer, instrument, telescope; // as written, without blanks at the end

    bool IsBayer() const { return color >= Rggb && color <= Bggr; }
    int Samples() const { return color == Rgb || color == Bgr ? 3 : 1; } // of a pixel
    int SampleBytes() const { return bits > 8 ? 2 : 1; }
    std::int64_t FrameBytes() const {
        return std::int64_t(width) * height * Samples() * SampleBytes();
    }
};

inline constexpr std::int64_t kSerHeaderBytes = 178;

// Whether these are the first bytes of such a file.
bool IsSer(const std::string& start);

class SerFile {
public:
    // An error text, empty when it can be read. A file that is cut off has fewer frames than it
    // says, one whose recording was broken off as many as it holds.
    std::string Open(const std::string& path);

    const SerHeader& Header() const { return m_header; }
    const std::string& HeaderBytes() const { return m_headerBytes; } // as they stand in the file

    // Seconds of each frame from the first; empty where the file has none that ascend. Of a long
    // clip this is much to read.
    std::vector<double> Times();

    // Seconds from the first frame to the last one; 0 where the file has no times.
    double Length();

    // How many frames it says it has; 0 of a recording that was broken off.
    int FramesStated() const { return m_framesStated; }

    // The times of the frames, 100 nanoseconds since the beginning of the year 1, UTC; empty where
    // the file has none.
    std::vector<std::int64_t> Stamps();

    // One frame as stored, row by row from the top; an error text. Of samples of two bytes
    // `HighByteFirst` tells the order from then on.
    std::string ReadStored(int frame, std::vector<std::uint8_t>& bytes);
    bool HighByteFirst() const { return m_highByteFirst; }

    // Samples of one frame as stored, row by row from the top, scaled to 16 bits; an error text.
    std::string ReadFrame(int frame, std::vector<std::uint16_t>& samples);

private:
    bool ReadAt(std::int64_t place, void* bytes, std::size_t count);
    bool HasTimes();
    std::int64_t TimesPlace() const {
        return kSerHeaderBytes + m_header.FrameBytes() * m_header.frames;
    }
    void FindByteOrder(const std::vector<std::uint8_t>& frame);

    FileHandle m_file;
    SerHeader m_header;
    std::string m_headerBytes;
    int m_framesStated = 0;
    bool m_orderKnown = false;
    bool m_highByteFirst = false;
    std::vector<std::uint8_t> m_frame; // the last one read
};

// Red, green and blue of every pixel, 16 bits each, from samples as ReadFrame gives them. A Bayer
// pattern is filled in from the neighbours.
std::vector<std::uint16_t> SerColors(const SerHeader& header,
                                     const std::vector<std::uint16_t>& samples);

} // namespace tarn
