#include "platform/FreeNames.h"

#include "platform/Descriptors.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace tarn {

bool RenameByTaking(const std::string& from, const std::string& to) {
    struct stat info {};
    if (::lstat(from.c_str(), &info) != 0) return false;
    const bool isFolder = S_ISDIR(info.st_mode);
    if (isFolder) {
        if (::mkdir(to.c_str(), 0700) != 0) return false;
    } else {
        const Handle taken(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
        if (!taken) return false;
    }
    if (::rename(from.c_str(), to.c_str()) == 0) return true;
    const int why = errno;
    if (isFolder)
        ::rmdir(to.c_str());
    else
        ::unlink(to.c_str());
    errno = why;
    return false;
}

bool RenameToFree(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    return (errno == EINVAL || errno == ENOSYS) && RenameByTaking(from, to);
}

void FlushFolder(const std::string& folder) {
    const Handle handle(
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle) ::fsync(handle.Number());
}

} // namespace tarn
