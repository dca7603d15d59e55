// Reads picture files: sizes from headers, pixels at the least scale that will do.
#pragma once

#include "imaging/PictureFacts.h"

#include <QImage>
#include <QSize>

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace tarn {

struct PictureFormat;

// One picture file on disk, opened anew for each reading, so that a memory card is never held.
// Pixels come in the colours of the screen, as stored (no turn by orientation) but for the formats
// whose readers turn them. For one thread at a time.
class PictureSource {
public:
    // `image`: of the file's pictures, from 0.
    PictureSource(std::string path, const PictureFormat& format, const PictureHeader& header,
                  const FileLook& look, int image)
        : m_path(std::move(path)), m_format(format), m_upright(header.upright), m_size(header.size),
          m_look(look), m_image(image) {}

    // Pixels that Decode has, from the file's header; 0 x 0 when the header does not say.
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

    // Whether the toolkit has read it, or could not.
    bool IsToolkits() const;
    const std::string& Path() const { return m_path; }

    // What is to be said of the picture's colour profile once it is decoded; mostly empty.
    const std::string& ColorRemark() const { return m_colorRemark; }

    // Of the file as it was when Decode read it; null before.
    const std::shared_ptr<const PictureFacts>& Facts() const { return m_facts; }

    // Whether another stretch has been chosen since Decode, by which the picture would look
    // otherwise, or another of the file's pictures.
    bool IsOutOfDate() const;

    // The program has set the file's times itself: what was read of it counts for the new ones.
    void TimesWereSet(const FileLook& now);

    // Copies of what is decoded at sizes that will be shown, made ahead; a size that takes more
    // pixels than are decoded is passed over. A null image for a size that was not prepared.
    void PrepareScaled(QSize size);
    QImage Scaled(QSize size) const;
    bool HasScaled() const { return !m_scaled.empty(); }

    // Memory that the pixels take.
    std::int64_t BytesHeld() const;

private:
    bool Covers(QSize wanted) const;
    bool DecodeAnew(QSize wanted, std::string& error);
    void ShowOwnColors(std::FILE* file);
    void TakeFacts(std::FILE* file, const FileLook& look);

    std::string m_path;
    const PictureFormat& m_format;
    bool m_upright;
    QSize m_size;
    FileLook m_look;
    int m_image;
    std::int64_t m_generation = 0; // of the stretch
    std::shared_ptr<const PictureFacts> m_facts;
    QImage m_decoded;
    std::string m_decodeError;
    std::string m_colorRemark;
    std::vector<QImage> m_scaled;
};

// Finds out what a file is by its first bytes, never by its name.
class PictureLoader {
public:
    // Why JPEG pictures cannot be read at all; empty when they can.
    static std::string ReaderError();

    // Nothing is decoded. A file that is open already is read from its start, and stays open.
    static PictureHeader ReadHeader(const std::string& path);
    static PictureHeader ReadHeader(int file);
    // `fault`: why a file that is a picture by its first bytes cannot be read.
    static PictureHeader ReadHeader(const std::string& path, std::string& fault);
    static QSize ReadSize(const std::string& path) { return ReadHeader(path).size; }

    // The file that stands under the name now.
    static FileLook LookAt(const std::string& path);

    // A source for the file; null and an error text ("No such file or directory", "Not a picture
    // that can be read", ...) when it cannot be had. Refuses what would take more than the memory
    // for pictures, however it is read.
    static std::shared_ptr<PictureSource> Open(const std::string& path, std::string& error);

    // The same by the toolkit's own reader, whatever the file is.
    static std::shared_ptr<PictureSource> OpenWithToolkit(const std::string& path,
                                                          std::string& error);
};

} // namespace tarn
