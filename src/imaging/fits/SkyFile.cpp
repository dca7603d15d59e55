#include "imaging/fits/SkyFile.h"

#include "common/file_look.h"
#include "imaging/fits/FitsFile.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/PackedFits.h"
#include "imaging/xisf/XisfFile.h"
#include "platform/OpenRegular.h"

#include <array>
#include <string_view>

#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

// What begins the file, or what is packed in it: one of the texts that begin such files, or
// nothing.
std::string_view StartOf(int file) {
    std::array<char, kPackedStart> bytes{};
    const ssize_t count = ::pread(file, bytes.data(), bytes.size(), 0);
    const std::string_view start(bytes.data(), count > 0 ? std::size_t(count) : 0);
    for (const std::string_view known : {kFitsStart, kXisfStart})
        if (start.starts_with(known)) return known;
    return IsPackedFits(start) ? kFitsStart : std::string_view();
}

int ImageOf(int file) {
    struct stat facts {};
    if (::fstat(file, &facts) != 0) return 0;
    const FileLook look = LookOf(facts);
    return ChosenImage(look.device, look.inode);
}

} // namespace

bool IsSkyFile(const std::string& path) {
    std::string error;
    const OpenFile file(path, error);
    return file && !StartOf(file.Number()).empty();
}

std::optional<FitsHeader> ReadSkyHeader(const std::string& path, std::string& error) {
    const OpenFile file(path, error);
    if (!file) return std::nullopt;
    const std::string name = NameOfOpen(file.Number());
    const int image = ImageOf(file.Number());
    return StartOf(file.Number()) == kXisfStart ? ReadXisfHeader(name, image, error)
                                                : ReadFitsHeader(name, image, error);
}

std::optional<FitsSamples> ReadSkySamples(const std::string& path, std::string& error) {
    const OpenFile file(path, error);
    if (!file) return std::nullopt;
    const std::string name = NameOfOpen(file.Number());
    const int image = ImageOf(file.Number());
    return StartOf(file.Number()) == kXisfStart ? ReadXisfSamples(name, image, error)
                                                : ReadFitsSamples(name, image, error);
}

} // namespace tarn
