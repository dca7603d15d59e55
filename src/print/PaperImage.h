// A picture's pixels for its place on paper.
#pragma once

#include "imaging/ImgX.h"

#include <QImage>

#include <string>

namespace tarn {

// Reduced to what the place is worth, never enlarged. `error` says why pixels of the file could not
// be had any more; the picture is then one of those at hand.
QImage ImageForPaper(ImgX picture, QSize worth, std::string* error);

} // namespace tarn
