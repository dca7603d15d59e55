// One image in one object: the imaging operations that the program is made of. An object may stand
// for pixels that are not decoded yet: it then knows its real size, holds a reduced picture for the
// screen, and fetches the full pixels when an operation needs them. Copies share their pixels.
#pragma once

#include "platform/imaging/PictureLoader.h"

#include <QImage>
#include <QSize>
#include <QTransform>

#include <memory>
#include <string>

namespace tarn {

class ImgX {
public:
    // "Read file info": pixel size from the header, 0 x 0 when it cannot be read. Leaves the image.
    static QSize ReadFileInfo(const std::string& path);

    // Decodes the file into the object, at once and whole or, where that is enough, at no less than
    // `wanted` pixels (either way round). Returns the error text, empty when all went well. On an
    // error the object holds no image, or what of a damaged file could be read: ask StatusText.
    std::string LoadFile(const std::string& path, QSize wanted);

    // The toolkit's own reader, for files that LoadFile refuses. Same result.
    std::string LoadWithSystemReader(const std::string& path);

    void TakePicture(const QImage& picture);
    void CopyFrom(const ImgX& other) { *this = other; }
    void Clear() { *this = ImgX(); }

    // "No Image" exactly when there is none, else a description ("3504 x 2336, 32 bit").
    std::string StatusText() const;
    bool HasImage() const;

    // The real size in pixels, as turned, whatever is decoded. 0 when there is no image.
    int Width() const;
    int Height() const;

    // Resampled to exactly this size, smoothly; from the reduced picture when that is enough.
    void Scale(int width, int height);

    // Cut out; the part outside the image is left away.
    void Crop(int left, int top, int width, int height);

    // Clockwise; right angles exact.
    void Rotate(float degrees);

    // Axis 0 left to right, 1 top to bottom.
    void Mirror(int axis);

    // -100 to 100, 0 leaves the picture as it is.
    void Brightness(int value);

    // The image as held now for showing; may be smaller than Width x Height while that is all that
    // was needed so far.
    const QImage& SystemPicture() const { return m_pixels; }

    // All pixels, Width x Height.
    const QImage& FullPicture();

private:
    bool NeedFull();

    QImage m_pixels;                         // what is decoded, already turned
    QSize m_size;                            // real size, already turned
    std::shared_ptr<PictureSource> m_source; // where the full pixels are, null when m_pixels is all
    QTransform m_turns;                      // what was done to the source's pixels since
};

} // namespace tarn
