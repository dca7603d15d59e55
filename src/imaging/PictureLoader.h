// Reads picture files: sizes from headers, pixels at the least scale that will do.
#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace tarn {

struct PictureFormat;

// Which file stood under a name, and in which state.
struct FileIdentity {
    std::int64_t device = 0;
    std::int64_t inode = 0; // 0: there was none
    std::int64_t bytes = 0;
    std::int64_t modified = 0; // nanoseconds of its clock, as the next
    std::int64_t changed = 0;
    std::int64_t look = 0; // generation of the stretch that it is looked at with

    bool operator==(const FileIdentity&) const = default;

    // The same but for its times, which the program sets itself, and its look.
    bool IsSameFile(const FileIdentity& other) const {
        return device == other.device && inode == other.inode && bytes == other.bytes;
    }
};

// One picture file on disk, opened anew for each reading, so that a memory card is never held.
// Pixels come in the colours of the screen, as stored (no turn by orientation) but for the formats
// whose libraries turn them. For one thread at a time.
class PictureSource {
public:
    PictureSource(std::string path, const PictureFormat& format, QSize size, FileIdentity identity)
        : m_path(std::move(path)), m_format(format), m_size(size), m_identity(identity) {}

    // Pixels of the file as stored, from its header; 0 x 0 when the header does not say.
    QSize Size() const { return m_size; }

    // Whether Decode may give less than all pixels.
    bool Reduces() const;

    // Pixels of at least `wanted` in both directions, or all of them where `wanted` is empty, the
    // file is smaller or the format knows no reduced reading. A null image and `error` when it
    // cannot be decoded or is another picture by now; an image and `error` both when only a part of
    // the file could be. The largest reading is kept and serves every later wish that it covers.
    QImage Decode(QSize wanted, std::string& error);

    // Whether the pixels come upright, whatever the camera data say of their orientation.
    bool IsUpright() const;

    // What is to be said of the picture's colour profile once it is decoded; mostly empty.
    const std::string& ColorRemark() const { return m_colorRemark; }

    // The file as it was when Decode read it.
    const FileIdentity& Identity() const { return m_identity; }

    // Copies of what is decoded at sizes that will be shown, made ahead; a size that takes more
    // pixels than are decoded is passed over. A null image for a size that was not prepared.
    void PrepareScaled(QSize size);
    QImage Scaled(QSize size) const;
    bool HasScaled() const { return !m_scaled.empty(); }

    // Memory that the pixels take.
    std::int64_t BytesHeld() const;

private:
    bool Covers(QSize wanted) const;
    void ShowOwnColors(std::FILE* file);

    std::string m_path;
    const PictureFormat& m_format;
    QSize m_size;
    FileIdentity m_identity;
    QImage m_decoded;
    std::string m_decodeError;
    std::string m_colorRemark;
    std::vector<QImage> m_scaled;
};

// What a picture file says of itself before anything is decoded.
struct PictureHeader {
    QSize size{0, 0};     // pixels as stored, 0 x 0 when no reader knows the file
    bool upright = false; // its reader turns it upright, whatever the camera data say
    bool fits = false;    // a telescope's picture, whose header has more to say
};

// Finds out what a file is by its first bytes, never by its name.
class PictureLoader {
public:
    // Why JPEG pictures cannot be read at all; empty when they can.
    static std::string ReaderError();

    // Nothing is decoded. A file that is open already is read from its start, and stays open.
    static PictureHeader ReadHeader(const std::string& path);
    static PictureHeader ReadHeader(int file);
    static QSize ReadSize(const std::string& path) { return ReadHeader(path).size; }

    // The file that stands under the name now.
    static FileIdentity Identify(const std::string& path);

    // A source for the file; null and an error text ("No such file or directory", "Not a picture
    // that can be read", ...) when it cannot be had. Refuses what would take more than half of the
    // machine's memory.
    static std::shared_ptr<PictureSource> Open(const std::string& path, std::string& error);

    // The same by the toolkit's own reader, whatever the file is.
    static std::shared_ptr<PictureSource> OpenWithToolkit(const std::string& path,
                                                          std::string& error);
};

} // namespace tarn
