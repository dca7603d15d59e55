// The first frame of a clip as a small picture. Any thread.
#pragma once

#include <QImage>

#include <string>

namespace tarn {

// Fits into a square of `side` pixels and is never larger than the frame; null when the file is no
// clip that can be read.
QImage FirstFrame(const std::string& path, int side);

} // namespace tarn
