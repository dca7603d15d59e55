#include "imaging/PictureLoader.h"

#include "common/file_handle.h"
#include "common/stop_flag.h"
#include "common/worker.h"
#include "decoder/DecoderPool.h"
#include "imaging/ColorProfiles.h"
#include "imaging/DecodeCost.h"
#include "imaging/FormatOf.h"
#include "imaging/Pixels.h"
#include "imaging/exif/FileBytes.h"
#include "imaging/exif/FileFront.h"
#include "imaging/exif/FileKind.h"
#include "imaging/fits/FitsLines.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/ScreenStretch.h"
#include "imaging/fits/SkyFile.h"
#include "platform/DecodeBudget.h"
#include "platform/OpenRegular.h"

#include <QColorSpace>

#include <cstdio>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kReadBuffer = 256 * 1024;
constexpr int kBytesPerPixel = 4;

FileHandle WithContent(FileHandle file, std::string& error) {
    struct stat facts {};
    if (!file || ::fstat(::fileno(file.get()), &facts) != 0) return {};
    if (facts.st_size == 0) return error = "The file is empty", FileHandle();
    std::setvbuf(file.get(), nullptr, _IOFBF, kReadBuffer);
    return file;
}

FileHandle OpenPicture(const std::string& path, std::string& error) {
    return WithContent(OpenRegular(path, error), error);
}

bool FitsIntoMemory(QSize size) {
    return static_cast<long long>(size.width()) * size.height() <=
           PictureMemoryLimit() / kBytesPerPixel;
}

FileLook LookOf(std::FILE* file) {
    struct stat facts {};
    return ::fstat(::fileno(file), &facts) == 0 ? tarn::LookOf(facts) : FileLook();
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
    if (!format.reduces && !FitsIntoMemory(size)) {
        error = "The picture of " + std::to_string(size.width()) + " x " +
                std::to_string(size.height()) + " pixels does not fit into memory";
        return nullptr;
    }
    const PictureHeader header{size, Turns(format, file), &format == &kFitsFormat};
    return std::make_shared<PictureSource>(path, format, header, look, image);
}

PictureHeader HeaderOf(const FileHandle& file, std::string& error) {
    if (!file) return {};
    return Guarded(error, [&] {
        const PictureFormat& format = FormatOf(file.get());
        const QSize size = SizeOf(format, file.get(), error);
        return PictureHeader{error.empty() ? size : QSize(0, 0), Turns(format, file.get()),
                             &format == &kFitsFormat};
    });
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
    return TheDecodeBudget().Bytes();
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
    if (!Covers(wanted) && !Guarded(error, [&] { return DecodeAnew(wanted, error); })) return {};
    error = m_decodeError;
    return m_decoded;
}

bool PictureSource::DecodeAnew(QSize wanted, std::string& error) {
    const FileHandle file = OpenPicture(m_path, error);
    if (!file) return false;
    const ReadsImage one(m_image);
    const FileLook look = LookOf(file.get());
    const std::int64_t generation = StretchGeneration();
    if (!look.IsSameFile(m_look) || SizeOf(m_format, file.get(), error) != m_size) {
        if (!IsDecoderFault(error)) error = "The file has changed";
        return false;
    }
    std::rewind(file.get());
    const long long cost = DecodeCost(m_format, file.get(), m_size, wanted);
    error = CostFault(cost, m_size, look.bytes);
    if (!error.empty()) return false;
    const DecodeShare share(cost);
    if (!share) return error = kBrokenOff, false;
    std::rewind(file.get());
    const QImage decoded = m_format.decode(file.get(), wanted, error);
    if (IsStopped()) return error = kBrokenOff, false;
    if (decoded.isNull() && error.empty()) error = "Not enough memory";
    if (decoded.isNull()) return false;
    m_decoded = decoded;
    m_decodeError = error;
    ShowOwnColors(file.get());
    m_generation = generation;
    TakeFacts(file.get(), look);
    return true;
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
    return HeaderOf(OpenPicture(path, error), error);
}

PictureHeader PictureLoader::ReadHeader(const std::string& path, std::string& fault) {
    fault.clear();
    const FileHandle file = OpenPicture(path, fault);
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
    const int own = ::lseek(file, 0, SEEK_SET) == 0 ? ::fcntl(file, F_DUPFD_CLOEXEC, 0) : -1;
    FileHandle opened(own < 0 ? nullptr : ::fdopen(own, "rb"));
    if (own >= 0 && !opened) ::close(own);
    return HeaderOf(WithContent(std::move(opened), error), error);
}

FileLook PictureLoader::LookAt(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 ? LookOf(facts) : FileLook();
}

std::shared_ptr<PictureSource> PictureLoader::Open(const std::string& path, std::string& error) {
    error.clear();
    const FileHandle file = OpenPicture(path, error);
    if (!file) return nullptr;
    return Guarded(error,
                   [&] { return MakeSource(path, file.get(), FormatOf(file.get()), error); });
}

std::shared_ptr<PictureSource> PictureLoader::OpenWithToolkit(const std::string& path,
                                                              std::string& error) {
    error.clear();
    const FileHandle file = OpenPicture(path, error);
    if (!file) return nullptr;
    if (&FormatOf(file.get()) == &kRawFormat) { // it would take the small picture in it for all
        error = "Not a picture that can be read";
        return nullptr;
    }
    return Guarded(error, [&] { return MakeSource(path, file.get(), kToolkitFormat, error); });
}

} // namespace tarn
