// Reads picture files: sizes from headers, pixels at the least scale that will do.
#pragma once

#include <QImage>
#include <QSize>

#include <memory>
#include <string>

namespace tarn {

// One picture file on disk. Pixels come upright as stored (no turn by orientation).
class PictureSource {
public:
    virtual ~PictureSource() = default;

    // Pixels of the file as stored, from its header.
    virtual QSize Size() const = 0;

    // Pixels of at least `wanted` in both directions, or all of them where the file is smaller or
    // the format knows no reduced reading. A null image and `error` when it cannot be decoded; an
    // image and `error` both when only a part of the file could be.
    virtual QImage Decode(QSize wanted, std::string& error) = 0;
};

// Finds out what a file is by its first bytes, never by its name.
class PictureLoader {
public:
    // Pixel size from the header alone, 0 x 0 when no reader knows the file. Nothing is decoded.
    static QSize ReadSize(const std::string& path);

    // A source for the file; null and an error text ("No such file or directory", "Not a picture
    // that can be read", ...) when it cannot be had. Refuses what would not fit into memory.
    static std::shared_ptr<PictureSource> Open(const std::string& path, std::string& error);
};

} // namespace tarn
