#include "imaging/fits/SkyFile.h"

#include "common/file_look.h"
#include "imaging/fits/FitsFile.h"
#include "imaging/fits/ImageChoice.h"
#include "imaging/fits/PackedFits.h"
#include "imaging/xisf/XisfFile.h"

#include <array>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace tarn {

namespace {

// What begins the file, or what is packed in it: one of the texts that begin such files, or
// nothing.
std::string_view StartOf(const std::string& path) {
    // Without waiting: a pipe under that name would never answer.
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return {};
    std::array<char, kPackedStart> bytes{};
    const ssize_t count = ::read(file, bytes.data(), bytes.size());
    ::close(file);
    const std::string_view start(bytes.data(), count > 0 ? std::size_t(count) : 0);
    for (const std::string_view known : {kFitsStart, kXisfStart})
        if (start.starts_with(known)) return known;
    return IsPackedFits(start) ? kFitsStart : std::string_view();
}

int ImageOf(const std::string& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0) return 0;
    const FileLook look = LookOf(facts);
    return ChosenImage(look.device, look.inode);
}

} // namespace

bool IsSkyFile(const std::string& path) {
    return !StartOf(path).empty();
}

std::optional<FitsHeader> ReadSkyHeader(const std::string& path, std::string& error) {
    return StartOf(path) == kXisfStart ? ReadXisfHeader(path, ImageOf(path), error)
                                       : ReadFitsHeader(path, ImageOf(path), error);
}

std::optional<FitsSamples> ReadSkySamples(const std::string& path, std::string& error) {
    return StartOf(path) == kXisfStart ? ReadXisfSamples(path, ImageOf(path), error)
                                       : ReadFitsSamples(path, ImageOf(path), error);
}

std::string NameOfOpen(int file) {
    return "/proc/self/fd/" + std::to_string(file);
}

} // namespace tarn
