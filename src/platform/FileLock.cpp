#include "platform/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>

namespace tarn {

FileLock::FileLock(const std::string& path)
    : m_file(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {}

bool FileLock::Take() {
    return m_file && ::flock(m_file.Number(), LOCK_EX | LOCK_NB) == 0;
}

} // namespace tarn
