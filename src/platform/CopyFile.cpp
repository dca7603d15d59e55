#include "platform/CopyFile.h"

#include "platform/Beside.h"
#include "platform/Descriptors.h"
#include "platform/OpenRegular.h"
#include "platform/Wastebasket.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

namespace tarn {

namespace {

constexpr std::string_view kUsers = "user.";
constexpr std::string_view kAccessList = "system.posix_acl_access";

bool ReadAndWrite(int from, int to) {
    std::array<char, 1 << 16> buffer{};
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return got == 0;
        if (!WriteAll(to, {buffer.data(), static_cast<std::size_t>(got)})) return false;
    }
}

bool CopyBytes(int from, int to) {
    for (;;) {
        const ssize_t copied = ::copy_file_range(from, nullptr, to, nullptr, 1 << 30, 0);
        if (copied == 0) return true;
        if (copied > 0 || errno == EINTR) continue;
        const bool knowsNone =
            errno == EXDEV || errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
        return knowsNone && ReadAndWrite(from, to);
    }
}

// What the other file system cannot keep is left behind.
void CopyAttribute(int from, int to, const char* name) {
    const ssize_t size = ::fgetxattr(from, name, nullptr, 0);
    if (size < 0) return;
    std::string value(static_cast<std::size_t>(size), '\0');
    const ssize_t got = ::fgetxattr(from, name, value.data(), value.size());
    if (got >= 0) ::fsetxattr(to, name, value.data(), static_cast<std::size_t>(got), 0);
}

void CopyAttributes(int from, int to) {
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    if (size <= 0) return;
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t got = ::flistxattr(from, names.data(), names.size());
    names.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1)
        if (names.compare(at, kUsers.size(), kUsers) == 0)
            CopyAttribute(from, to, names.data() + at);
}

// Nobody else's right to run it as its owner, who is another one now.
void MakeLike(int from, int to, const struct stat& info) {
    CopyAttributes(from, to); // while it may be written
    ::fchmod(to, info.st_mode & 0777);
    CopyAttribute(from, to, kAccessList.data());
}

// Less than the owner's leave to read and write, where the original has less.
void KeepModeOf(const struct stat& info, int to) {
    struct stat made {};
    if (::fstat(to, &made) == 0 && (made.st_mode & ~info.st_mode & 0777) != 0)
        ::fchmod(to, made.st_mode & info.st_mode & 0777);
}

bool SameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Whether the name still leads to the file of which `begun` was read, and that is as it was.
bool IsAsBefore(const std::string& path, int file, const struct stat& begun) {
    struct stat now {};
    struct stat named {};
    return ::fstat(file, &now) == 0 && ::stat(path.c_str(), &named) == 0 &&
           SameFile(named, begun) && now.st_size == begun.st_size &&
           now.st_mtim.tv_sec == begun.st_mtim.tv_sec &&
           now.st_mtim.tv_nsec == begun.st_mtim.tv_nsec;
}

bool HasSize(int file, off_t size) {
    struct stat info {};
    return ::fstat(file, &info) == 0 && info.st_size == size;
}

// Null in `replaced`: nothing is. What comes in between a second time keeps its name.
bool PutIntoPlace(Beside& file, const std::string& to, std::string* error, std::string* replaced) {
    if (file.PlaceNew()) return true;
    if (errno != EEXIST || !replaced) return Fail(error);
    struct stat target {};
    if (::lstat(to.c_str(), &target) == 0 && S_ISDIR(target.st_mode)) return Fail(error, EISDIR);
    std::string thrown;
    if (!ThrowAway(to, &thrown, error)) return false;
    if (file.PlaceNew()) {
        *replaced = thrown;
        return true;
    }
    Fail(error);
    std::string stays;
    TakeBack(thrown, to, &stays);
    return false;
}

} // namespace

bool CopyFile(const std::string& from, const std::string& to, Likeness likeness, std::string* error,
              std::string* replaced) {
    std::string fault;
    const OpenFile source(from, fault);
    struct stat info {};
    if (!source) {
        if (error) *error = fault;
        return false;
    }
    if (::fstat(source.Number(), &info) != 0) return Fail(error);
    struct stat target {};
    if (::stat(to.c_str(), &target) == 0 && SameFile(info, target)) return Fail(error, EEXIST);
    const bool stands = ::lstat(to.c_str(), &target) == 0; // also a link that leads nowhere
    if (stands && (S_ISDIR(target.st_mode) || !replaced))
        return Fail(error, S_ISDIR(target.st_mode) ? EISDIR : EEXIST);

    const bool same = likeness == Likeness::Same;
    Beside file(to, same ? 0600 : (info.st_mode & 0777) | 0600); // some disks refuse less
    if (!file || !CopyBytes(source.Number(), file.Number())) return Fail(error);
    // One that another program is still writing is not copied whole.
    if (!IsAsBefore(from, source.Number(), info) || !HasSize(file.Number(), info.st_size)) {
        if (error) *error = "it changed while it was copied";
        return false;
    }
    if (same)
        MakeLike(source.Number(), file.Number(), info);
    else
        KeepModeOf(info, file.Number());
    const timespec times[2] = {info.st_atim, info.st_mtim};
    if (::futimens(file.Number(), times) != 0 && errno != EPERM && errno != EOPNOTSUPP)
        return Fail(error); // other file systems know no times
    return PutIntoPlace(file, to, error, replaced);
}

} // namespace tarn
