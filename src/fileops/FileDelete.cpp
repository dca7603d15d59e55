// Pictures into the wastebasket, with their notes as the user wishes.
#include "fileops/FileRoom.h"
#include "fileops/MarksAlong.h"
#include "fileops/PlanningSteps.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kSeen = 400; // milliseconds, so that a delete without a question can be seen
constexpr int kNear = 100; // rows on either side, of which one is still there after a delete

const std::vector<std::string> kYesNo{"Yes", "No"};
const std::vector<std::string> kForGood{"Delete for good", "Keep"};

// The pointer of a delete that asks nothing.
class DeletePointer {
public:
    explicit DeletePointer(ShellCommands& shell) : m_shell(shell) {
        m_shell.SetDeletePointer(true);
    }
    ~DeletePointer() { m_shell.SetDeletePointer(false); }
    DeletePointer(const DeletePointer&) = delete;
    DeletePointer& operator=(const DeletePointer&) = delete;

private:
    ShellCommands& m_shell;
};

} // namespace

Outcome FileRoom::DeleteButton_Click() {
    return DeleteCurrent(!m.state.DeleteKeepNotes, m.state.DeleteConfirm);
}

Outcome FileRoom::DeleteOnlyButton_Click() {
    return DeleteCurrent(false, m.state.DeleteConfirm);
}

Outcome FileRoom::DeletePicButton_Click() {
    return DeleteCurrent(false, false);
}

Outcome FileRoom::DeleteCurrent(bool withNote, bool ask) {
    ProgramState& s = m.state;
    if (s.Filename.empty() || m.controls.FileListBox->Count() < 1) return Outcome::Refused();
    s.DeleteNoteToo = withNote;
    Changes changes(m.history, {});
    if (Outcome written = m.marks.Flush(); !written) return written;
    Belongings belongings(m.files, Notes());
    return Delete(PlanDelete(belongings, s.Filename, withNote), ask, "Delete", changes);
}

bool FileRoom::AskDelete(const DeletePlan& plan) {
    const bool notes = m.state.DeleteNoteToo;
    return m.dialogs.Choose(Dialogs::Icon::Exclamation,
                            notes ? "Delete file & notes confirmation" : "Delete file confirmation",
                            (notes ? "Delete file & notes " : "Delete file ") + plan.path +
                                " to wastebasket?",
                            kYesNo) == 0;
}

Outcome FileRoom::Delete(const DeletePlan& plan, bool ask, const std::string& verb,
                         Changes& changes) {
    if (ask && !AskDelete(plan)) return Outcome::Refused();
    const std::string name = LastPart(plan.path);
    changes.SetWhat(verb + " '" + name + "'");
    const int row = RowOf(plan.path);
    const std::vector<std::string> following = Following(row, kNear);
    if (!ask) {
        const DeletePointer pointer(m.shell);
        m.events.Sleep(kSeen);
    }
    if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    const bool there = m.files.Exists(plan.path);
    PlanThrow(plan, changes);
    if (there)
        if (Outcome kept = ThrowPicture(plan.path, changes); !kept) return kept;
    std::string said = there ? "DELETED - " + name : "'" + name + "' is not there any more";
    if (there) said += ThrowAlong(plan, changes);
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    const DroppedNote dropped(m);
    ShowNext(following, row);
    if (RowOf(plan.path) >= 0 && !m.files.Exists(plan.path))
        said += ", the folder could not be read again";
    return Outcome::Did(said + dropped.Word());
}

// Twice without a word, since a file that another program looks at is free again a moment later.
Outcome FileRoom::ThrowPicture(const std::string& path, Changes& changes) {
    std::string error;
    if (changes.ThrowAway(path, &error) || changes.ThrowAway(path, &error)) return Outcome::Did();
    const int choice = m.dialogs.Choose(Dialogs::Icon::Critical, "Delete file",
                                        path + " cannot go to the wastebasket: " + error, kForGood);
    if (choice != 0) return Outcome::Refused();
    if (changes.Remove(path, &error)) return Outcome::Did();
    return Outcome::Refused({}, error + " - " + LastPart(path));
}

int FileRoom::RowOf(const std::string& path) const {
    const FileListBox& list = *m.controls.FileListBox;
    return FolderOf(path) == list.Path() || JoinPath(list.Path(), LastPart(path)) == path
               ? list.RowOf(LastPart(path))
               : -1;
}

// What comes next when files go: the names behind the row, then those ahead of it, the nearest
// first. A list that is chosen or ordered by what another thread reads is not yet what it will be.
std::vector<std::string> FileRoom::Following(int row, int most) const {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> names;
    const int last = std::min(list.Count() - 1, row + most);
    const int first = std::max(0, row - most);
    for (int at = row + 1; at <= last; ++at) names.push_back(list.Text(at));
    for (int at = std::min(row, list.Count()) - 1; at >= first; --at)
        names.push_back(list.Text(at));
    return names;
}

void FileRoom::ShowNext(const std::vector<std::string>& following, int otherwise) {
    ShowFromRow([&] {
        for (const std::string& name : following)
            if (const int row = m.controls.FileListBox->RowOf(name); row >= 0) return row;
        return otherwise;
    });
}

void FileRoom::ShowFromRow(int row) {
    ShowFromRow([row] { return row; });
}

// Of the folder as it is now; a show goes on by itself and selects a row at its end.
void FileRoom::ShowFromRow(const std::function<int()>& rowOf) {
    m.notes.NoteFilesChanged();
    m.navigation.RefreshDirButton_Click();
    if (m.controls.FileListBox->Count() < 1) m.navigation.ShowWholeList();
    const int count = m.controls.FileListBox->Count();
    if (count < 1) {
        ShowNothing();
        return;
    }
    if (m.state.SlideViewing && m.state.SlidesPerPage == 1) {
        m.navigation.ResetFileHistory(false); // it counts rows
        return;
    }
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(std::clamp(rowOf(), 0, count - 1));
    m.navigation.ResetFileHistory(true);
}

void FileRoom::ShowNothing() {
    m.current.Choose({});
    m.display.ShowNothing();
    m.current.Tell();
    m.shell.ShowError({});
    m.navigation.ResetFileHistory(false);
    m.navigation.EnableListCommands();
    m.shell.ShowStatus("Nothing to display in current folder.");
    m.shell.FocusPane();
}

void FileRoom::DeleteAllFitsButton_Click() {
    const FileListBox& list = *m.controls.FileListBox;
    const std::vector<std::string> paths = FitsFiles(m.files, list.Path());
    const int row = std::max(0, list.CurrentRow());
    const std::vector<std::string> following = Following(row - 1, list.Count());
    if (paths.empty()) {
        m.shell.ShowMessage("No FITS files in this folder");
        return;
    }
    if (m.state.DeleteConfirm &&
        m.dialogs.Choose(Dialogs::Icon::Exclamation, "Delete file confirmation",
                         "Delete all " + std::to_string(paths.size()) + " FITS files of " +
                             list.Path() + " to wastebasket?",
                         kYesNo) != 0)
        return;
    if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
    Changes changes(m.history, "Delete of FITS files");
    std::size_t thrown = 0;
    const std::string said = ThrowFits(paths, changes, thrown);
    changes.SetWhat("Delete of " + std::to_string(thrown) + " FITS files");
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    const DroppedNote dropped(m);
    ShowNext(following, row);
    m.shell.ShowMessage(said + dropped.Word());
}

// Stops at the first that cannot go.
std::string FileRoom::ThrowFits(const std::vector<std::string>& paths, Changes& changes,
                                std::size_t& thrown) {
    const BatchRun batch(m);
    if (!PlanThrows(paths, {}, false, changes, PlanningSteps(batch, paths.size())))
        return "0 FITS files deleted, cancelled";
    Belongings belongings(m.files, {}); // notes stay
    std::string why;
    for (const std::string& path : paths) {
        if (!batch.Step("Deleting " + std::to_string(thrown + 1) + " of " +
                        std::to_string(paths.size()) + " - " + LastPart(path))) {
            why = ", cancelled";
            break;
        }
        std::string error;
        const DeletePlan plan = PlanDelete(belongings, path, false);
        if (!changes.ThrowAway(path, &error)) {
            why = ", stopped at '" + LastPart(path) + "': " + error;
            break;
        }
        ++thrown;
        ThrowAlong(plan, changes);
    }
    return std::to_string(thrown) + " FITS files deleted" + why;
}

} // namespace tarn
