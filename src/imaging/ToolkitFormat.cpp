// Files that the toolkit's own reader takes: PNG, BMP, GIF, TIFF and the like.
#include "imaging/PictureFormat.h"
#include "imaging/Turn.h"
#include "imaging/exif/FileFront.h"

#include <QFile>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace tarn {

namespace {

constexpr long long kMegabyte = 1024LL * 1024;

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

bool IsTurned(std::FILE* file) {
    return OrientationOf(file) != 1;
}

// One reading of one file, by its content whatever its name, as stored.
class ToolkitReader {
public:
    explicit ToolkitReader(std::FILE* file) {
        RaiseAllocationLimit();
        std::rewind(file);
        m_file.open(file, QIODevice::ReadOnly);
        m_reader.setDecideFormatFromContent(true);
        m_reader.setAutoTransform(false);
        m_reader.setDevice(&m_file);
    }
    QImageReader* operator->() { return &m_reader; }

    std::string ErrorText() const {
        return m_reader.error() == QImageReader::UnsupportedFormatError
                   ? "Not a picture that can be read"
                   : m_reader.errorString().toStdString();
    }

private:
    QFile m_file;
    QImageReader m_reader;
};

QSize ToolkitSize(std::FILE* file, std::string& error) {
    ToolkitReader reader(file);
    if (reader->canRead())
        return reader->size().isValid() ? Turn::Upright(OrientationOf(file)).Of(reader->size())
                                        : QSize(0, 0);
    error = reader.ErrorText();
    return {0, 0};
}

QImage DecodeWithToolkit(std::FILE* file, QSize, std::string& error) {
    ToolkitReader reader(file);
    const QImage picture = reader->read();
    if (picture.isNull()) {
        error = reader.ErrorText();
        return {};
    }
    return Turn::Upright(OrientationOf(file))
        .Of(picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                              : QImage::Format_RGB32));
}

// The toolkit drops a profile that it does not understand without a word. A damaged one comes as it
// is: what takes it finds that out.
std::string ProfileOfPng(std::FILE* file) {
    constexpr std::size_t kLooked = 1 << 20;  // bytes before the pixels
    constexpr std::size_t kLongestName = 80;  // with its end
    constexpr std::uint32_t kGuess = 1 << 16; // of the size, which the toolkit corrects
    std::string bytes(kLooked, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    if (!bytes.starts_with("\x89PNG\r\n")) return {};
    const std::size_t chunk = bytes.substr(0, bytes.find("IDAT")).find("iCCP");
    if (chunk == std::string::npos || chunk < 4) return {};
    const auto length = qFromBigEndian<std::uint32_t>(&bytes[chunk - 4]);
    std::string data = bytes.substr(chunk + 4, length);
    const std::size_t nameEnd = data.substr(0, kLongestName).find('\0');
    if (nameEnd == std::string::npos || nameEnd + 2 > data.size()) return data;
    QByteArray packed(4, '\0');
    qToBigEndian(kGuess, packed.data());
    packed.append(data.data() + nameEnd + 2, qsizetype(data.size() - nameEnd - 2));
    const QByteArray profile = qUncompress(packed);
    return profile.isEmpty() ? data : profile.toStdString();
}

} // namespace

const PictureFormat kToolkitFormat{ToolkitSize, DecodeWithToolkit, false,
                                   false,       ProfileOfPng,      IsTurned};

} // namespace tarn
