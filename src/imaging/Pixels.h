// Work on decoded pixels that the interface and the worker threads share.
#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

namespace tarn {

// Format_ARGB32 where something shines through, else Format_RGB32.
QImage InOwnFormat(const QImage& picture);

// To exactly this size, smoothly.
QImage Resampled(const QImage& picture, QSize size);

// A part of the picture of so many times its size, which shows its pixels as they are.
QImage Enlarged(const QImage& picture, int times, const QRect& wanted);

inline constexpr int kMostBrightness = 100; // and as many below 0

// So many percent of white added to each channel.
QImage Brightened(QImage picture, int value);

// Fewest pixels of a file from which it can be fitted into the box upright and on its side; empty,
// for all of them, when the box is.
QSize LeastFor(QSize picture, QSize box);

} // namespace tarn
