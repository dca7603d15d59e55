// The frames of a clip as they are rated, and which of them are to become files.
#pragma once

#include "common/file_look.h"
#include "sky/frames/FrameRating.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarn {

struct RatedClip {
    FileLook look; // at the file that was rated
    std::vector<RatedFrame> frames;
    std::vector<std::string> utc;     // of each, as far as the clip says
    std::vector<std::int64_t> stamps; // the same as SER has them
    std::string header;               // the bytes of that of SER; empty: another kind of clip
    std::string observer, instrument, telescope;
    // Why it could not be read, or not to its end: what came before is rated all the same.
    std::string fault;
};

// The frames of these numbers, from 0, in this order, as files of the folder.
struct TakeOrder {
    std::string clip;
    std::string folder;
    std::vector<std::size_t> frames;
    const RatedClip* rated = nullptr;
    bool align = false;  // the light of all where the sharpest has it, by whole pixels
    bool asClip = false; // one new SER, not a file a frame
};
struct TakenFrame {
    std::string path;
    std::string error; // empty when it was written
};

} // namespace tarn
