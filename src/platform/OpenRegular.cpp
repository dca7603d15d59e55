#include "platform/OpenRegular.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr char kOpen[] = "/proc/self/fd/";
constexpr char kSocket[] = "Not a file but a socket";

std::string SystemText(int code) {
    return code == ENXIO ? kSocket : std::generic_category().message(code);
}

const char* KindText(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return "Not a file but a folder";
    case S_IFIFO:
        return "Not a file but a pipe";
    case S_IFSOCK:
        return kSocket;
    default:
        return "Not a file but a device";
    }
}

int Open(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    const int number = NumberInName(path);
    if (file >= 0 || errno != EACCES || number < 0) return file;
    const int same = ::fcntl(number, F_DUPFD_CLOEXEC, 0);
    if (same >= 0) ::lseek(same, 0, SEEK_SET);
    return same;
}

// Why it is none that has bytes; empty for a file.
std::string FaultOf(int file) {
    struct stat facts {};
    if (file < 0 || ::fstat(file, &facts) != 0) return SystemText(errno);
    return S_ISREG(facts.st_mode) ? std::string() : KindText(facts.st_mode);
}

} // namespace

OpenFile::OpenFile(const std::string& path, std::string& error) : m_number(Open(path)) {
    const std::string fault = FaultOf(m_number);
    if (fault.empty()) {
        ::fcntl(m_number, F_SETFL, 0); // its readers know nothing of "try again"
        return;
    }
    error = fault;
    if (m_number >= 0) ::close(Release());
}

OpenFile::~OpenFile() {
    if (m_number >= 0) ::close(m_number);
}

int OpenFile::Release() {
    return std::exchange(m_number, -1);
}

FileHandle OpenRegular(const std::string& path, std::string& error) {
    OpenFile file(path, error);
    if (!file) return {};
    FileHandle stream(::fdopen(file.Number(), "rb"));
    if (stream)
        file.Release();
    else
        error = SystemText(errno);
    return stream;
}

std::string NameOfOpen(int file) {
    return kOpen + std::to_string(file);
}

int NumberInName(const std::string& path) {
    return path.starts_with(kOpen) ? std::atoi(path.c_str() + sizeof kOpen - 1) : -1;
}

} // namespace tarn
