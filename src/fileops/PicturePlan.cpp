#include "fileops/PicturePlan.h"

#include "common/paths.h"
#include "common/patterns.h"
#include "common/text.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kLongestName = 255; // bytes

bool HasBytes(const Files& files, const std::string& path) {
    const auto first = files.Read(path, 1);
    return first && !first->empty();
}

bool TakeBack(Changes& changes) {
    std::string ignored; // the first fault is the one to tell
    changes.TakeBack(&ignored);
    return false;
}

// The note first, so that at no instant the picture is without it.
bool BringNote(const NewNamePlan& plan, Files& files, Changes& changes, std::string* error) {
    if (plan.noteFrom.empty() || plan.noteFrom == plan.noteTo) return true;
    return MakeRoom(files, plan.noteFrom, plan.noteTo, changes, error) &&
           changes.Copy(plan.noteFrom, plan.noteTo, error);
}

} // namespace

PictureNote FindNote(const Files& files, const NotesPlace& notes, const std::string& fileName) {
    PictureNote note;
    if (notes.folder.empty()) return note;
    const std::string noteName = NoteNameOf(fileName);
    const auto path = files.FindAnyCase(JoinPath(notes.folder, noteName));
    if (!path || files.IsFolder(*path)) return note;
    note.path = *path;
    const std::string folded = FoldCase(noteName);
    for (const std::string& other : notes.listed)
        if (other != fileName && FoldCase(NoteNameOf(other)) == folded) {
            note.sharedWith = other;
            break;
        }
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
    if (name == "." || name == "..") return "New filename is not valid";
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
    plan.noteFrom = note.path;
    plan.noteTo = JoinPath(notes.folder, NoteNameOf(newName));
    plan.noteStays = !note.sharedWith.empty() || plan.noteFrom == plan.noteTo;
    return plan;
}

bool MakeRoom(const Files& files, const std::string& source, const std::string& target,
              Changes& changes, std::string* error) {
    const auto stands = files.FindAnyCase(target);
    if (!stands || files.IsSameFile(source, *stands)) return true;
    return changes.ThrowAway(*stands, error);
}

bool CarryOutRename(const NewNamePlan& plan, Files& files, Changes& changes, std::string* error) {
    if (!BringNote(plan, files, changes, error) ||
        !MakeRoom(files, plan.from, plan.to, changes, error) ||
        !changes.Rename(plan.from, plan.to, error))
        return TakeBack(changes);
    std::string ignored; // the note has arrived; a second one does no harm
    if (!plan.noteFrom.empty() && !plan.noteStays) changes.ThrowAway(plan.noteFrom, &ignored);
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
