// Names of thumbnails, which pages and sheets rely on. The extension stays that of the picture
// although the content is always a JPEG.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// "T120_m31.tif": the width in pixels with at least three digits, then the picture's whole name.
std::string ThumbnailName(int width, std::string_view pictureName);

// "T120_m31.enf": what stands before the first point, so that pictures may share one.
std::string ThumbnailNoteName(int width, std::string_view pictureName);

// "T", digits, "_" and more: made here, and lost without regret. A note is none.
bool IsThumbnailName(std::string_view name);

// "...\thumbnails", as the messages tell it.
std::string ShownSubFolder(std::string_view subFolder);

} // namespace tarn
