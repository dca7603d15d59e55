#include "imaging/xisf/XisfTurn.h"

#include <limits>
#include <utility>

namespace tarn {

namespace {

struct Place {
    int x;
    int y;
};

// Where the pixel stands in the file. `upright` has the size of the turned picture.
Place StoredPlace(const FitsHeader& upright, const XisfTurn& turn, Place at) {
    const int right = upright.width - 1;
    const int bottom = upright.height - 1;
    if (turn.mirrored) at.x = right - at.x;
    switch (turn.quarters) {
    case 1:
        return {bottom - at.y, at.x};
    case 2:
        return {right - at.x, bottom - at.y};
    case 3:
        return {at.y, right - at.x};
    default:
        return at;
    }
}

// What the file does not have becomes `none`.
template <typename Sample>
bool TurnPlanes(SamplesOf<Sample>& samples, const FitsSamples& of, const XisfTurn& turn,
                Sample none) {
    auto turned = RoomFor<Sample>(of.All());
    if (!turned) return false;
    const int storedWidth = turn.quarters % 2 == 0 ? of.header.width : of.header.height;
    std::size_t to = 0;
    for (int plane = 0; plane < of.header.planes; ++plane) {
        const std::size_t first = std::size_t(plane) * of.PerPlane();
        for (int y = 0; y < of.header.height; ++y)
            for (int x = 0; x < of.header.width; ++x) {
                const Place stored = StoredPlace(of.header, turn, {x, y});
                const std::size_t from = first + std::size_t(stored.y) * std::size_t(storedWidth) +
                                         std::size_t(stored.x);
                turned[to++] = from < of.count ? samples[from] : none;
            }
    }
    samples = std::move(turned);
    return true;
}

} // namespace

XisfTurn XisfTurnOf(std::string_view written) {
    static constexpr std::pair<std::string_view, XisfTurn> kTurns[] = {
        {"flip", {0, true}},     {"90", {1, false}},  {"90;flip", {1, true}}, {"-90", {3, false}},
        {"-90;flip", {3, true}}, {"180", {2, false}}, {"180;flip", {2, true}}};
    for (const auto& [name, turn] : kTurns)
        if (name == written) return turn;
    return {};
}

void TurnHeader(FitsHeader& header, const XisfTurn& turn) {
    if (turn.quarters % 2 != 0) std::swap(header.width, header.height);
    if (!header.mosaic) return;
    const auto before = header.pattern;
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 2; ++x) {
            const Place stored = StoredPlace(header, turn, {x, y});
            header.pattern[std::size_t(y * 2 + x)] =
                before[std::size_t(stored.y % 2 * 2 + stored.x % 2)];
        }
}

bool TurnSamples(FitsSamples& samples, const XisfTurn& turn) {
    if (turn.IsNone()) return true;
    const bool turned = samples.words ? TurnPlanes(samples.words, samples, turn, std::uint16_t(0))
                                      : TurnPlanes(samples.floats, samples, turn,
                                                   std::numeric_limits<float>::quiet_NaN());
    samples.count = samples.All();
    return turned;
}

} // namespace tarn
