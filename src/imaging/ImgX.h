// One image in one object: the imaging operations that the program is made of. An object may stand
// for pixels that are not decoded yet: it then knows its real size, holds a reduced picture for the
// screen, and fetches more pixels when an operation needs them. Copies share their pixels.
#pragma once

#include "imaging/PictureLoader.h"
#include "imaging/Turn.h"

#include <QImage>
#include <QSize>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

class PicturesAhead;

class ImgX {
public:
    // "Read file info": pixel size from the header, 0 x 0 when it cannot be read. Leaves the image.
    static QSize ReadFileInfo(const std::string& path);

    // Decodes the file into the object: at least what the picture needs to be fitted into a box of
    // `wanted` pixels as it is and turned on its side, or whole when `wanted` is empty. Returns the
    // error text, empty when all went well. On an error the object holds no image, or what of a
    // damaged file could be read: ask HasImage.
    std::string LoadFile(const std::string& path, QSize wanted);

    // The same, from what was decoded ahead where that is so; what had to be decoded now is kept
    // there for the way back.
    std::string LoadFile(const std::string& path, QSize wanted, PicturesAhead& ahead);

    // The same for the file as it was at a look just taken.
    std::string LoadFile(const std::string& path, QSize wanted, PicturesAhead& ahead,
                         const FileLook& now);

    // The toolkit's own reader, for files that LoadFile refuses. Same result.
    std::string LoadWithSystemReader(const std::string& path);

    void TakePicture(const QImage& picture);

    // The same file's picture as it looks otherwise: its pixels come under the turns of this one,
    // whose size stays.
    void TakePixels(const ImgX& other);

    void CopyFrom(const ImgX& other) { *this = other; }
    void Clear() { *this = ImgX(); }

    // "No Image" exactly when there is none, else a description ("3504 x 2336, 32 bit").
    std::string StatusText() const;
    bool HasImage() const { return !m_pixels.isNull(); }

    // The real size in pixels, as turned, whatever is decoded. 0 when there is no image.
    int Width() const { return m_size.width(); }
    int Height() const { return m_size.height(); }

    // Resampled to exactly this size, smoothly, from no more pixels than that takes, or taken as a
    // worker has prepared it. A side of 0 follows from the other by the proportions.
    void Scale(int width, int height);

    // Cut out; the part outside the image is left away, nothing inside leaves no image.
    void Crop(int left, int top, int width, int height);

    // Clockwise; right angles exact, at others the uncovered corners are transparent.
    void Rotate(float degrees);

    // Axis 0 left to right, 1 top to bottom.
    void Mirror(int axis);

    // Right angles and mirroring in one.
    void TurnBy(const Turn& turn);

    // -100 to 100, so many percent of white added to each channel; 0 leaves the picture as it is.
    void Brightness(int value);

    // The image as held now for showing; may be smaller than Width x Height while that is all that
    // was needed so far.
    const QImage& SystemPicture() const;

    // All pixels, Width x Height.
    const QImage& FullPicture();

    // Sees to it that all pixels are at hand, before one part after another is cut out of copies.
    void FetchAll();

    // Whether the reader has turned the picture upright itself.
    bool IsUpright() const { return m_facts && m_facts->header.upright; }

    // Of the file that was loaded; null for a picture that comes from none.
    const std::shared_ptr<const PictureFacts>& Facts() const { return m_facts; }

    // What is to be said of the picture's colour profile; mostly empty.
    const std::string& ColorRemark() const { return m_colorRemark; }

    // Why pixels that an operation needed could not be had any more (the file went away); the
    // operation then used an enlargement of those at hand. Empty otherwise.
    const std::string& ErrorText() const { return m_error; }

    // What loading came to: why there is no image, or only a part of it. Empty when all of what is
    // at hand was read well.
    const std::string& LoadError() const { return m_loadError; }

private:
    std::string Refuse(const std::string& error);
    std::string RefuseFor(const std::string& path, const std::string& error);
    std::string Load(std::shared_ptr<PictureSource> source, QSize least);
    void Fetch(QSize least);
    void SetAll(const QImage& picture);
    void SetPixels(const QImage& pixels);

    // Turned and brightened is only what is looked at, often a small part.
    QImage m_pixels;                         // what is decoded, as stored in the file
    QSize m_size{0, 0};                      // real size, turned
    std::shared_ptr<PictureSource> m_source; // where more pixels are, null when m_pixels is all
    Turn m_turn;                             // what is still to be done to the pixels
    std::vector<int> m_brightened; // after it, in this order, each stops at black and white
    mutable QImage m_shown;        // the outcome, null until it is asked for
    std::string m_error;
    std::string m_loadError;
    std::string m_colorRemark;
    std::shared_ptr<const PictureFacts> m_facts;
    std::string m_refused; // path of the file that the toolkit could not read last,
    std::string m_refusal; // and why
};

} // namespace tarn
