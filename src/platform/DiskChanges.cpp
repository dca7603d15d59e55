#include "platform/DiskChanges.h"

#include "common/paths.h"
#include "common/text.h"
#include "platform/Descriptors.h"
#include "platform/FileTimes.h"
#include "platform/Staging.h"
#include "platform/Wastebasket.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tarn {

namespace {

// What is renamed is on the disk only when its folder is.
void FlushFolder(const std::string& folder) {
    const Handle handle(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY));
    if (handle) ::fsync(handle.Number());
}

// A new file beside its target that is gone again unless it is put into place. Where the file
// system allows it has no name until then, so that a kill leaves nothing lying about.
class Beside {
public:
    explicit Beside(const std::string& target)
        : m_target(target), m_folder(FolderOf(target).empty() ? "." : FolderOf(target)),
          m_path(JoinPath(m_folder, ".tarn-XXXXXX")), m_file(Open()) {}
    ~Beside() {
        if (m_file && m_named && !m_placed) ::unlink(m_path.c_str());
    }

    explicit operator bool() const { return static_cast<bool>(m_file); }
    int Number() const { return m_file.Number(); }

    bool Place() {
        if (::fsync(m_file.Number()) != 0 || !Name()) return false;
        if (::rename(m_path.c_str(), m_target.c_str()) != 0) return false;
        m_placed = true;
        FlushFolder(m_folder);
        return true;
    }

private:
    int Open() {
        const int nameless = ::open(m_folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
        if (nameless >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL))
            return nameless;
        m_named = true;
        return ::mkostemp(m_path.data(), O_CLOEXEC);
    }
    bool Name() {
        static int number = 0;
        const std::string open = "/proc/self/fd/" + std::to_string(m_file.Number());
        while (!m_named) {
            m_path = JoinPath(m_folder, ".tarn-" + std::to_string(::getpid()) + "-" +
                                            std::to_string(++number));
            m_named =
                ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, m_path.c_str(), AT_SYMLINK_FOLLOW) == 0;
            if (!m_named && errno != EEXIST) return false;
        }
        return true;
    }

    std::string m_target;
    std::string m_folder;
    std::string m_path;
    bool m_named = false;
    bool m_placed = false;
    Handle m_file; // opened last: it sets the names above
};

bool PutBytes(int file, std::string_view bytes) {
    return ::lseek(file, 0, SEEK_SET) == 0 && WriteAll(file, bytes) &&
           ::ftruncate(file, static_cast<off_t>(bytes.size())) == 0 && ::fsync(file) == 0;
}

// The old bytes go back when the new ones cannot all be written.
bool WriteInPlace(const std::string& path, std::string_view old, std::string_view bytes,
                  std::string* error) {
    const Handle file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file) return Fail(error);
    if (PutBytes(file.Number(), bytes)) return true;
    const int why = errno;
    PutBytes(file.Number(), old);
    return Fail(error, why);
}

bool CopyBytes(int from, int to) {
    for (;;) {
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, 1 << 30, 0);
        if (copied == 0) break;
        if (copied > 0 || errno == EINTR) continue;
        if (errno != EXDEV && errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP)
            return false;
        std::array<char, 1 << 16> buffer{}; // file systems that know no copying of their own
        for (ssize_t got = 0; (got = ::read(from, buffer.data(), buffer.size())) != 0;) {
            if (got < 0) return false;
            if (!WriteAll(to, {buffer.data(), static_cast<std::size_t>(got)})) return false;
        }
        break;
    }
    return true;
}

// A file that another program is still writing is not copied whole.
bool IsWhole(int from, int to) {
    struct stat source {};
    struct stat copy {};
    return ::fstat(from, &source) == 0 && ::fstat(to, &copy) == 0 && source.st_size == copy.st_size;
}

bool SameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

std::optional<std::string> DiskChanges::Read(const std::string& path, std::size_t most,
                                             std::string* error, std::size_t from) const {
    // Without waiting: a pipe under a note's name would hold the program up for ever.
    const Handle file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (!file || ::fstat(file.Number(), &info) != 0) return Fail(error), std::nullopt;
    if (!S_ISREG(info.st_mode))
        return Fail(error, S_ISDIR(info.st_mode) ? EISDIR : EINVAL), std::nullopt;
    std::string bytes;
    std::array<char, 1 << 16> buffer{};
    while (bytes.size() < most) {
        const std::size_t wanted = std::min(buffer.size(), most - bytes.size());
        const ssize_t got =
            ::pread(file.Number(), buffer.data(), wanted, ::off_t(from + bytes.size()));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return Fail(error), std::nullopt;
        if (got == 0) break;
        bytes.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return bytes;
}

bool DiskChanges::Write(const std::string& path, std::string_view bytes, std::string* error) {
    const std::string target = BehindLinks(path);
    // A file that may not be written is not replaced either.
    const bool stands = ::access(target.c_str(), F_OK) == 0;
    if (stands && ::access(target.c_str(), W_OK) != 0) return Fail(error);
    Beside file(target);
    if (!file) {
        const int why = errno;
        const bool noLeave = why == EACCES || why == EPERM || why == EROFS;
        const auto old = stands && noLeave ? Read(target, SIZE_MAX, error, 0) : std::nullopt;
        return old ? WriteInPlace(target, *old, bytes, error) : Fail(error, why);
    }
    if (!WriteAll(file.Number(), bytes) || ::fchmod(file.Number(), ModeFor(target)) != 0 ||
        !file.Place())
        return Fail(error);
    return true;
}

bool DiskChanges::Trash(const std::string& path, std::string* error, std::string* where) {
    return ThrowAway(path, where, error);
}

bool DiskChanges::Restore(const std::string& where, const std::string& path, std::string* error) {
    return TakeBack(where, path, error);
}

bool DiskChanges::Remove(const std::string& path, std::string* error) {
    return ::unlink(path.c_str()) == 0 || Fail(error);
}

bool DiskChanges::Rename(const std::string& from, const std::string& to, std::string* error) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS && errno != EEXIST) return Fail(error);
    // File systems without such a rename, and those on which another case is the same name.
    struct stat source {};
    struct stat target {};
    if (::lstat(from.c_str(), &source) != 0) return Fail(error);
    const bool stands = ::lstat(to.c_str(), &target) == 0;
    const bool sameName = stands && SameFile(source, target) && FoldCase(from) == FoldCase(to);
    if (stands && !sameName) return Fail(error, EEXIST);
    return ::rename(from.c_str(), to.c_str()) == 0 || Fail(error);
}

bool DiskChanges::Copy(const std::string& from, const std::string& to, std::string* error,
                       std::string* replaced) {
    const Handle source(::open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (!source || ::fstat(source.Number(), &info) != 0) return Fail(error);
    if (!S_ISREG(info.st_mode)) return Fail(error, S_ISDIR(info.st_mode) ? EISDIR : EINVAL);
    struct stat target {};
    if (::stat(to.c_str(), &target) == 0 && SameFile(info, target)) return Fail(error, EEXIST);
    const bool stands = ::lstat(to.c_str(), &target) == 0; // also a link that leads nowhere
    if (stands && S_ISDIR(target.st_mode)) return Fail(error, EISDIR);

    Beside file(to);
    if (!file || !CopyBytes(source.Number(), file.Number())) return Fail(error);
    if (!IsWhole(source.Number(), file.Number())) return Fail(error, EBUSY);
    const timespec times[2] = {info.st_atim, info.st_mtim};
    if ((::fchmod(file.Number(), info.st_mode & 07777) != 0 ||
         ::futimens(file.Number(), times) != 0) &&
        errno != EPERM && errno != EOPNOTSUPP) // file systems that know neither
        return Fail(error);
    std::string thrown;
    if (stands && !ThrowAway(to, &thrown, error)) return false;
    if (file.Place()) {
        if (replaced) *replaced = thrown;
        return true;
    }
    Fail(error);
    std::string gone;
    if (stands) TakeBack(thrown, to, &gone);
    return false;
}

bool DiskChanges::WriteAt(const std::string& path, std::size_t offset, std::string_view bytes,
                          std::string* error) {
    const Handle file(::open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (!file || ::fstat(file.Number(), &info) != 0) return Fail(error);
    const std::size_t end = offset + bytes.size();
    if (!S_ISREG(info.st_mode) || end < offset || end > static_cast<std::size_t>(info.st_size))
        return Fail(error, EINVAL);
    // Few bytes go in one piece or not at all.
    const ssize_t written =
        ::pwrite(file.Number(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (written != static_cast<ssize_t>(bytes.size()))
        return Fail(error, written < 0 ? errno : EIO);
    return ::fsync(file.Number()) == 0 || Fail(error);
}

bool DiskChanges::Extend(const std::string& path, std::size_t offset, std::string_view bytes,
                         std::string* error) {
    const Handle file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (!file || ::fstat(file.Number(), &info) != 0) return Fail(error);
    const auto size = static_cast<std::size_t>(info.st_size);
    if (!S_ISREG(info.st_mode) || offset > size) return Fail(error, EINVAL);
    std::string old(size - offset, '\0');
    if (::pread(file.Number(), old.data(), old.size(), static_cast<off_t>(offset)) !=
        static_cast<ssize_t>(old.size()))
        return Fail(error, EIO);
    const auto put = [&](std::string_view what) {
        return ::lseek(file.Number(), static_cast<off_t>(offset), SEEK_SET) >= 0 &&
               WriteAll(file.Number(), what);
    };
    if (put(bytes) && ::fdatasync(file.Number()) == 0) return true;
    const int why = errno;
    put(old);
    // Nothing more can be done when even this fails.
    (void)!::ftruncate(file.Number(), info.st_size);
    return Fail(error, why);
}

std::unique_ptr<StagedFiles> DiskChanges::Stage(const std::string& folder, std::string* error) {
    return MakeStaging(folder, error);
}

bool DiskChanges::SetTimes(const std::string& path, std::int64_t when, std::string* error) {
    return SetFileTimes(path, when, error);
}

bool DiskChanges::PutTimeBack(const std::string& path, const FileLook& then, std::string* error) {
    return PutFileTimeBack(path, then.seconds, then.nanoseconds, error);
}

bool DiskChanges::MakeFolder(const std::string& path, std::string* error) {
    return ::mkdir(path.c_str(), 0777) == 0 || Fail(error);
}

int DiskChanges::RemoveFolder(const std::string& path, std::string* error) {
    if (::rmdir(path.c_str()) == 0) return 0;
    const int why = errno;
    Fail(error, why);
    return why;
}

} // namespace tarn
