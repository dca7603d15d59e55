// Samples of one place in many frames: their mean without what is none of it.
#pragma once

#include "sky/stack/Codes.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tarn {

// What counts as far out: more than so many deviations from the middle of the others, up and down.
// A place's deviation is that of its samples, and never less than their noise: of the sky, of the
// light there and of stars that are a little wider in one frame than in another.
struct OutlierRule {
    double sigmas = 3;          // 0: nothing is left out
    std::vector<float> weights; // of the frames
    std::vector<float> noises;  // of theirs, in deviations of the codes
    float sky = 0; // of the grid, in the same: what it adds to the noise is in it; 0: not known
};

class OutlierMean {
public:
    explicit OutlierMean(OutlierRule rule);

    // `rows` of the frames, `count` samples each; the mean, in deviations, and the weight of what
    // is in it (0: nothing is). What is left out becomes 1 in `lost` of its frame.
    void Take(std::span<const std::int16_t* const> rows, int count, float* mean, float* weight,
              std::span<std::uint8_t* const> lost);

private:
    static constexpr std::size_t kChunk = 256; // samples that are looked at together

    struct Sums;
    void TakeChunk(std::span<const std::int16_t* const> rows, std::size_t begin, std::size_t count,
                   float* mean, float* weight, std::span<std::uint8_t* const> lost);
    void Add(const float* values, float weight, Sums& sums) const;
    void Suspect(const Sums& sums, std::size_t count);
    void TakeOne(std::size_t begin, std::size_t place, float* mean, float* weight,
                 std::span<std::uint8_t* const> lost);
    float LeastDeviation(float level, float noise) const;

    OutlierRule m_rule;
    float m_leastNoise;
    std::vector<float> m_values; // of a chunk, frame after frame; NaN for none
    std::vector<std::size_t> m_suspects;
    struct Sample {
        float value;
        std::size_t frame;
    };
    std::vector<Sample> m_samples; // of one place
    std::vector<float> m_room;
};

} // namespace tarn
