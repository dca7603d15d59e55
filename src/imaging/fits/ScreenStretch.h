// How values of a picture from a telescope become light on the screen. Most of such a picture lies
// just above black: the stretch cuts away what is below the sky (shadows) and bends the rest, so
// that the sky becomes a dark grey (midtones). The file is never changed.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>

namespace tarn {

// From black to white, in the values of the file.
struct ValueRange {
    double low = 0;
    double high = 1; // above low

    bool operator==(const ValueRange&) const = default;
};

struct ChannelStatistics {
    double median = 0;
    double deviation =
        0; // median distance from the median, made comparable to a standard deviation
};

struct Stretch {
    ValueRange range;
    double shadows = 0;                  // 0 to 1 of the range, below highlights
    double midtones = 0.5;               // 0 to 1 between the two: what becomes half light
    double highlights = 1;               // 0 to 1
    std::array<double, 3> gain{1, 1, 1}; // of each colour, so that the sky is grey

    bool operator==(const Stretch&) const = default;
};

// The curve through 0, 1 and (midtones, 1/2). Both from 0 to 1.
double MidtoneCurve(double midtones, double x);

// One or three channels. The sky's median goes to a quarter of the light, what lies 2.8 deviations
// below it becomes black.
Stretch AutomaticStretch(const ValueRange& range, std::span<const ChannelStatistics> channels);

// A straight line through the range.
Stretch LinearStretch(const ValueRange& range);

// A stretch made ready for one channel.
class ToLight {
public:
    ToLight(const Stretch& stretch, std::size_t channel);

    // 0 to 255; what is not a number is black.
    std::uint32_t operator()(float value) const {
        float x = value * m_slope + m_start;
        x = x > 0 ? x : 0; // also what is not a number
        x = x < 1 ? x : 1;
        return std::uint32_t(int(m_over * x / (m_under * x + m_base) + kHalf));
    }

private:
    static constexpr float kHalf = 0.5F;

    float m_slope;
    float m_start;
    float m_over;
    float m_under;
    float m_base;
};

// Which file a stretch was chosen for, and what kind of picture is in it.
struct StretchedFile {
    std::int64_t device = 0;
    std::int64_t inode = 0;
    int bits = 0; // of a sample, as in its header
    int channels = 0;

    bool operator==(const StretchedFile&) const = default;
    bool IsSeriesOf(const StretchedFile& other) const {
        return bits == other.bits && channels == other.channels;
    }
};

// What the user has chosen for the pictures to come. It is one for the whole program and guarded:
// decoders on all threads ask it. A change raises the generation, by which a picture that was
// decoded before is known to be out of date.
struct StretchChoice {
    bool linear = false;          // straight, whatever bend is fixed
    std::optional<Stretch> fixed; // in place of the automatic one
    bool locked = false; // for every picture of the same kind as the file's; else only for it
    StretchedFile of;

    bool operator==(const StretchChoice&) const = default;

    // Whether what is fixed counts for the file.
    bool IsFixedFor(const StretchedFile& file) const;

    // For a file, whose own are given. Straight and locked, a series has one range.
    Stretch For(const StretchedFile& file, const Stretch& automatic, const Stretch& straight) const;
};

StretchChoice CurrentStretchChoice(); // that of a new user where AutomaticStretchOnly holds
void SetStretchChoice(const StretchChoice& choice);
std::int64_t StretchGeneration();

// While one lives, its thread decodes as if nothing had been chosen: for what outlives the choice.
class AutomaticStretchOnly {
public:
    AutomaticStretchOnly();
    ~AutomaticStretchOnly();
    AutomaticStretchOnly(const AutomaticStretchOnly&) = delete;
    AutomaticStretchOnly& operator=(const AutomaticStretchOnly&) = delete;
};
bool IsAutomaticOnly(); // on this thread

} // namespace tarn
