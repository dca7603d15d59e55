#include "pictureinfo/PictureFile.h"

#include "common/dates.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

FileFacts FactsOf(const struct stat& status) {
    return {true, status.st_size, status.st_mtim.tv_sec};
}

// Number of bytes read, -1 when there was an error at once.
ssize_t ReadFront(int file, std::int64_t fileSize, FileRecord& record) {
    const std::size_t wanted = std::min<std::uint64_t>(record.size(), fileSize);
    std::size_t filled = 0;
    while (filled < wanted) {
        const ssize_t count = ::read(file, record.data() + filled, wanted - filled);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && filled == 0) return -1;
        if (count <= 0) break;
        filled += static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

} // namespace

FileFacts ReadFileFacts(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? FactsOf(status) : FileFacts{};
}

bool ReadFileRecord(const std::string& path, FileRecord& record, FileFacts& facts) {
    // Non-blocking, or opening a pipe without a writer would never come back.
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) {
        facts = ReadFileFacts(path);
        return false;
    }
    struct stat status {};
    const bool known = ::fstat(file, &status) == 0;
    facts = known ? FactsOf(status) : FileFacts{};
    const ssize_t filled =
        known && S_ISREG(status.st_mode) ? ReadFront(file, facts.size, record) : -1;
    ::close(file);
    if (filled < 0) return false;
    std::fill(record.begin() + filled, record.end(), std::uint8_t{0});
    return true;
}

std::string FormatFileDate(const FileFacts& facts) {
    return facts.known ? FormatDateText(FromFileTime(facts.changed)) : std::string();
}

} // namespace tarn
