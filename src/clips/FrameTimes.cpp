#include "clips/FrameTimes.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr double kPlayerTolerance = .005; // seconds, of its exact seek

} // namespace

int FrameAt(const ClipFacts& clip, double time) {
    constexpr double kSlack = 1e-4; // seconds, of rounded times
    const auto after = std::upper_bound(clip.times.begin(), clip.times.end(), time + kSlack);
    return int(after - clip.times.begin()) - 1;
}

double SeekTimeOf(const ClipFacts& clip, int frame) {
    const auto at = std::size_t(frame);
    return frame == 0 ? clip.times[0]
                      : (clip.times[at - 1] + clip.times[at]) / 2 + kPlayerTolerance;
}

} // namespace tarn
