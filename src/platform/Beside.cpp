#include "platform/Beside.h"

#include "common/paths.h"
#include "platform/FreeNames.h"
#include "platform/RunToken.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>

namespace tarn {

Beside::Beside(const std::string& target, mode_t mode)
    : m_target(target), m_folder(FolderOf(target).empty() ? "." : FolderOf(target)),
      m_file(Open(mode)) {}

Beside::~Beside() {
    if (m_file && m_named && !m_placed) ::unlink(m_path.c_str());
}

std::string Beside::NextPath() const {
    static std::atomic<int> number = 0;
    return JoinPath(m_folder, std::string(kBeside) + RunToken() + "-" + std::to_string(++number));
}

int Beside::Open(mode_t mode) {
    int file = ::open(m_folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
    if (file >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return file;
    do {
        m_path = NextPath();
        file = ::open(m_path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (file < 0 && errno == EEXIST);
    m_named = file >= 0;
    return file;
}

bool Beside::LinkTo(const std::string& path) const {
    const std::string open = "/proc/self/fd/" + std::to_string(m_file.Number());
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

bool Beside::Name() {
    while (!m_named) {
        m_path = NextPath();
        m_named = LinkTo(m_path);
        if (!m_named && errno != EEXIST) return false;
    }
    return true;
}

bool Beside::Place() {
    if (::fsync(m_file.Number()) != 0 || !Name()) return false;
    if (::rename(m_path.c_str(), m_target.c_str()) != 0) return false;
    m_placed = true;
    FlushFolder(m_folder);
    return true;
}

bool Beside::PlaceNew() {
    if (::fsync(m_file.Number()) != 0) return false;
    if (!(m_named ? RenameToFree(m_path, m_target) : LinkTo(m_target))) return false;
    m_placed = true;
    FlushFolder(m_folder);
    return true;
}

} // namespace tarn
