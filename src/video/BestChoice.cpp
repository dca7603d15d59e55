#include "video/BestChoice.h"

#include "common/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <numeric>

namespace tarn {

namespace {

std::string Rounded(double value, int digits) {
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%.*g", digits, value);
    return text.data();
}

std::string Counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " frame" : " frames");
}

bool HasSharpness(const RatedFrame& frame) {
    return frame.fault.empty() && std::isfinite(frame.sharpness);
}

// Highest and lowest of each stretch of neighbours, in their order.
FrameNumbers Thinned(const FrameNumbers& numbers, std::span<const RatedFrame> frames,
                     std::size_t most) {
    if (numbers.size() <= most) return numbers;
    const std::size_t stretch = (2 * numbers.size() + most - 1) / most;
    const auto less = [&](std::size_t a, std::size_t b) {
        return frames[a].sharpness < frames[b].sharpness;
    };
    FrameNumbers thinned;
    for (std::size_t from = 0; from < numbers.size(); from += stretch) {
        const auto begin = numbers.begin() + std::ptrdiff_t(from);
        const auto end = numbers.begin() + std::ptrdiff_t(std::min(numbers.size(), from + stretch));
        const auto [low, high] = std::minmax_element(begin, end, less);
        thinned.push_back(*std::min(low, high));
        if (low != high) thinned.push_back(*std::max(low, high));
    }
    return thinned;
}

FrameNumbers WithSharpness(std::span<const RatedFrame> frames) {
    FrameNumbers numbers;
    for (std::size_t i = 0; i < frames.size(); ++i)
        if (HasSharpness(frames[i])) numbers.push_back(i);
    return numbers;
}

FrameNumbers BySharpness(std::span<const RatedFrame> frames) {
    FrameNumbers numbers = WithSharpness(frames);
    std::stable_sort(numbers.begin(), numbers.end(), [&](std::size_t a, std::size_t b) {
        return frames[a].sharpness > frames[b].sharpness;
    });
    return numbers;
}

} // namespace

std::size_t WantedCount(std::size_t frames, int number, bool isShare) {
    const auto wanted = std::size_t(std::max(1, number));
    if (!isShare) return wanted;
    return std::max<std::size_t>(1, (std::min<std::size_t>(wanted, 100) * frames + 99) / 100);
}

FrameNumbers AsSharpAs(std::span<const RatedFrame> frames, double sharpness) {
    FrameNumbers best = BestFrames(frames, frames.size());
    const auto end = std::partition_point(best.begin(), best.end(), [&](std::size_t number) {
        return frames[number].sharpness >= sharpness;
    });
    best.erase(end, best.end());
    return best;
}

FrameNumbers ShownFrames(std::span<const RatedFrame> frames, bool sorted, std::size_t most) {
    return Thinned(sorted ? BySharpness(frames) : WithSharpness(frames), frames, most);
}

FrameNumbers PlacesBySharpness(std::span<const RatedFrame> frames) {
    FrameNumbers places(frames.size(), 0);
    std::size_t place = 0;
    for (const std::size_t number : BySharpness(frames)) places[number] = ++place;
    return places;
}

FrameNumbers InTime(FrameNumbers numbers) {
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

std::string TipOfFrame(std::size_t number, std::span<const RatedFrame> frames,
                       std::span<const std::string> utc) {
    const RatedFrame& frame = frames[number];
    std::string tip = "Frame " + std::to_string(number);
    if (number < utc.size() && utc[number].size() > 11)
        tip += ", " + utc[number].substr(11, 12) + " UTC";
    if (!frame.fault.empty()) return tip + "\n" + frame.fault;
    tip += "\nSharpness " + Rounded(frame.sharpness, 4);
    tip += "\nBrightness " + Rounded(100 * frame.brightness, 3) + " %";
    tip += "\nLight " + Rounded(frame.size, 4) + " pixels wide, at " + Rounded(frame.x, 5) + ", " +
           Rounded(frame.y, 5);
    if (frame.cut) tip += "\nCut off at the border";
    return tip;
}

std::string SummaryOfFrames(std::span<const RatedFrame> frames) {
    std::size_t rated = 0;
    std::size_t cut = 0;
    for (const RatedFrame& frame : frames) {
        if (frame.fault.empty()) ++rated;
        if (frame.fault.empty() && frame.cut) ++cut;
    }
    if (frames.empty()) return {};
    std::string said = Counted(rated) + " rated";
    const auto first = std::find_if(frames.begin(), frames.end(),
                                    [](const RatedFrame& frame) { return !frame.fault.empty(); });
    if (rated < frames.size())
        said += "; " + std::to_string(frames.size() - rated) + " not: " + first->fault;
    if (cut > 0) said += "; " + std::to_string(cut) + " cut off at the border";
    return said;
}

std::string ChoiceSaid(const FrameNumbers& chosen, std::span<const RatedFrame> frames) {
    if (chosen.empty()) return "No frame can be trusted to be among the best";
    const auto [low, high] =
        std::minmax_element(chosen.begin(), chosen.end(), [&](std::size_t a, std::size_t b) {
            return frames[a].sharpness < frames[b].sharpness;
        });
    return std::to_string(chosen.size()) + " of " + Counted(frames.size()) +
           " chosen, from sharpness " + Rounded(frames[*high].sharpness, 3) + " (frame " +
           std::to_string(*high) + ") to " + Rounded(frames[*low].sharpness, 3);
}

} // namespace tarn
