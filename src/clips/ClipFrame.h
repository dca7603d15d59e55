// The first frame of a clip as a small picture. Any thread.
#pragma once

#include <QImage>
#include <QSize>

#include <string>

namespace tarn {

// Fits into a square of `side` pixels and is never larger than the frame; null when the file is no
// clip that can be read.
QImage FirstFrame(const std::string& path, int side);

// The size that it has then.
inline QSize SmallSize(QSize frame, int side) {
    if (frame.width() <= side && frame.height() <= side) return frame;
    return frame.scaled(side, side, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

} // namespace tarn
