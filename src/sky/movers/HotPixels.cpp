#include "sky/movers/HotPixels.h"

#include "sky/stack/Levels.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tarn {

namespace {

constexpr float kStandsOut = 5; // deviations above the four beside it
constexpr float kOfStar = 0.2F; // of its height, that the third highest of a star's eight have

template <typename Sample>
std::shared_ptr<std::vector<Sample>> Mended(const Sample* from, int width, int height,
                                            float noise) {
    const std::size_t count = std::size_t(width) * std::size_t(height);
    auto mended = std::make_shared<std::vector<Sample>>(from, from + count);
    for (int y = 1; y + 1 < height; ++y) {
        const Sample* const row = from + std::ptrdiff_t(y) * width;
        for (int x = 1; x + 1 < width; ++x) {
            const float value = float(row[x]) - kStandsOut * noise;
            if (!(value > float(row[x - 1]) && value > float(row[x + 1]) &&
                  value > float(row[x - width]) && value > float(row[x + width])))
                continue;
            std::array<float, 8> around{float(row[x - 1]),         float(row[x + 1]),
                                        float(row[x - width]),     float(row[x + width]),
                                        float(row[x - width - 1]), float(row[x - width + 1]),
                                        float(row[x + width - 1]), float(row[x + width + 1])};
            std::sort(around.begin(), around.end());
            const float middle = (around[3] + around[4]) / 2;
            if (around[5] - middle > kOfStar * (float(row[x]) - middle)) continue;
            (*mended)[std::size_t(y) * std::size_t(width) + std::size_t(x)] = Sample(middle);
        }
    }
    return mended;
}

} // namespace

FrameSamples WithoutHotPixels(const FrameSamples& frame) {
    FrameSamples clean = frame;
    const auto noise = float(SkyOf(frame, 0).noise);
    if (!(noise > 0)) return clean;
    if (frame.floats) {
        const auto mended = Mended(frame.floats, frame.width, frame.height, noise);
        clean.floats = mended->data();
        clean.kept = mended;
    } else {
        const auto mended =
            Mended(frame.words, frame.width, frame.height, noise / float(frame.scale));
        clean.words = mended->data();
        clean.kept = mended;
    }
    return clean;
}

} // namespace tarn
