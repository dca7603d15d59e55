#include "history/StepsOnDisk.h"

#include <algorithm>
#include <map>

namespace tarn {

namespace {

// The disk as it was before the steps that are already told.
class DiskBefore {
public:
    explicit DiskBefore(const Files& files) : m_files(files) {}

    const FileLook& At(const std::string& path) {
        const auto [at, isNew] = m_looks.try_emplace(path);
        if (isNew) at->second = IdentityOf(m_files, path);
        return at->second;
    }
    void Set(const std::string& path, const FileLook& look) { m_looks[path] = look; }
    const Files& Disk() const { return m_files; }

private:
    const Files& m_files;
    std::map<std::string, FileLook> m_looks;
};

// What stands at the path of a new file may be what the same command was about to throw away for
// it.
bool IsThrownFor(const Step& made, const std::vector<Step>& steps, const std::string& path,
                 const FileLook& now) {
    return std::any_of(steps.begin(), steps.end(), [&](const Step& step) {
        return step.kind == StepKind::ThrownAway && step.from == path &&
               step.number < made.number && step.before.inode == now.inode;
    });
}

bool HasTimeOf(const FileLook& look, const FileLook& now) {
    return look.bytes == now.bytes && look.seconds == now.seconds &&
           look.nanoseconds == now.nanoseconds;
}

// The bytes come first, then the time that belongs to them: a kill may fall between.
Stands TellWritten(const Step& step, const std::vector<Step>& steps, DiskBefore& disk) {
    const FileLook now = disk.At(step.from);
    if (now.inode == 0 || IsThrownFor(step, steps, step.from, now)) return Stands::Not;
    if (step.before.inode != 0 && HasTimeOf(step.before, now)) return Stands::Not;
    if (step.after.inode != 0 && HasTimeOf(step.after, now)) return Stands::Whole;
    if (step.after.inode == 0 && !step.newBytes) return Stands::Whole;
    const bool isNew = disk.Disk().Read(step.from, kMostKept) == step.newBytes;
    return isNew && step.after.inode == 0 ? Stands::Whole : Stands::InPart;
}

Stands TellWrittenAt(const Step& step, DiskBefore& disk) {
    const std::size_t size = step.newBytes ? step.newBytes->size() : 0;
    const auto bytes = disk.Disk().Read(step.from, size, nullptr, std::size_t(step.offset));
    const FileLook now = disk.At(step.from);
    if (bytes == step.oldBytes && HasTimeOf(step.before, now)) return Stands::Not;
    const bool hasTime = step.after.inode == 0 || HasTimeOf(step.after, now);
    return bytes == step.newBytes && hasTime ? Stands::Whole : Stands::InPart;
}

Stands TellThrown(const Step& step, DiskBefore& disk) {
    if (step.before.inode == 0) return Stands::Not; // nothing stood there
    if (IsTheSame(step.before, disk.At(step.from))) return Stands::Not;
    disk.Set(step.from, step.before);
    return Stands::Whole;
}

Stands TellRenamed(const Step& step, DiskBefore& disk) {
    const FileLook there = disk.At(step.to);
    if (!IsTheSame(step.before, there) || IsTheSame(step.before, disk.At(step.from)))
        return Stands::Not;
    disk.Set(step.to, {});
    disk.Set(step.from, there);
    return Stands::Whole;
}

Stands TellMade(const Step& step, const std::vector<Step>& steps, DiskBefore& disk) {
    const FileLook now = disk.At(step.to);
    const bool isCopy = now.inode != 0 && now.bytes == step.before.bytes &&
                        now.seconds == step.before.seconds &&
                        !IsThrownFor(step, steps, step.to, now);
    if (!isCopy) return Stands::Not;
    disk.Set(step.to, {});
    return Stands::Whole;
}

Stands TellDropped(const Step& step, DiskBefore& disk) {
    if (disk.At(step.from).inode != 0 || disk.At(step.to).inode == 0) return Stands::Not;
    disk.Set(step.from, step.before);
    return Stands::Whole;
}

Stands WholeIf(bool stands) {
    return stands ? Stands::Whole : Stands::Not;
}

Stands TellOne(const Step& step, const std::vector<Step>& steps, DiskBefore& disk) {
    switch (step.kind) {
    case StepKind::ThrownAway:
        return TellThrown(step, disk);
    case StepKind::Renamed:
        return TellRenamed(step, disk);
    case StepKind::Made:
        return TellMade(step, steps, disk);
    case StepKind::Dropped:
        return TellDropped(step, disk);
    case StepKind::Written:
        return TellWritten(step, steps, disk);
    case StepKind::WrittenAt:
        return TellWrittenAt(step, disk);
    case StepKind::Dated:
        return WholeIf(disk.At(step.from).seconds == step.after.seconds);
    case StepKind::FolderMade:
        return WholeIf(disk.Disk().IsFolder(step.from));
    case StepKind::FolderRemoved:
        return WholeIf(!disk.Disk().Exists(step.from));
    case StepKind::Removed:
        return WholeIf(disk.At(step.from).inode == 0);
    case StepKind::Marked:
        return Stands::Whole;
    }
    return Stands::Not;
}

} // namespace

std::vector<Stands> TellSteps(const std::vector<Step>& steps, const Files& files) {
    std::vector<Stands> told(steps.size(), Stands::Not);
    DiskBefore disk(files);
    for (std::size_t i = steps.size(); i-- > 0;)
        if (steps[i].state != StepState::NotDone) told[i] = TellOne(steps[i], steps, disk);
    return told;
}

} // namespace tarn
