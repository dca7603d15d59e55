// TIFF files. The toolkit reads the whole ones; of the others its library gives strip by strip, or
// tile by tile, what is there. What the library would write on the console is kept for the answer.
#include "imaging/DirectFormats.h"
#include "imaging/Turn.h"
#include "imaging/exif/FileFront.h"

#include <QColorSpace>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <memory>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <tiffio.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr QRgb kUnread = 0xFF808080; // grey, as the rest of a JPEG file cut short

struct Closer {
    void operator()(TIFF* file) const { TIFFClose(file); }
};
using TiffFile = std::unique_ptr<TIFF, Closer>;

thread_local std::string* listener = nullptr; // what this thread's reading is told

void Note(const char* format, std::va_list arguments) {
    if (!listener || !listener->empty()) return;
    char text[300];
    std::vsnprintf(text, sizeof text, format, arguments);
    *listener = text;
}

// Only that of a warning which tells of lost pixels.
void NoteWarning(const char*, const char* format, std::va_list arguments) {
    std::string text;
    std::string* const before = std::exchange(listener, &text);
    Note(format, arguments);
    listener = before;
    if (before && before->empty() && text.find("premature end") != std::string::npos)
        *before = text;
}

// Keeps the first fault that is told while it lives.
class Listening {
public:
    Listening() {
        static const bool kSet = [] {
            TIFFSetErrorHandler(
                [](const char*, const char* format, std::va_list all) { Note(format, all); });
            TIFFSetWarningHandler(NoteWarning);
            return true;
        }();
        Q_UNUSED(kSet);
        listener = &m_fault;
    }
    ~Listening() { listener = nullptr; }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;
    const std::string& Fault() const { return m_fault; }

private:
    std::string m_fault;
};

// The library reads without a map of the file, which may become shorter meanwhile.
TiffFile OpenTiff(std::FILE* file) {
    const int own = ::fcntl(::fileno(file), F_DUPFD_CLOEXEC, 0);
    if (own < 0 || ::lseek(own, 0, SEEK_SET) != 0) return nullptr;
    TiffFile tiff(TIFFFdOpen(own, "", "rm"));
    if (!tiff) ::close(own);
    return tiff;
}

// A strip or a tile, which the library gives from the bottom to the top.
class Pieces {
public:
    Pieces(TIFF* file, QSize picture) : m_file(file), m_tiled(TIFFIsTiled(file) != 0) {
        std::uint32_t width = std::uint32_t(picture.width());
        std::uint32_t height = std::uint32_t(picture.height());
        if (m_tiled) {
            TIFFGetField(file, TIFFTAG_TILEWIDTH, &width);
            TIFFGetField(file, TIFFTAG_TILELENGTH, &height);
        } else {
            std::uint32_t rows = 0;
            TIFFGetFieldDefaulted(file, TIFFTAG_ROWSPERSTRIP, &rows);
            height = std::clamp<std::uint32_t>(rows, 1, height);
        }
        std::uint16_t predictor = 1;
        TIFFGetField(file, TIFFTAG_PREDICTOR, &predictor);
        m_differences = predictor != 1;
        const bool fits = width > 0 && height > 0 &&
                          std::uint64_t(width) * height * 4 <= std::uint64_t(PictureMemoryLimit());
        if (!fits) return;
        m_size = QSize(int(width), int(height));
        m_pixels.resize(std::size_t(width) * height);
    }

    QSize Size() const { return m_size; }

    // False where nothing of it can be read; beyond the part that can it is black.
    bool Read(int x, int y) {
        if (ReadTo(x, y, true)) return true;
        if (m_differences) return false; // they become pixels when the whole is there
        std::fill(m_pixels.begin(), m_pixels.end(), 0);
        ReadTo(x, y, false);
        return std::any_of(m_pixels.begin(), m_pixels.end(),
                           [](std::uint32_t pixel) { return (pixel & 0xFFFFFF) != 0; });
    }

    // Its pixels within the picture, which it may jut out of.
    void Put(QImage& picture, int x, int y) const {
        const int width = std::min(m_size.width(), picture.width() - x);
        const int rows = std::min(m_size.height(), picture.height() - y);
        const int held = m_tiled ? m_size.height() : rows; // a last strip is shorter
        for (int row = 0; row < rows; ++row) {
            const std::uint32_t* from =
                &m_pixels[std::size_t(held - 1 - row) * std::size_t(m_size.width())];
            auto* to = reinterpret_cast<QRgb*>(picture.scanLine(y + row)) + x;
            std::transform(from, from + width, to, [](std::uint32_t pixel) {
                return qRgba(int(TIFFGetR(pixel)), int(TIFFGetG(pixel)), int(TIFFGetB(pixel)),
                             int(TIFFGetA(pixel)));
            });
        }
    }

private:
    bool ReadTo(int x, int y, bool stop) {
        const auto column = std::uint32_t(x);
        const auto row = std::uint32_t(y);
        return m_tiled ? TIFFReadRGBATileExt(m_file, column, row, m_pixels.data(), stop) != 0
                       : TIFFReadRGBAStripExt(m_file, row, m_pixels.data(), stop) != 0;
    }

    TIFF* m_file;
    bool m_tiled;
    bool m_differences = false; // what is stored of each pixel
    QSize m_size{0, 0};
    std::vector<std::uint32_t> m_pixels;
};

void TakeProfile(TIFF* file, QImage& picture) {
    std::uint32_t length = 0;
    void* profile = nullptr;
    if (TIFFGetField(file, TIFFTAG_ICCPROFILE, &length, &profile) == 1 && profile)
        picture.setColorSpace(QColorSpace::fromIccProfile(
            QByteArray(static_cast<const char*>(profile), qsizetype(length))));
}

// Null where no part can be read.
QImage DecodeParts(std::FILE* file) {
    const TiffFile tiff = OpenTiff(file);
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    if (!tiff || TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width) != 1 ||
        TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height) != 1 || width > INT_MAX ||
        height > INT_MAX || std::uint64_t(width) * height * 4 > std::uint64_t(PictureMemoryLimit()))
        return {};
    TIFFSetField(tiff.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT); // turned further down
    QImage picture(int(width), int(height), QImage::Format_ARGB32_Premultiplied);
    Pieces pieces(tiff.get(), picture.size());
    if (picture.isNull() || pieces.Size().isEmpty()) return {};
    picture.fill(kUnread);
    bool any = false;
    for (int y = 0; y < picture.height(); y += pieces.Size().height())
        for (int x = 0; x < picture.width(); x += pieces.Size().width()) {
            if (!pieces.Read(x, y)) continue;
            any = true;
            pieces.Put(picture, x, y);
        }
    if (!any) return {};
    std::uint16_t extra = 0; // samples of a pixel beside its colours
    const std::uint16_t* meanings = nullptr;
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_EXTRASAMPLES, &extra, &meanings);
    picture = picture.convertToFormat(extra > 0 ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    TakeProfile(tiff.get(), picture);
    const Turn turn = Turn::Upright(OrientationOfContainer(FileBytes(::fileno(file))));
    return turn.Of(picture);
}

QSize TiffSize(std::FILE* file, std::string& error) {
    const Listening listening;
    return kDirectToolkit.size(file, error);
}

QImage DecodeTiff(std::FILE* file, QSize wanted, std::string& error) {
    const Listening listening;
    QImage picture = kDirectToolkit.decode(file, wanted, error);
    if (picture.isNull()) picture = DecodeParts(file);
    const std::string& fault = listening.Fault();
    if (!fault.empty() || !picture.isNull()) error = fault; // none: the library knew more kinds
    return picture;
}

constexpr PictureFormat kFormat{TiffSize, DecodeTiff, false, false, nullptr};

// "LIBTIFF, Version 4.5.0" and lines about who made it.
std::string Version() {
    const std::string text = TIFFGetVersion();
    const std::size_t begins = text.find_first_of("0123456789");
    const std::size_t ends = text.find_first_not_of("0123456789.", begins);
    return begins == std::string::npos ? text : text.substr(begins, ends - begins);
}

} // namespace

extern "C" const FormatModule TarnModule{&kFormat, Version};

} // namespace tarn
