// One picture file made small: read at a reduced scale and scaled once, upright. Any thread.
#pragma once

#include <QImage>
#include <QSize>

#include <functional>
#include <string>

namespace tarn {

struct SmallPicture {
    QImage pixels;     // null when it failed
    std::string error; // also beside pixels, when only a part of the file could be read
};

// `sizeFor` gives from the size of the upright picture the one to make; an empty one is refused.
SmallPicture ScalePicture(const std::string& path, const std::function<QSize(QSize)>& sizeFor);

// Proportions kept at this width; a height is at least one pixel. Empty when a JPEG cannot be that
// high.
QSize ThumbnailSize(QSize picture, int width);

// The file of a thumbnail: a JPEG. Empty, and an error text, when it fails; both when only a part
// of the picture could be read.
std::string ThumbnailJpeg(const std::string& path, int width, int quality, std::string& error);

} // namespace tarn
