// Reads the first half of the input as one picture and the second as the next, by both ways of
// reading and with one reader, so that what a picture leaves behind is tried as well.
#include "pictureinfo/PictureInfoReader.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

// A file in memory, since the reader opens its pictures by name.
class MemoryFile {
public:
    MemoryFile() : file_(::memfd_create("picture", MFD_CLOEXEC)) {}
    ~MemoryFile() { ::close(file_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    void Fill(const std::uint8_t* bytes, std::size_t size) const {
        if (::ftruncate(file_, 0) != 0) std::abort();
        if (::pwrite(file_, bytes, size, 0) != static_cast<ssize_t>(size)) std::abort();
    }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(file_); }

private:
    int file_;
};

void Demand(bool condition) {
    if (!condition) std::abort();
}

void ReadBothWays(tarn::PictureInfoReader& reader, tarn::PictureInfo& info) {
    reader.ReadPictureInfo(info);
    Demand(reader.FileWasRead());
    Demand(info.PanelRows.size() == (info.ExifFound ? 13U : 3U));
    reader.ReadCameraDate(info);
    Demand(info.NoExif == !info.ExifFound);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const MemoryFile file;
    tarn::PictureInfoReader reader;
    tarn::PictureInfo info;
    info.Filename = file.Path();
    const std::size_t half = size / 2;
    file.Fill(bytes, half);
    ReadBothWays(reader, info);
    file.Fill(bytes + half, size - half);
    ReadBothWays(reader, info);
    return 0;
}
