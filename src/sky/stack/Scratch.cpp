#include "sky/stack/Scratch.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace tarn {

namespace {

int OpenNameless(const std::string& folder) {
    const int file = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (file >= 0) return file;
    std::string name = folder + "/tarn-XXXXXX"; // where the file system knows none
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) ::unlink(name.c_str());
    return named;
}

} // namespace

Scratch::Scratch(const std::string& folder) : m_file(OpenNameless(folder)) {}

Scratch::~Scratch() {
    if (m_file >= 0) ::close(m_file);
}

bool Scratch::HasRoomFor(std::size_t bytes) const {
    struct statvfs disk {};
    struct stat own {};
    if (::fstatvfs(m_file, &disk) != 0 || ::fstat(m_file, &own) != 0) return true;
    constexpr std::size_t kUnit = 512; // of the blocks that a file says it has
    return bytes <= std::size_t(disk.f_bavail) * std::size_t(disk.f_frsize) +
                        std::size_t(own.st_blocks) * kUnit;
}

bool Scratch::Write(std::size_t at, const void* bytes, std::size_t count) {
    const char* from = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t written = ::pwrite(m_file, from, count, off_t(at));
        if (written <= 0) return false;
        from += written;
        at += std::size_t(written);
        count -= std::size_t(written);
    }
    return true;
}

bool Scratch::Read(std::size_t at, void* bytes, std::size_t count) const {
    char* to = static_cast<char*>(bytes);
    while (count > 0) {
        const ssize_t read = ::pread(m_file, to, count, off_t(at));
        if (read <= 0) return false;
        to += read;
        at += std::size_t(read);
        count -= std::size_t(read);
    }
    return true;
}

} // namespace tarn
