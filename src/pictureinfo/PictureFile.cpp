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
        const ssize_t count =
            ::pread(file, record.data() + filled, wanted - filled, static_cast<off_t>(filled));
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

// Non-blocking, or opening a pipe without a writer would never come back.
PictureFile::PictureFile(const std::string& path)
    : m_number(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (m_number < 0) {
        m_facts = ReadFileFacts(path);
        return;
    }
    struct stat status {};
    if (::fstat(m_number, &status) != 0) return;
    m_facts = FactsOf(status);
    m_hasContent = S_ISREG(status.st_mode);
}

PictureFile::PictureFile(const FileLook& look, const std::optional<std::string>& front)
    : m_front(&front), m_facts{true, look.bytes, look.seconds} {}

PictureFile::~PictureFile() {
    if (m_number >= 0) ::close(m_number);
}

bool PictureFile::ReadRecord(FileRecord& record) const {
    ssize_t filled = m_hasContent ? ReadFront(m_number, m_facts.size, record) : -1;
    if (m_front && *m_front) {
        filled = static_cast<ssize_t>(std::min(record.size(), (*m_front)->size()));
        std::copy_n((*m_front)->begin(), filled, record.begin());
    }
    if (filled < 0) return false;
    std::fill(record.begin() + filled, record.end(), std::uint8_t{0});
    return true;
}

std::string FormatFileDate(const FileFacts& facts) {
    return facts.known ? FormatDateText(FromFileTime(facts.changed)) : std::string();
}

} // namespace tarn
