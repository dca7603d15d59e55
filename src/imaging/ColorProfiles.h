// From the colours that a picture's profile means to those of the screen (sRGB).
#pragma once

#include <QImage>

#include <string>

namespace tarn {

// `picture` in Format_RGB32 or Format_ARGB32 is changed in place. A profile of inks says nothing
// about such pixels and is passed over, one of greys tells what the greys mean. An error text when
// the profile is broken; the picture then stays as it is. Any thread.
std::string ToScreenColors(QImage& picture, const std::string& profile);

} // namespace tarn
