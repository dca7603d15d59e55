#include "sky/clips/SharpestFrame.h"

#include "clips/ClipFrame.h"
#include "clips/SerPicture.h"
#include "common/stop_flag.h"
#include "sky/frames/FrameRating.h"

#include <algorithm>
#include <vector>

namespace tarn {

namespace {

constexpr int kMost = 100;

} // namespace

QImage SharpestFrame(const std::string& path, int side) {
    SerFile file;
    if (!file.Open(path).empty()) return {};
    const SerHeader& header = file.Header();
    const int count = std::min(header.frames, kMost);
    FrameRater rater;
    std::vector<RatedFrame> rated;
    std::vector<std::uint8_t> bytes;
    const auto numberOf = [&](std::size_t i) {
        return int(std::int64_t(i) * header.frames / count);
    };
    for (int i = 0; i < count && !IsStopped(); ++i) {
        if (!file.ReadStored(numberOf(std::size_t(i)), bytes).empty()) break;
        rated.push_back(rater.Rate({bytes, header.width, header.height, header.bits,
                                    header.Samples(), file.HighByteFirst()}));
    }
    const std::vector<std::size_t> best = BestFrames(rated, 1);
    if (best.empty() || IsStopped()) return {};
    std::string error;
    const QImage picture = SerPicture(file, numberOf(best.front()), error);
    return picture.isNull() ? picture
                            : picture.scaled(SmallSize(picture.size(), side), Qt::IgnoreAspectRatio,
                                             Qt::SmoothTransformation);
}

} // namespace tarn
