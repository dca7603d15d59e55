// Files that the toolkit's own reader takes: PNG, BMP, GIF, TIFF and the like.
#include "imaging/DirectFormats.h"
#include "imaging/FormatOf.h"
#include "imaging/ToolkitGaps.h"
#include "imaging/Turn.h"
#include "imaging/exif/FileFront.h"
#include "imaging/exif/FileKind.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QLoggingCategory>
#include <QtEndian>

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace tarn {

namespace {

constexpr long long kMegabyte = 1024LL * 1024;

// The toolkit would write on the console what is told otherwise.
void KeepQuiet() {
    static const bool kQuiet = [] {
        QLoggingCategory::setFilterRules(
            QStringLiteral("qt.gui.imageio*=false\nqt.gui.icc*=false"));
        return true;
    }();
    Q_UNUSED(kQuiet);
}

// The toolkit refuses large pictures by a limit of its own, meant for servers.
void RaiseAllocationLimit() {
    static const bool raised = [] {
        const long long megabytes = PictureMemoryLimit() / kMegabyte;
        QImageReader::setAllocationLimit(
            int(std::min<long long>(megabytes, std::numeric_limits<int>::max())));
        return true;
    }();
    Q_UNUSED(raised);
}

// The toolkit knows the orientation of some kinds only.
int OrientationOf(std::FILE* file) {
    return OrientationOfContainer(FileBytes(::fileno(file)));
}

// One reading of one file, by its content whatever its name, as stored.
class ToolkitReader {
public:
    explicit ToolkitReader(std::FILE* file, bool forPixels) {
        RaiseAllocationLimit();
        KeepQuiet();
        std::rewind(file);
        if (forPixels) m_key = FindKeyColor(file);
        m_bytes = QByteArray::fromStdString(m_key ? m_key->file : FirstOfBitmaps(file));
        m_buffer.setBuffer(&m_bytes);
        m_buffer.open(QIODevice::ReadOnly);
        m_file.open(file, QIODevice::ReadOnly);
        const std::string start = m_bytes.isEmpty() ? FileBytes(::fileno(file)).At(0, kKindBytes)
                                                    : m_bytes.left(kKindBytes).toStdString();
        m_reader.setAutoDetectImageFormat(false);
        m_reader.setFormat(HasLongChunk(file) ? nullptr : ToolkitNameOf(start));
        m_reader.setAutoTransform(false);
        if (m_bytes.isEmpty())
            m_reader.setDevice(&m_file);
        else
            m_reader.setDevice(&m_buffer);
    }
    QImageReader* operator->() { return &m_reader; }

    QImage Read() {
        const QImage picture = m_reader.read();
        return m_key && !picture.isNull() ? ShineThrough(picture, *m_key) : picture;
    }

    std::string ErrorText() const {
        return m_reader.error() == QImageReader::UnsupportedFormatError
                   ? "Not a picture that can be read"
                   : m_reader.errorString().toStdString();
    }

private:
    QFile m_file;
    std::optional<KeyColor> m_key;
    QByteArray m_bytes; // what is read instead of the file, where it has to be put right
    QBuffer m_buffer;
    QImageReader m_reader;
};

QSize ToolkitSize(std::FILE* file, std::string& error) {
    ToolkitReader reader(file, false);
    if (reader->canRead())
        return reader->size().isValid() ? Turn::Upright(OrientationOf(file)).Of(reader->size())
                                        : QSize(0, 0);
    error = reader.ErrorText();
    return {0, 0};
}

QImage DecodeWithToolkit(std::FILE* file, QSize, std::string& error) {
    if (const auto masked = DecodeBitMasks(file, error)) return *masked;
    ToolkitReader reader(file, true);
    QImage picture = reader.Read();
    if (picture.isNull()) {
        error = reader.ErrorText();
        return {};
    }
    picture = std::move(picture).convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                                           : QImage::Format_RGB32);
    if (EndsTooEarly(file, picture)) error = "The file ends too early";
    return Turn::Upright(OrientationOf(file)).Of(picture);
}

// Empty where it is damaged, or larger than profiles are.
std::string Unpacked(std::string_view packed) {
    constexpr std::size_t kUsual = 1U << 16U;
    int fault = Z_BUF_ERROR;
    std::string bytes;
    for (std::size_t room = kUsual; fault == Z_BUF_ERROR && room <= kLargestProfile; room *= 4) {
        bytes.resize(room);
        uLongf count = room;
        fault = ::uncompress(reinterpret_cast<Bytef*>(bytes.data()), &count,
                             reinterpret_cast<const Bytef*>(packed.data()), packed.size());
        bytes.resize(count);
    }
    return fault == Z_OK ? bytes : std::string();
}

// The toolkit drops a profile that it does not understand without a word. A damaged one comes as it
// is: what takes it finds that out.
std::string ProfileOfPng(std::FILE* file) {
    constexpr std::size_t kLooked = 1 << 20; // bytes before the pixels
    constexpr std::size_t kLongestName = 80; // with its end
    std::string bytes(kLooked, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    if (!bytes.starts_with("\x89PNG\r\n")) return {};
    const std::size_t chunk = bytes.substr(0, bytes.find("IDAT")).find("iCCP");
    if (chunk == std::string::npos || chunk < 4) return {};
    const auto length = qFromBigEndian<std::uint32_t>(&bytes[chunk - 4]);
    std::string data = bytes.substr(chunk + 4, length);
    const std::size_t nameEnd = data.substr(0, kLongestName).find('\0');
    if (nameEnd == std::string::npos || nameEnd + 2 > data.size()) return data;
    const std::string profile = Unpacked(std::string_view(data).substr(nameEnd + 2));
    return profile.empty() ? data : profile;
}

} // namespace

const PictureFormat kDirectToolkit{ToolkitSize, DecodeWithToolkit, false,
                                   false,       ProfileOfPng,      IsContainerTurned};

bool IsContainerTurned(std::FILE* file) {
    return OrientationOf(file) != 1;
}

} // namespace tarn
