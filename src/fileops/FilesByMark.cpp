// The files of the folder by their marks: rejected ones away, kept ones into the copy folder, and
// all marks away.
#include "fileops/FileRoom.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "desk/batch/KeptFiles.h"
#include "fileops/MarksAlong.h"
#include "fileops/PlanningSteps.h"
#include "platform/Files.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>

#include <algorithm>

namespace tarn {

namespace {

const std::vector<std::string> kYesNo{"Yes", "No"};
constexpr char kSubFolder[] = "rejected";

bool IsRejected(const Mark& mark) {
    return mark.decision == Decision::Reject;
}
bool IsKept(const Mark& mark) {
    return mark.decision == Decision::Keep;
}
bool IsAny(const Mark& mark) {
    return mark != Mark();
}

std::string Counted(std::size_t count, const std::string& kind) {
    return std::to_string(count) + " " + kind + (count == 1 ? " file" : " files");
}

} // namespace

void FileRoom::ConnectMarks() {
    const MainControls& c = m.controls;
    Connect(c.RejectedDeleteButton, [this] { m.shell.Tell(RejectedToWastebasket()); });
    Connect(c.RejectedFolderButton, [this] { m.shell.Tell(RejectedIntoSubFolder()); });
    Connect(c.KeptCopyButton, [this] { m.shell.Tell(KeptToCopyFolder()); });
    Connect(c.ClearMarksButton, [this] { m.shell.Tell(ClearAllMarks()); });
    m.marks.Follow([this] {
        if (const std::string toCome = m.marks.CommandToCome(); toCome != m_markToCome) {
            m_markToCome = toCome;
            ShowUndo();
        }
    });
}

// Of all files of the folder that the boxes list, also where the list is narrowed.
FileRoom::ByMark FileRoom::FilesMarked(bool (*takes)(const Mark&), const std::string& kind) const {
    const FileListBox& list = *m.controls.FileListBox;
    if (!AwaitMarks(m)) return {{}, Outcome::Refused("Cancelled")};
    ByMark found;
    for (const std::string& name : list.Listed()) {
        std::string path = JoinPath(list.Path(), name);
        if (takes(m.marks.MarkOf(path).value_or(Mark()))) found.paths.push_back(std::move(path));
    }
    if (found.paths.empty())
        found.refusal = Outcome::Refused("No " + kind + " files in this folder");
    return found;
}

bool FileRoom::AskOfMarked(const std::string& title, const std::string& text) {
    return m.dialogs.Choose(Dialogs::Icon::Exclamation, title, text, kYesNo) == 0;
}

Outcome FileRoom::RejectedToWastebasket() {
    const FileListBox& list = *m.controls.FileListBox;
    const ByMark rejected = FilesMarked(IsRejected, "rejected");
    if (rejected.paths.empty()) return rejected.refusal;
    m.state.DeleteNoteToo = !m.state.DeleteKeepNotes;
    const std::string what = Counted(rejected.paths.size(), "rejected");
    if (!AskOfMarked("Delete file confirmation",
                     "Delete " + what + (m.state.DeleteNoteToo ? " & notes of " : " of ") +
                         list.Path() + " to wastebasket?"))
        return Outcome::Refused();
    if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    if (Outcome written = m.marks.Flush(); !written) return written;
    const int row = std::max(0, list.CurrentRow());
    const std::vector<std::string> following = Following(row, list.Count());
    Changes changes(m.history, "Delete of " + what);
    Outcome thrown = ThrowAll(rejected.paths, changes);
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    const DroppedNote dropped(m);
    if (m.files.Exists(m.state.Filename)) { // the picture that is shown stays
        m.notes.NoteFilesChanged();
        m.navigation.RefreshAfterDelete();
    } else {
        ShowNext(following, row);
    }
    thrown.text += dropped.Word();
    return thrown;
}

Outcome FileRoom::ThrowAll(const std::vector<std::string>& paths, Changes& changes) {
    const BatchRun batch(m);
    if (!PlanThrows(paths, Notes(), m.state.DeleteNoteToo, changes,
                    PlanningSteps(batch, paths.size())))
        return Outcome::Refused("Cancelled, nothing was deleted");
    Belongings belongings(m.files, Notes());
    const std::string all = std::to_string(paths.size());
    std::vector<FileFault> faults;
    std::size_t thrown = 0;
    std::string along; // the first that stays
    DeletePlan alongOf;
    std::string end;
    for (std::size_t i = 0; i < paths.size() && end.empty(); ++i) {
        if (!batch.Step("Deleting " + std::to_string(i + 1) + " of " + all + " - " +
                        LastPart(paths[i]))) {
            end = ", cancelled";
            continue;
        }
        const DeletePlan plan = PlanDelete(belongings, paths[i], m.state.DeleteNoteToo);
        std::string error;
        if (!changes.ThrowAway(paths[i], &error)) {
            faults.push_back({paths[i], error});
            continue;
        }
        ++thrown;
        const std::string stays = ThrowAlong(plan, changes);
        if (stays.empty() || !along.empty()) continue;
        along = "; '" + LastPart(paths[i]) + "'" + stays;
        alongOf = plan;
    }
    // It may have gone with a later one that had it, too.
    if (std::none_of(alongOf.along.begin(), alongOf.along.end(),
                     [&](const Belonging& each) { return m.files.Exists(each.path); }))
        along.clear();
    if (!faults.empty())
        end += ", " + std::to_string(faults.size()) + " stay: " + faults.front().why;
    return {faults.empty() && end.empty(),
            Counted(thrown, "rejected") + " deleted" + end + along,
            {},
            faults};
}

Outcome FileRoom::RejectedIntoSubFolder() {
    const FileListBox& list = *m.controls.FileListBox;
    const ByMark rejected = FilesMarked(IsRejected, "rejected");
    if (rejected.paths.empty()) return rejected.refusal;
    const std::string name = m.dialogs.AskText("Rejected into sub folder",
                                               "Sub folder of " + list.Path() + " for " +
                                                   Counted(rejected.paths.size(), "rejected"),
                                               kSubFolder);
    if (name.empty()) return Outcome::Refused();
    std::string error = FaultOfName(name, {});
    const std::string folder = JoinPath(list.Path(), name);
    const bool stands = error.empty() && m.files.IsFolder(folder);
    Changes changes(m.history, {});
    if (error.empty() && !stands && !changes.MakeFolder(folder, &error) && error.empty())
        error = "cannot be made";
    if (!error.empty()) return Outcome::Refused("Folder '" + name + "' not created - " + error);
    return PutFilesIn({rejected.paths, folder, false}, changes);
}

Outcome FileRoom::KeptToCopyFolder() {
    const std::string& folder = m.state.CopyImageFolder;
    if (folder.empty()) return Outcome::Refused("'Copy to' folder has not been set");
    const ByMark kept = FilesMarked(IsKept, "kept");
    if (kept.paths.empty()) return kept.refusal;
    if (!AskOfMarked("Kept to copy folder",
                     "Copy " + Counted(kept.paths.size(), "kept") + " to " + folder + "?"))
        return Outcome::Refused();
    return PutFiles({kept.paths, folder, true});
}

Outcome FileRoom::ClearAllMarks() {
    const ByMark marked = FilesMarked(IsAny, "marked");
    if (marked.paths.empty()) return marked.refusal;
    const std::string what = Counted(marked.paths.size(), "marked");
    if (!AskOfMarked("Clear all marks", "Take the marks of " + what + " of " +
                                            m.controls.FileListBox->Path() + " away?"))
        return Outcome::Refused();
    std::vector<MarkWish> wishes;
    for (const std::string& path : marked.paths) wishes.push_back({path, ClearMark()});
    m.marks.MarkFiles("Clear of " + std::to_string(wishes.size()) + " marks", wishes);
    return Outcome::Did("Marks of " + std::to_string(wishes.size()) + " files cleared");
}

void FileRoom::SetMarksBack(const std::vector<MarkBack>& marks) {
    std::vector<MarkWish> wishes;
    for (const MarkBack& each : marks)
        if (each.change != MarkChange()) wishes.push_back({each.path, each.change});
    if (!wishes.empty()) m.marks.SetMarks(wishes);
}

} // namespace tarn
