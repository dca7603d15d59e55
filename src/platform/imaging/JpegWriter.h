// Pictures as JPEG files.
#pragma once

#include <QImage>

#include <string>

namespace tarn {

// A baseline JPEG of 24 bits a pixel; what shines through is shown on white. Quality 1 to 100. The
// colour profile, where there is one, goes along. Empty, and an error text, when it fails.
std::string EncodeJpeg(const QImage& picture, int quality, const std::string& profile,
                       std::string* error);

// The colour profile that a JPEG file carries; empty when it has none or is no JPEG.
std::string ProfileOfJpeg(const std::string& path);

} // namespace tarn
