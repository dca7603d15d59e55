// What a picture file says of itself, read along with its pixels: who shows the picture need not go
// to the disk again, which on a network mount costs more than the picture.
#pragma once

#include "common/file_look.h"
#include "imaging/fits/FitsLines.h"

#include <QSize>

#include <optional>
#include <string>

namespace tarn {

// What stands in the header.
struct PictureHeader {
    QSize size{0, 0};     // pixels as stored, 0 x 0 when no reader knows the file
    bool upright = false; // its reader turns it upright, whatever the camera data say
    bool fits = false;    // a telescope's picture, whose header has more to say
};

struct PictureFacts {
    FileLook look; // the file that all this was read from
    PictureHeader header;
    std::optional<std::string> front; // its first bytes; none when they could not be read
    SkyFacts sky;                     // of a telescope's picture
};

} // namespace tarn
