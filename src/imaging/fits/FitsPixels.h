// The picture of a telescope's file as values, upright, with as many pixels as are needed, ready to
// be turned into light again and again.
#pragma once

#include "imaging/fits/FitsSamples.h"
#include "imaging/fits/ScreenStretch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tarn {

class FitsPixels {
public:
    static constexpr int kBins = 256;

    // At least so many pixels in both directions, or all of them where a side is below 1 or the
    // file has fewer. Smaller ones are means over squares of pixels, so that they cover the whole
    // picture. Pixels and an error both when the file ends too early: what is missing is black.
    // Statistics come from some 200 thousand samples spread over the picture, before any mean.
    static std::optional<FitsPixels> Read(const std::string& path, int width, int height,
                                          std::string& error);

    // The same from samples in memory.
    FitsPixels(FitsSamples samples, int width, int height);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    int Channels() const { return m_channels; }
    int Bits() const { return m_bits; } // of a stored sample, as in the header

    // A value of the file; NaN where there is none. From the top left corner.
    float Value(int channel, int x, int y) const;

    const ValueRange& Range() const { return m_range; }
    const Stretch& Automatic() const { return m_automatic; }

    // How many samples lie at each place of the range, places as of PlaceOf.
    const std::array<int, kBins>& Histogram() const { return m_histogram; }

    // 0xFFrrggbb, `perLine` pixels from one line to the next.
    void ToRgb(const Stretch& stretch, std::uint32_t* pixels, std::size_t perLine) const;

private:
    template <typename Sample> void Take(FitsSamples& samples, const Sample* from);
    template <typename Sample>
    void TakeRows(const FitsSamples& samples, const Sample* from, int plane, int begin, int end);

    int m_width = 0;
    int m_height = 0;
    int m_step = 1; // stored pixels a side of the squares
    int m_channels = 1;
    int m_bits = 0;
    std::unique_ptr<float[]> m_values; // channel after channel, row after row
    ValueRange m_range;
    Stretch m_automatic;
    std::array<int, kBins> m_histogram{};
};

// Where a value of 0 to 1 stands on a scale of 0 to 1 that gives the dark, where nearly all of
// such a picture lies, the room it needs; and back.
double PlaceOf(double value);
double ValueAt(double place);

} // namespace tarn
