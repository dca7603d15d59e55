// The thumbnails that all programs of the desktop share, by the rules of freedesktop.org: a PNG a
// picture, named after its URI, good for as long as the picture keeps its time. Any thread.
#pragma once

#include <QImage>

#include <cstdint>
#include <string>

namespace tarn {

class SharedCache {
public:
    // Pictures that fit into a square of so many pixels: 128, or 256 for anything larger.
    explicit SharedCache(int side);

    int Side() const { return m_side; }

    // A null image when there is none of this time (seconds since 1970).
    QImage Read(const std::string& path, std::int64_t modified) const;

    // Quietly nothing where it cannot be written.
    void Write(const std::string& path, std::int64_t modified, const QImage& picture) const;

    // The file for a picture's full path.
    std::string FileOf(const std::string& path) const;

private:
    int m_side;
    std::string m_folder;
};

// "file:///a%20b.jpg", as the other programs of the desktop spell it.
std::string UriOf(const std::string& path);

} // namespace tarn
