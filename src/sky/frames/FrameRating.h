// How sharp one frame of a clip of a planet, the Moon, the Sun or stars is, and where its light
// stands. No file, no toolkit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace tarn {

// As a clip stores it: row by row from the top, without padding.
struct StoredFrame {
    std::span<const std::uint8_t> bytes;
    int width = 0; // pixels
    int height = 0;
    int bits = 8;    // that a sample uses, 1 to 16; more than 8 take two bytes
    int samples = 1; // of a pixel: 1, also under a Bayer pattern, or 3, beside each other
    bool highByteFirst = false; // of samples of two bytes
};

// Places and sizes are pixels of the array as stored, the centre of the first pixel is (0, 0).
struct RatedFrame {
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

    // Gradient energy of the plane of 2 x 2 pixels' means over its mean squared signal above the
    // sky, without what noise adds to both; to be compared between frames of one clip alone.
    double sharpness = kNone;
    double x = kNone; // centre of the disc, or of light
    double y = kNone;
    double size = kNone;       // diameter of a disc of the light's area
    double brightness = kNone; // of the light above the sky, 0 to 1 of what the samples can hold
    bool cut = false;          // the light touches the border
    std::string fault;         // why it is not rated; empty when it is
};

// One at a time; keeps its memory between frames.
class FrameRater {
public:
    RatedFrame Rate(const StoredFrame& frame);

private:
    struct Levels {
        float sky = 0;
        float top = 0;
        float noise = 0; // standard deviation of a cell
    };
    struct Box { // of cells, the ends excluded
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
    };

    void MakeCells(const StoredFrame& frame);
    Levels FindLevels();
    bool FindLight(const Levels& levels, RatedFrame& rated, Box& box);
    void RateSharpness(const Levels& levels, const Box& box, RatedFrame& rated) const;
    const float* Row(int y) const { return &m_cells[std::size_t(y) * std::size_t(m_width)]; }

    int m_width = 0; // cells
    int m_height = 0;
    std::vector<float> m_cells;   // means of 2 x 2 pixels, values as stored
    std::vector<float> m_gray;    // two rows of pixels, of colours
    std::vector<float> m_sample;  // of the cells
    std::vector<float> m_rowTops; // largest of each row
    std::vector<float> m_columns; // cells with light, by column
};

// The `count` sharpest, best first. Frames whose light is cut off are left out unless most are, and
// so are doubtful ones: much dimmer than the clip's median, or of another size.
std::vector<std::size_t> BestFrames(std::span<const RatedFrame> frames, std::size_t count);

} // namespace tarn
