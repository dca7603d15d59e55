// Which frames of a rated clip are chosen, in what order they are shown, and what is said of them.
// No widgets.
#pragma once

#include "sky/frames/RatedClip.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tarn {

using FrameNumbers = std::vector<std::size_t>;

// How many of so many are wanted: a share is of all frames, and at least one.
std::size_t WantedCount(std::size_t frames, int number, bool isShare);

// As sharp as this or sharper, the sharpest first; cut and doubtful ones are left out.
FrameNumbers AsSharpAs(std::span<const RatedFrame> frames, double sharpness);

// Numbers of the frames that have a sharpness, by time or the sharpest first. Of very many those
// that stand out among their neighbours, at most about `most`.
FrameNumbers ShownFrames(std::span<const RatedFrame> frames, bool sorted, std::size_t most);

// Of each frame its place among all that have a sharpness, 1 for the sharpest; 0: it has none.
FrameNumbers PlacesBySharpness(std::span<const RatedFrame> frames);

// As they follow each other in the clip.
FrameNumbers InTime(FrameNumbers numbers);

// "Frame 120, 21:12:03.25 UTC", then a line each of what is known.
std::string TipOfFrame(std::size_t number, std::span<const RatedFrame> frames,
                       std::span<const std::string> utc);

// "1997 frames rated; 3 not: no light stands out of the sky; 12 cut off at the border".
std::string SummaryOfFrames(std::span<const RatedFrame> frames);

// "200 of 2000 frames chosen, from sharpness 0.034 (frame 7) to 0.0123".
std::string ChoiceSaid(const FrameNumbers& chosen, std::span<const RatedFrame> frames);

} // namespace tarn
