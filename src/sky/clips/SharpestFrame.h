// The sharpest frame of a SER clip as a small picture. Any thread.
#pragma once

#include <QImage>

#include <string>

namespace tarn {

// Of a hundred frames spread over the clip. Fits into a square of `side` pixels and is never larger
// than the frame; null when the file is no such clip, none of its frames can be trusted, or the
// thread is to stop.
QImage SharpestFrame(const std::string& path, int side);

} // namespace tarn
