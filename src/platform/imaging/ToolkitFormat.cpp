#include "platform/imaging/PictureFormat.h"

#include <QFile>
#include <QImageReader>

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
    if (reader->canRead()) return reader->size().isValid() ? reader->size() : QSize(0, 0);
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
    return picture.convertToFormat(picture.hasAlphaChannel() ? QImage::Format_ARGB32
                                                             : QImage::Format_RGB32);
}

} // namespace

const PictureFormat kToolkitFormat{ToolkitSize, DecodeWithToolkit, false, false, nullptr};

} // namespace tarn
