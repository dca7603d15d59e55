#include "fileops/PicturePlan.h"

#include "common/paths.h"
#include "common/patterns.h"
#include "common/text.h"

namespace tarn {

namespace {

constexpr std::size_t kLongestName = 255; // bytes

// One that cannot be read is no empty one: bringing it along will say why it cannot be.
bool HasBytes(const Files& files, const std::string& path) {
    const auto first = files.Read(path, 1);
    return !first || !first->empty();
}

bool TakeBack(Changes& changes) {
    std::string ignored; // the first fault is the one to tell
    changes.TakeBack(&ignored);
    return false;
}

// A listed picture, none of the two, to which a note of this name belongs.
std::string OwnerOfNote(const NotesPlace& notes, const std::string& noteName,
                        const std::string& from, const std::string& to) {
    const std::string folded = FoldCase(noteName);
    for (const std::string& name : notes.listed)
        if (name != from && FoldCase(name) != FoldCase(to) && FoldCase(NoteNameOf(name)) == folded)
            return name;
    return {};
}

} // namespace

PictureNote FindNote(const Files& files, const NotesPlace& notes, const std::string& fileName) {
    PictureNote note;
    if (notes.folder.empty()) return note;
    const std::string noteName = NoteNameOf(fileName);
    const auto path = files.FindAnyCase(JoinPath(notes.folder, noteName));
    if (!path || files.IsFolder(*path)) return note;
    note.path = *path;
    note.sharedWith = OwnerOfNote(notes, noteName, fileName, {});
    return note;
}

DeletePlan PlanDelete(const Files& files, const NotesPlace& notes, const std::string& path,
                      bool withNote) {
    DeletePlan plan{path, {}, {}};
    if (!withNote) return plan;
    const PictureNote note = FindNote(files, notes, LastPart(path));
    (note.sharedWith.empty() ? plan.note : plan.keptFor) =
        note.sharedWith.empty() ? note.path : note.sharedWith;
    return plan;
}

std::string FaultOfName(const std::string& name, const std::string& old) {
    if (name == old) return "Filenames are the same";
    if (name.empty()) return "New filename is blank";
    if (name.find(kSeparator) != std::string::npos || name.find('\0') != std::string::npos)
        return "New filename must not contain '/'";
    if (name.front() == '.') return "New filename must not begin with '.'"; // none would list it
    if (name.size() > kLongestName) return "New filename is too long";
    return {};
}

NewNamePlan PlanNewName(const Files& files, const NotesPlace& notes, const std::string& path,
                        const std::string& newName) {
    NewNamePlan plan;
    plan.from = path;
    plan.to = JoinPath(FolderOf(path), newName);
    const PictureNote note = FindNote(files, notes, LastPart(path));
    if (note.path.empty() || !HasBytes(files, note.path)) return plan;
    const std::string noteName = NoteNameOf(newName);
    const std::string noteTo = JoinPath(notes.folder, noteName);
    const bool keepsName = FoldCase(NoteNameOf(LastPart(path))) == FoldCase(noteName);
    if (!keepsName && files.FindAnyCase(noteTo))
        plan.notWritten = OwnerOfNote(notes, noteName, LastPart(path), newName);
    if (!plan.notWritten.empty()) return plan;
    plan.noteFrom = note.path;
    plan.noteTo = noteTo;
    plan.noteStays = !note.sharedWith.empty() || plan.noteFrom == plan.noteTo;
    return plan;
}

bool MakeRoom(const Files& files, const std::string& source, const std::string& target,
              Changes& changes, std::string* error) {
    const bool onlyCase = FoldCase(source) == FoldCase(target);
    const auto stands = !onlyCase              ? files.FindAnyCase(target)
                        : files.Exists(target) ? std::optional(target)
                                               : std::nullopt;
    if (!stands || files.IsSameFile(source, *stands)) return true;
    if (files.IsFolder(*stands)) {
        if (error) *error = "A folder of that name stands there";
        return false;
    }
    return changes.ThrowAway(*stands, error);
}

bool BringNote(const NewNamePlan& plan, const Files& files, Changes& changes, std::string* error) {
    if (plan.noteFrom.empty() || plan.noteFrom == plan.noteTo) return true;
    // Another spelling that the disk takes for the same file.
    if (files.IsSameFile(plan.noteFrom, plan.noteTo))
        return changes.Rename(plan.noteFrom, plan.noteTo, error);
    return MakeRoom(files, plan.noteFrom, plan.noteTo, changes, error) &&
           changes.Copy(plan.noteFrom, plan.noteTo, error);
}

// The note first, so that at no instant the picture is without it.
bool CarryOutRename(const NewNamePlan& plan, Files& files, Changes& changes, std::string* error) {
    if (!BringNote(plan, files, changes, error) ||
        !MakeRoom(files, plan.from, plan.to, changes, error) ||
        !changes.Rename(plan.from, plan.to, error))
        return TakeBack(changes);
    const bool noteRenamed = files.IsSameFile(plan.noteFrom, plan.noteTo);
    if (!plan.noteFrom.empty() && !plan.noteStays && !noteRenamed)
        changes.EndRename(plan.noteFrom, plan.noteTo, error);
    return true;
}

bool CarryOutDuplicate(const NewNamePlan& plan, Files& files, Changes& changes,
                       std::string* error) {
    return (BringNote(plan, files, changes, error) &&
            MakeRoom(files, plan.from, plan.to, changes, error) &&
            changes.Copy(plan.from, plan.to, error)) ||
           TakeBack(changes);
}

std::vector<std::string> FitsFiles(const Files& files, const std::string& folder) {
    const NamePatterns fits("*.fit;*.fits");
    std::vector<std::string> paths;
    for (const std::string& name :
         InListOrder(files.FileNames(folder).value_or(std::vector<std::string>())))
        if (fits.Matches(name)) paths.push_back(JoinPath(folder, name));
    return paths;
}

} // namespace tarn
