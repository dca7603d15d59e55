#include "history/StepsOnDisk.h"

#include "common/paths.h"
#include "common/sidecar_names.h"

namespace tarn {

namespace {

constexpr const char* kGone = "it is not there any more";
constexpr const char* kAnother = "another file stands there by now";
constexpr const char* kChanged = "it has been changed since";
constexpr const char* kNotSeen = "it cannot be looked at";
constexpr const char* kEmptied = "it is not in the wastebasket any more";

bool Refuse(std::string* error, const char* why) {
    if (error) *error = why;
    return false;
}

bool IsUnchanged(const FileLook& was, const FileLook& is) {
    return was.bytes == is.bytes && was.seconds == is.seconds && was.nanoseconds == is.nanoseconds;
}

// A block at a time: they may be clips of many gigabytes.
bool HaveSameBytes(const Files& files, const std::string& one, const std::string& other) {
    constexpr std::size_t kBlock = 4U << 20U;
    for (std::size_t from = 0;; from += kBlock) {
        const auto block = files.Read(one, kBlock, nullptr, from);
        if (!block || block != files.Read(other, kBlock, nullptr, from)) return false;
        if (block->size() < kBlock) return true;
    }
}

// A copy has the time of its original unless one of them was dated since; then the bytes tell.
bool IsStillCopy(const Step& step, const Files& files) {
    return files.ModifiedTime(step.to) == files.ModifiedTime(step.from) ||
           HaveSameBytes(files, step.from, step.to);
}

bool BackFromBasket(std::string& where, const FileLook& look, const std::string& path, Files& files,
                    std::string* error) {
    const bool isKnown = look.inode != 0; // else its place alone tells
    const FileLook there = where.empty() ? FileLook() : IdentityOf(files, where);
    if (isKnown && !IsTheSame(look, there)) {
        // A link may lead nowhere from there, and be the right one all the same.
        std::string ignored;
        if (!where.empty() && there.inode == 0 && files.Restore(where, path, &ignored)) return true;
        where = files.FindThrown(path, look);
    }
    if (where.empty()) return Refuse(error, kEmptied);
    return files.Restore(where, path, error);
}

bool RenameKnown(const std::string& from, const FileLook& look, const std::string& to, Files& files,
                 std::string* error) {
    const FileLook now = IdentityOf(files, from);
    if (now.inode == 0) return Refuse(error, kGone);
    if (look.inode != 0 && !IsTheSame(look, now)) return Refuse(error, kAnother);
    return files.Rename(from, to, error);
}

bool TakeBackCopy(Step& step, Files& files, std::string* error) {
    if (!files.Exists(step.to)) return true;
    if (!files.Exists(step.from)) return Refuse(error, "what it is a copy of is not back");
    if (!IsStillCopy(step, files)) return Refuse(error, kChanged);
    step.after = IdentityOf(files, step.to);
    return files.Trash(step.to, error, &step.aside);
}

// Where a kill fell between bytes and time, the bytes alone tell.
bool HasBytesOf(const Step& step, const Files& files) {
    const auto bytes = files.Read(step.from, kMostKept);
    return bytes && (bytes == step.newBytes || bytes == step.oldBytes);
}

bool IsAsWritten(const Step& step, const FileLook& now, const Files& files) {
    const bool hasBytes = !step.newBytes || files.Read(step.from, kMostKept) == step.newBytes;
    // Size and time stay the same where another program takes care that they do.
    if (step.after.inode != 0 && IsUnchanged(step.after, now) && hasBytes) return true;
    if (step.state == StepState::Planned) return HasBytesOf(step, files);
    if (step.after.inode != 0) return false;
    // Where neither is known an edit could not be told; only what was not there before may go.
    return step.newBytes ? hasBytes : step.before.inode == 0;
}

bool TakeBackWritten(Step& step, Files& files, std::string* error) {
    const FileLook now = IdentityOf(files, step.from);
    const bool wasNew = step.before.inode == 0;
    if (now.inode == 0 && files.Exists(step.from)) return Refuse(error, kNotSeen);
    if (now.inode == 0) return wasNew || Refuse(error, kGone);
    if (!IsAsWritten(step, now, files)) return Refuse(error, kChanged);
    if (step.state != StepState::Planned || step.after.inode == 0) step.after = now;
    // A sidecar is made again from what is kept here: no need to fill the wastebasket.
    if (wasNew && step.newBytes && IsSidecarName(LastPart(step.from)))
        return files.Remove(step.from, error);
    if (wasNew) return files.Trash(step.from, error, &step.aside);
    if (!step.oldBytes) return Refuse(error, "what it was before was too large to be kept");
    if (!step.newBytes && now.bytes > std::int64_t(kMostKept))
        return Refuse(error, "what it is now is too large to be kept");
    if (!step.newBytes) step.newBytes = files.Read(step.from, kMostKept);
    if (!files.Write(step.from, *step.oldBytes, error)) return false;
    return files.PutTimeBack(step.from, step.before, error);
}

bool WriteAgain(Step& step, Files& files, std::string* error) {
    const FileLook now = IdentityOf(files, step.from);
    if (step.before.inode == 0) {
        if (now.inode != 0 || files.Exists(step.from)) return Refuse(error, kAnother);
        if (!step.aside.empty())
            return BackFromBasket(step.aside, step.after, step.from, files, error);
    } else if (now.inode == 0) {
        return Refuse(error, kGone);
    } else if (!IsUnchanged(step.before, now) &&
               !(step.state == StepState::Planned && HasBytesOf(step, files))) {
        return Refuse(error, kChanged);
    }
    if (!step.newBytes) return Refuse(error, "what was to be written is not known any more");
    if (!files.Write(step.from, *step.newBytes, error)) return false;
    if (step.after.inode == 0) return true;
    return files.PutTimeBack(step.from, step.after, error);
}

// The bytes `put` for the bytes `stands`, or for anything where a kill may have torn them.
bool PutAt(const Step& step, const std::optional<std::string>& stands,
           const std::optional<std::string>& put, Files& files, std::string* error) {
    if (!stands || !put) return Refuse(error, kEmptied);
    const auto look = files.Look(step.from, error);
    if (!look) return false;
    if (look->inode != step.before.inode && look->bytes != step.before.bytes)
        return Refuse(error, kAnother);
    const auto now = files.Read(step.from, put->size(), error, std::size_t(step.offset));
    if (!now) return false;
    const bool isTorn = step.state == StepState::Planned;
    if (now != stands && !(isTorn && now->size() == put->size())) return Refuse(error, kChanged);
    return now == put || files.WriteAt(step.from, std::size_t(step.offset), *put, error);
}

// Some disks give a file another inode after each start.
bool DateAs(const Step& step, const FileLook& stands, const FileLook& put, Files& files,
            std::string* error) {
    const FileLook now = IdentityOf(files, step.from);
    if (now.inode == 0) return Refuse(error, kGone);
    if (now.inode != step.before.inode && now.bytes != step.before.bytes)
        return Refuse(error, kAnother);
    if (stands.seconds != now.seconds) return Refuse(error, kChanged);
    return files.PutTimeBack(step.from, put, error);
}

bool IsOriginal(const Step& step, const Files& files, std::string* error) {
    const FileLook now = IdentityOf(files, step.from);
    if (now.inode == 0) return Refuse(error, kGone);
    return IsTheSame(step.before, now) || Refuse(error, kAnother);
}

bool CopyAgain(Step& step, Files& files, std::string* error) {
    if (!step.aside.empty()) return BackFromBasket(step.aside, step.after, step.to, files, error);
    return IsOriginal(step, files, error) && files.Copy(step.from, step.to, error);
}

bool DropAgain(const Step& step, Files& files, std::string* error) {
    if (!files.Exists(step.from)) return Refuse(error, kGone);
    // For good: no time tells enough.
    if (!HaveSameBytes(files, step.from, step.to)) return Refuse(error, kChanged);
    return files.Remove(step.from, error);
}

bool ThrowAgain(Step& step, Files& files, std::string* error) {
    const FileLook now = IdentityOf(files, step.from);
    if (now.inode == 0) return Refuse(error, kGone);
    if (!IsTheSame(step.before, now)) return Refuse(error, kAnother);
    return files.Trash(step.from, error, &step.to);
}

} // namespace

FileLook IdentityOf(const Files& files, const std::string& path) {
    auto look = files.Look(path);
    if (!look) return {};
    look->device = files.Volume(path);
    return *look;
}

bool IsTheSame(const FileLook& was, const FileLook& is) {
    if (was.inode == 0 || is.inode == 0 || was.device != is.device) return false;
    return was.inode == is.inode || IsUnchanged(was, is);
}

bool TakeBackStep(Step& step, Files& files, std::string* error) {
    switch (step.kind) {
    case StepKind::ThrownAway:
        return BackFromBasket(step.to, step.before, step.from, files, error);
    case StepKind::Renamed:
        return RenameKnown(step.to, step.before, step.from, files, error);
    case StepKind::Made:
        return TakeBackCopy(step, files, error);
    case StepKind::Dropped:
        return RenameKnown(step.to, step.after, step.from, files, error);
    case StepKind::Written:
        return TakeBackWritten(step, files, error);
    case StepKind::WrittenAt:
        return PutAt(step, step.newBytes, step.oldBytes, files, error) &&
               files.PutTimeBack(step.from, step.before, error);
    case StepKind::Dated:
        return DateAs(step, step.after, step.before, files, error);
    case StepKind::FolderMade:
        return files.RemoveFolder(step.from, error) == 0;
    case StepKind::FolderRemoved:
        return files.MakeFolder(step.from, error);
    case StepKind::Removed:
        return Refuse(error, "it was deleted for good");
    case StepKind::Marked:
        return true; // whoever asked sets the mark
    }
    return true;
}

bool MoveAgain(Step& step, Files& files, std::string* error) {
    if (!step.aside.empty()) return DoStep(step, files, error);
    return IsOriginal(step, files, error) && files.Move(step.from, step.to, error) != Moved::No;
}

bool DoStep(Step& step, Files& files, std::string* error) {
    switch (step.kind) {
    case StepKind::ThrownAway:
        return ThrowAgain(step, files, error);
    case StepKind::Renamed:
        return RenameKnown(step.from, step.before, step.to, files, error);
    case StepKind::Made:
        return CopyAgain(step, files, error);
    case StepKind::Dropped:
        return DropAgain(step, files, error);
    case StepKind::Written:
        return WriteAgain(step, files, error);
    case StepKind::WrittenAt:
        return PutAt(step, step.oldBytes, step.newBytes, files, error) &&
               (step.after.inode == 0 || files.PutTimeBack(step.from, step.after, error));
    case StepKind::Dated:
        return DateAs(step, step.before, step.after, files, error);
    case StepKind::FolderMade:
        return files.MakeFolder(step.from, error);
    case StepKind::FolderRemoved:
        return files.RemoveFolder(step.from, error) == 0;
    case StepKind::Removed:
        return Refuse(error, "what is deleted for good is not deleted again");
    case StepKind::Marked:
        return true;
    }
    return true;
}

} // namespace tarn
