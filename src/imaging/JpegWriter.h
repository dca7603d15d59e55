// Pictures as JPEG files.
#pragma once

#include <QImage>

#include <string>

namespace tarn {

// A baseline JPEG of 24 bits a pixel, in the colours of the screen; what shines through is shown on
// white. Quality 1 to 100. Empty, and an error text, when it fails.
std::string EncodeJpeg(const QImage& picture, int quality, std::string* error);

} // namespace tarn
