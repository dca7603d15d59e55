// A frame of a SER clip as a picture.
#pragma once

#include "clips/SerFile.h"

#include <QImage>

namespace tarn {

// Format_RGB32; null and an error text when the frame cannot be read.
QImage SerPicture(SerFile& file, int frame, std::string& error);

} // namespace tarn
