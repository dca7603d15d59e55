#include "sky/clips/ClipRating.h"

#include "clips/ClipFrames.h"

#include <utility>

#include <sys/stat.h>

namespace tarn {

RatedClip RateClip(const std::string& path, const RatingWatch& watch) {
    RatedClip clip;
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) clip.look = LookOf(status);
    FrameRater rater;
    ClipWords words = WalkFrames(path, [&](const ClipImage& image) {
        clip.frames.push_back(rater.Rate({*image.bytes, image.width, image.height, image.bits,
                                          image.samples, image.highByteFirst}));
        return !watch || watch(clip.frames.back());
    });
    clip.utc = std::move(words.utc);
    clip.stamps = std::move(words.stamps);
    clip.header = std::move(words.header);
    clip.observer = std::move(words.observer);
    clip.instrument = std::move(words.instrument);
    clip.telescope = std::move(words.telescope);
    clip.fault = std::move(words.fault);
    return clip;
}

} // namespace tarn
