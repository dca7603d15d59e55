#include "imaging/PictureLoader.h"

#include "common/file_handle.h"
#include "imaging/ColorProfiles.h"
#include "imaging/FormatOf.h"
#include "imaging/Pixels.h"
#include "imaging/exif/FileBytes.h"
#include "imaging/exif/FileFront.h"
#include "imaging/exif/FileKind.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/ScreenStretch.h"
#include "imaging/fits/SkyFile.h"

#include <QColorSpace>

#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kReadBuffer = 256 * 1024;
constexpr int kBytesPerPixel = 4;

FileHandle SystemError(std::string& error) {
    error = std::generic_category().message(errno);
    return {};
}

FileHandle Refuse(int descriptor, const char* why, std::string& error) {
    ::close(descriptor);
    error = why;
    return {};
}

// Anything but a file with content is refused: a pipe under a picture's name would never answer.
FileHandle Buffered(int descriptor, std::string& error) {
    if (descriptor < 0) return SystemError(error);
    struct stat facts {};
    if (::fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode))
        return Refuse(descriptor, "Not a file", error);
    if (facts.st_size == 0) return Refuse(descriptor, "The file is empty", error);
    FileHandle file(::fdopen(descriptor, "rb"));
    if (!file) return Refuse(descriptor, "Not enough memory", error);
    std::setvbuf(file.get(), nullptr, _IOFBF, kReadBuffer);
    return file;
}

FileHandle OpenFile(const std::string& path, std::string& error) {
    return Buffered(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC), error);
}

bool FitsIntoMemory(QSize size) {
    return static_cast<long long>(size.width()) * size.height() <=
           PictureMemoryLimit() / kBytesPerPixel;
}

FileLook LookOf(std::FILE* file) {
    struct stat facts {};
    return ::fstat(::fileno(file), &facts) == 0 ? tarn::LookOf(facts) : FileLook();
}

// Libraries throw when memory is short; a worker thread would end the program.
template <typename Read> auto Guarded(std::string& error, const Read& read) -> decltype(read()) {
    try {
        return read();
    } catch (const std::exception&) {
        error = "Not enough memory";
        return {};
    }
}

QSize SizeOf(const PictureFormat& format, std::FILE* file, std::string& error) {
    return Guarded(error, [&] { return format.size(file, error); });
}

bool Turns(const PictureFormat& format, std::FILE* file) {
    return format.upright || (format.turns && format.turns(file));
}

std::shared_ptr<PictureSource> MakeSource(const std::string& path, std::FILE* file,
                                          const PictureFormat& format, std::string& error) {
    const FileLook look = LookOf(file);
    const int image = ChosenImage(look.device, look.inode);
    const ReadsImage one(image);
    const QSize size = SizeOf(format, file, error);
    if (!error.empty()) return nullptr;
    if (!FitsIntoMemory(size)) {
        error = "The picture of " + std::to_string(size.width()) + " x " +
                std::to_string(size.height()) + " pixels does not fit into memory";
        return nullptr;
    }
    const PictureHeader header{size, Turns(format, file), &format == &kFitsFormat};
    return std::make_shared<PictureSource>(path, format, header, look, image);
}

PictureHeader HeaderOf(const FileHandle& file, std::string& error) {
    if (!file) return {};
    const PictureFormat& format = FormatOf(file.get());
    const QSize size = SizeOf(format, file.get(), error);
    return {error.empty() ? size : QSize(0, 0), Turns(format, file.get()), &format == &kFitsFormat};
}

// The toolkit's word on a file that is no picture at all is the same as on a broken one.
bool IsToolkitsByItsStart(int file) {
    constexpr std::size_t kUnused = 6; // of a bitmap, four bytes of 0
    const std::string start = FileBytes(file).At(0, kKindBytes);
    return IsPng(start) || IsWebP(start) || start.starts_with("GIF8") ||
           (start.starts_with("BM") && start.find_first_not_of('\0', kUnused) >= kUnused + 4);
}

} // namespace

long long PictureMemoryLimit() {
    static const long long limit =
        static_cast<long long>(::sysconf(_SC_PHYS_PAGES)) * ::sysconf(_SC_PAGESIZE) / 2;
    return limit;
}

bool PictureSource::Reduces() const {
    return m_format.reduces;
}

bool PictureSource::Covers(QSize wanted) const {
    if (m_decoded.isNull()) return false;
    if (m_decoded.size() == m_size || !Reduces()) return true;
    return !wanted.isEmpty() && m_decoded.width() >= wanted.width() &&
           m_decoded.height() >= wanted.height();
}

QImage PictureSource::Decode(QSize wanted, std::string& error) {
    if (!Covers(wanted)) {
        const FileHandle file = OpenFile(m_path, error);
        if (!file) return {};
        const ReadsImage one(m_image);
        const FileLook look = LookOf(file.get());
        const std::int64_t generation = StretchGeneration();
        if (!look.IsSameFile(m_look) || SizeOf(m_format, file.get(), error) != m_size) {
            error = "The file has changed";
            return {};
        }
        std::rewind(file.get());
        const QImage decoded =
            Guarded(error, [&] { return m_format.decode(file.get(), wanted, error); });
        if (decoded.isNull() && error.empty()) error = "Not enough memory";
        if (decoded.isNull()) return {};
        m_decoded = decoded;
        m_decodeError = error;
        ShowOwnColors(file.get());
        m_generation = generation;
        TakeFacts(file.get(), look);
    }
    error = m_decodeError;
    return m_decoded;
}

void PictureSource::ShowOwnColors(std::FILE* file) {
    std::string profile;
    if (m_format.profile) {
        std::rewind(file);
        profile = m_format.profile(file);
    }
    if (profile.empty()) profile = m_decoded.colorSpace().iccProfile().toStdString();
    m_colorRemark = ToScreenColors(m_decoded, profile);
    m_decoded.setColorSpace({});
}

// More pixels of the same file bring no new facts.
void PictureSource::TakeFacts(std::FILE* file, const FileLook& look) {
    if (m_facts && m_facts->look == look) return;
    const bool fits = &m_format == &kFitsFormat;
    std::string error;
    m_look = look;
    m_facts = std::make_shared<PictureFacts>(
        PictureFacts{look,
                     {m_size, IsUpright(), fits},
                     ReadFileFront(::fileno(file)),
                     fits ? SkyFactsOf(NameOfOpen(::fileno(file))) : SkyFacts()});
}

bool PictureSource::IsOutOfDate() const {
    return &m_format == &kFitsFormat && (m_generation != StretchGeneration() ||
                                         m_image != ChosenImage(m_look.device, m_look.inode));
}

void PictureSource::TimesWereSet(const FileLook& now) {
    m_look = now;
    if (!m_facts) return;
    auto facts = std::make_shared<PictureFacts>(*m_facts);
    facts->look = now;
    m_facts = std::move(facts);
}

bool PictureSource::IsToolkits() const {
    return &m_format == &kToolkitFormat || &m_format == &kTiffFormat;
}

bool PictureSource::IsUpright() const {
    return m_upright;
}

void PictureSource::PrepareScaled(QSize size) {
    if (size.isEmpty() || size == m_decoded.size() || size.width() > m_decoded.width() ||
        size.height() > m_decoded.height() || !Scaled(size).isNull())
        return;
    m_scaled.push_back(Resampled(m_decoded, size));
}

QImage PictureSource::Scaled(QSize size) const {
    for (const QImage& scaled : m_scaled)
        if (scaled.size() == size) return scaled;
    return {};
}

std::int64_t PictureSource::BytesHeld() const {
    std::int64_t bytes = m_decoded.sizeInBytes();
    for (const QImage& scaled : m_scaled) bytes += scaled.sizeInBytes();
    return bytes;
}

std::string PictureLoader::ReaderError() {
    return JpegReaderError();
}

PictureHeader PictureLoader::ReadHeader(const std::string& path) {
    std::string error;
    return HeaderOf(OpenFile(path, error), error);
}

PictureHeader PictureLoader::ReadHeader(const std::string& path, std::string& fault) {
    fault.clear();
    const FileHandle file = OpenFile(path, fault);
    PictureHeader header = HeaderOf(file, fault);
    if (!file) return header;
    std::rewind(file.get());
    if (&FormatOf(file.get()) != &kToolkitFormat) return header;
    if (!IsToolkitsByItsStart(::fileno(file.get())))
        fault.clear();
    else if (fault.empty() && header.size.isEmpty())
        fault = "Its header cannot be read";
    return header;
}

PictureHeader PictureLoader::ReadHeader(int file) {
    std::string error;
    if (::lseek(file, 0, SEEK_SET) != 0) return {};
    return HeaderOf(Buffered(::fcntl(file, F_DUPFD_CLOEXEC, 0), error), error);
}

FileLook PictureLoader::LookAt(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 ? LookOf(facts) : FileLook();
}

std::shared_ptr<PictureSource> PictureLoader::Open(const std::string& path, std::string& error) {
    error.clear();
    const FileHandle file = OpenFile(path, error);
    if (!file) return nullptr;
    return MakeSource(path, file.get(), FormatOf(file.get()), error);
}

std::shared_ptr<PictureSource> PictureLoader::OpenWithToolkit(const std::string& path,
                                                              std::string& error) {
    error.clear();
    const FileHandle file = OpenFile(path, error);
    if (!file) return nullptr;
    if (&FormatOf(file.get()) == &kRawFormat) { // it would take the small picture in it for all
        error = "Not a picture that can be read";
        return nullptr;
    }
    return MakeSource(path, file.get(), kToolkitFormat, error);
}

} // namespace tarn
