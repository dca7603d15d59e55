// Files that the toolkit's readers show wrongly, or not at all, although they know the kind.
#pragma once

#include <QImage>

#include <cstdio>
#include <optional>
#include <string>

namespace tarn {

// A bitmap whose pixels are cut out of numbers by masks, other than the toolkit expects. None when
// the file is no such; both an image and an error when a part could be read.
std::optional<QImage> DecodeBitMasks(std::FILE* file, std::string& error);

// Whether a bitmap or GIF file ends within its picture, which the toolkit paints to its end without
// a word. The rows of a bitmap that are lost become grey.
bool EndsTooEarly(std::FILE* file, QImage& picture);

// A PNG file of 16 bits with one colour for what shines through: the file without it, and the
// colour.
struct KeyColor {
    std::string file;
    quint16 red, green, blue;
};
std::optional<KeyColor> FindKeyColor(std::FILE* file);
QImage ShineThrough(const QImage& picture, const KeyColor& key);

// Whether a PNG file says of a part in front of its pixels that it is larger than any is: the
// library takes memory for it before it looks whether it is there.
bool HasLongChunk(std::FILE* file);

// Of an array of bitmaps, as an older system wrote them, the first as a file of its own; empty when
// the file is none.
std::string FirstOfBitmaps(std::FILE* file);

} // namespace tarn
