// Which frames of a night stand out: each judged within its series. No toolkit.
#pragma once

#include "night/NightFrames.h"

#include <optional>
#include <span>
#include <vector>

namespace tarn {

using FrameIndices = std::vector<std::size_t>; // ascending

// A tenth of each series, rounded, by a measure; of one with five frames or more one at least.
FrameIndices WorstTenth(std::span<const NightFrame> frames, const NightColumn& measure);
FrameIndices BestTenth(std::span<const NightFrame> frames, const NightColumn& measure);

// Worse than the median of their series by more than so many of its robust deviations.
FrameIndices OutsideSigma(std::span<const NightFrame> frames, const NightColumn& measure,
                          double sigmas);

// Worse than a value, of all series that are judged.
FrameIndices WorseThan(std::span<const NightFrame> frames, const NightColumn& measure,
                       double value);

// Frames with too few stars to be judged, beside others that have enough: cloud, dew, a cap. What
// is or looks like a dark or a flat is none of them.
FrameIndices WithoutStars(std::span<const NightFrame> frames);

// The frame of the same series with the highest score, with which it is compared; not itself.
std::optional<std::size_t> BestBeside(std::span<const NightFrame> frames, std::size_t frame);

// Pictures taken within two seconds of the one before, two at least together, by their index; raw
// and JPEG of one shot, which have one name before the ending, are one of them.
std::vector<FrameIndices> BurstsOf(std::span<const NightFrame> frames);

// The sharpest of each burst, with all files of its shot; of one whose pictures tell no sharpness
// none.
FrameIndices SharpestOfBursts(std::span<const NightFrame> frames);

} // namespace tarn
