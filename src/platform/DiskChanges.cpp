#include "platform/DiskChanges.h"

#include "common/paths.h"
#include "common/text.h"
#include "platform/Beside.h"
#include "platform/CopyFile.h"
#include "platform/Descriptors.h"
#include "platform/FileTimes.h"
#include "platform/FreeNames.h"
#include "platform/OpenRegular.h"
#include "platform/RunToken.h"
#include "platform/Staging.h"
#include "platform/Wastebasket.h"
#include "platform/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace tarn {

namespace {

constexpr std::size_t kMostInPlace = 64U << 20U; // bytes kept while a file is written over

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

// The owner's as far as the user may give a file away, then the mode, which that cuts.
bool TakeAfter(int file, const std::string& target) {
    struct stat info {};
    if (::stat(target.c_str(), &info) != 0) return false;
    if (::fchown(file, info.st_uid, info.st_gid) != 0 &&
        ::fchown(file, static_cast<uid_t>(-1), info.st_gid) != 0)
        errno = 0; // it becomes the user's
    return ::fchmod(file, ModeOf(target)) == 0;
}

bool SameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

std::optional<std::string> DiskChanges::Read(const std::string& path, std::size_t most,
                                             std::string* error, std::size_t from) const {
    std::string fault;
    const OpenFile file(path, fault);
    if (!file) {
        if (error) *error = fault;
        return {};
    }
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
    if (IsPipeOrDevice(target)) {
        if (error) *error = kNoFile;
        return false;
    }
    // A file that may not be written is not replaced either.
    const bool stands = ::access(target.c_str(), F_OK) == 0;
    if (stands && ::access(target.c_str(), W_OK) != 0) return Fail(error);
    Beside file(target, 0666);
    if (!file) {
        const int why = errno;
        const bool noLeave = why == EACCES || why == EPERM || why == EROFS;
        const auto old =
            stands && noLeave ? ReadWhole(*this, target, kMostInPlace, error) : std::nullopt;
        return old ? WriteInPlace(target, *old, bytes, error) : Fail(error, why);
    }
    if (!WriteAll(file.Number(), bytes) || (stands && !TakeAfter(file.Number(), target)) ||
        !file.Place())
        return Fail(error);
    return true;
}

bool DiskChanges::Trash(const std::string& path, std::string* error, std::string* where) {
    return ThrowAway(path, where, error);
}

std::vector<std::string> DiskChanges::TrashAll(const std::vector<std::string>& paths) {
    std::vector<Thrown> all;
    for (const std::string& path : paths) all.push_back({path, path, {}});
    ThrowAllAway(all);
    std::vector<std::string> where;
    for (Thrown& file : all) where.push_back(std::move(file.where));
    return where;
}

bool DiskChanges::Restore(const std::string& where, const std::string& path, std::string* error) {
    return TakeBack(where, path, error);
}

std::string DiskChanges::FindThrown(const std::string& path, const FileLook& look) const {
    const std::string where = FindInBaskets(path, look.inode);
    return where.empty() ? FindStaged(path, look.inode) : where;
}

void DiskChanges::Sweep(const std::string& folder) {
    SweepBeside(folder);
    SweepStaged(folder);
}

bool DiskChanges::Remove(const std::string& path, std::string* error) {
    return ::unlink(path.c_str()) == 0 || Fail(error);
}

bool DiskChanges::Rename(const std::string& from, const std::string& to, std::string* error) {
    if (RenameToFree(from, to)) return true;
    if (errno != EEXIST) return Fail(error);
    // There are file systems on which another case is the same name.
    struct stat source {};
    struct stat target {};
    const bool sameName = FoldCase(from) == FoldCase(to) && ::lstat(from.c_str(), &source) == 0 &&
                          ::lstat(to.c_str(), &target) == 0 && SameFile(source, target);
    if (!sameName) return Fail(error, EEXIST);
    return ::rename(from.c_str(), to.c_str()) == 0 || Fail(error);
}

bool DiskChanges::Copy(const std::string& from, const std::string& to, std::string* error,
                       std::string* replaced) {
    return CopyFile(from, to, Likeness::NewFile, error, replaced);
}

Moved DiskChanges::Move(const std::string& from, const std::string& to, std::string* error,
                        std::string* replaced) {
    const auto copied = [&] {
        return CopyFile(from, to, Likeness::Same, error, replaced) ? Moved::Copied : Moved::No;
    };
    struct stat source {};
    struct stat target {};
    // A link would lead elsewhere from there: what it leads to is copied.
    if (::lstat(from.c_str(), &source) != 0 || !S_ISREG(source.st_mode)) return copied();
    if (::stat(to.c_str(), &target) == 0 && SameFile(source, target))
        return Fail(error, EEXIST), Moved::No;
    if (RenameToFree(from, to)) return Moved::Renamed;
    if (errno != EEXIST) return copied();
    const bool stands = ::lstat(to.c_str(), &target) == 0;
    if (!replaced || (stands && S_ISDIR(target.st_mode)))
        return Fail(error, replaced ? EISDIR : EEXIST), Moved::No;
    std::string thrown;
    if (!ThrowAway(to, &thrown, error)) return Moved::No;
    if (RenameToFree(from, to)) {
        *replaced = thrown;
        return Moved::Renamed;
    }
    Fail(error);
    std::string stays;
    TakeBack(thrown, to, &stays);
    return Moved::No;
}

void DiskChanges::Flush(const std::string& folder) {
    FlushFolder(folder);
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
    // What is put back on a failure; the rest is not touched.
    std::string old(std::min(size - offset, bytes.size()), '\0');
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
