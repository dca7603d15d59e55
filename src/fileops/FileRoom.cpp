#include "fileops/FileRoom.h"

#include "common/worker.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/MarksAlong.h"
#include "fileops/PutFiles.h"
#include "fileops/frmHistory.h"
#include "fileops/frmNewName.h"
#include "fileops/frmRenameFiles.h"
#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace tarn {

namespace {

constexpr NewNameTexts kRename{"frmRename", "Tarn_View - Rename Picture", "RenameText",
                               "RenameButton", "Rename"};
constexpr NewNameTexts kDuplicate{"frmDuplicate", "Tarn_View - Duplicate Picture", "DupText",
                                  "DuplicateButton", "Duplicate"};

std::string Arrow(const std::string& from, const std::string& to) {
    return from + " > " + to;
}

// A sidecar that is to go with its picture, and has not come to the new place.
std::string NotCopied(const DeletePlan& plan, const Changes& changes) {
    const std::vector<Step> done = changes.Done();
    for (const Belonging& each : plan.along) {
        const bool copied = std::any_of(done.begin(), done.end(), [&](const Step& step) {
            return step.kind == StepKind::Made && step.from == each.path;
        });
        if (each.kind == BelongingKind::Sidecar && !copied) return each.path;
    }
    return {};
}

std::string NoteWord(const NewNamePlan& plan) {
    return plan.notWritten.empty() ? std::string()
                                   : ", its note stays: '" + plan.notWritten + "' has that name";
}

} // namespace

FileRoom::FileRoom(Context& context) : m(context), m_copyPaste(context) {}

FileRoom::~FileRoom() {
    m.history.Detach();
}

void FileRoom::ConnectControls() {
    MainControls& c = m.controls;
    for (QAction* entry : {c.DeleteButton, c.PopupDeleteButton, c.DeleteMenuButton})
        Connect(entry, [this] { m.shell.Tell(DeleteButton_Click()); });
    for (QAction* entry : {c.DeleteOnlyButton, c.PopupDeleteOnlyButton})
        Connect(entry, [this] { m.shell.Tell(DeleteOnlyButton_Click()); });
    for (QAction* entry : {c.RenameButton, c.PopupRenameButton})
        Connect(entry, [this] { m.shell.Tell(RenameButton_Click()); });
    for (QAction* entry : {c.DuplicateButton, c.PopupDuplicateButton})
        Connect(entry, [this] { m.shell.Tell(DuplicateButton_Click()); });
    for (QAction* entry : {c.RenamePicturesButton, c.PopupRenamePicturesButton})
        Connect(entry, [this] { RenamePicturesButton_Click(); });
    Connect(c.DeletePicButton, [this] { m.shell.Tell(DeletePicButton_Click()); });
    Connect(c.DeleteAllFitsButton, [this] { DeleteAllFitsButton_Click(); });
    Connect(c.DeleteFitsButton, [this] { DeleteAllFitsButton_Click(); });
    Connect(c.CreateFolderButton,
            [this] { m.shell.Tell(MakeFolder(m.controls.FileListBox->Path())); });
    Connect(c.MoveToButton, [this] { MoveToButton_Click(); });
    Connect(c.UndoButton, [this] { UndoButton_Click(); });
    Connect(c.RedoButton, [this] { RedoButton_Click(); });
    Connect(c.HistoryButton, [this] { HistoryButton_Click(); });
    m.history.onEnd = [this] {
        QMetaObject::invokeMethod(&m_here, [this] { ShowUndo(); }); // the marks' thread ends some
    };
    ConnectMarks();
    m_copyPaste.ConnectControls();
}

NotesPlace FileRoom::Notes() const {
    NotesPlace notes{m.state.NotesFolder, {}};
    const FileListBox& list = *m.controls.FileListBox;
    for (int row = 0; row < list.Count(); ++row) notes.listed.push_back(list.Text(row));
    return notes;
}

// Selects the file; where it is not listed, what is at the row now.
void FileRoom::Show(const std::string& path, int otherwise) {
    const int row = RowOf(path);
    ShowFromRow(row >= 0 ? row : otherwise);
}

// What is being written for the picture, note and marks, goes along with it.
Outcome FileRoom::KeepWritten() {
    if (Outcome written = m.marks.Flush(); !written) return written;
    return m.state.NotesFolder.empty() ? Outcome::Did() : m.notes.SaveIfUnsaved();
}

Outcome FileRoom::RenameButton_Click() {
    return AskNewName(m_rename, kRename, &FileRoom::Rename);
}

Outcome FileRoom::DuplicateButton_Click() {
    return AskNewName(m_duplicate, kDuplicate, &FileRoom::Duplicate);
}

Outcome FileRoom::AskNewName(std::unique_ptr<frmNewName>& form, const NewNameTexts& texts,
                             NewNameCommand act) {
    const std::string from = m.state.Filename;
    if (m.controls.FileListBox->Count() < 1 || from.empty()) return Outcome::Refused();
    if (!form) form = std::make_unique<frmNewName>(*m.controls.FileListBox->window(), texts);
    m.clipboard.SetText(LastPart(from));
    form->Ask(FolderOf(from), LastPart(from), [this, from, act](const std::string& name) {
        m.shell.Tell((this->*act)(from, name));
    });
    return Outcome::Did();
}

// False: everything stands as it stood.
bool FileRoom::CarryOut(CarryOutNewName way, const NewNamePlan& plan, const std::string& what,
                        Changes& changes, std::string* error, LeftBehind* left) {
    if (!way(plan, changes, error, left)) {
        // What could not be put back stays within the reach of Undo.
        changes.SetWhat("the failed " + what);
        *error += " - " + LastPart(plan.from);
        return false;
    }
    return true;
}

void FileRoom::ReadAgain() {
    m.notes.NoteFilesChanged();
    m.navigation.RefreshDirButton_Click();
}

NewNamePlan FileRoom::Plan(const std::string& from, const std::string& newName) const {
    Belongings belongings(m.files, Notes());
    return PlanPlace(belongings, from, JoinPath(FolderOf(from), newName));
}

Outcome FileRoom::Rename(const std::string& from, const std::string& newName) {
    const Outcome kept = KeepWritten();
    if (!kept) return kept;
    if (m.state.VideoImage()) m.video.CloseVideoClip();
    const int row = m.controls.FileListBox->CurrentRow();
    const NewNamePlan plan = Plan(from, newName);
    const std::string what = "Rename '" + LastPart(from) + "'";
    const DroppedNote dropped(m);
    Changes changes(m.history, what);
    std::string error;
    LeftBehind left;
    if (!CarryOut(CarryOutRename, plan, what, changes, &error, &left))
        return Outcome::Refused(kept.text, error);
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    ReadAgain();
    Show(plan.to, row);
    m.shell.FocusPane();
    return Outcome::Did("Renamed - " + Arrow(LastPart(from), newName) + NoteWord(plan) +
                        (left.path.empty() ? ""
                                           : ", the old " + WordOf(left.kind) +
                                                 " is still there, too: " + left.why) +
                        dropped.Word());
}

Outcome FileRoom::Duplicate(const std::string& from, const std::string& newName) {
    const Outcome kept = KeepWritten();
    if (!kept) return kept;
    const int row = m.controls.FileListBox->CurrentRow();
    const NewNamePlan plan = Plan(from, newName);
    const DroppedNote dropped(m);
    const std::string what = "Duplicate '" + LastPart(from) + "'";
    Changes changes(m.history, what);
    std::string error;
    if (!CarryOut(CarryOutDuplicate, plan, what, changes, &error, nullptr))
        return Outcome::Refused(kept.text, error);
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    ReadAgain();
    Show(from, row);
    return Outcome::Did("Duplicate - " + Arrow(LastPart(from), newName) + NoteWord(plan) +
                        dropped.Word());
}

void FileRoom::RenamePicturesButton_Click() {
    if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    if (!m_renameFiles) {
        m_renameFiles = std::make_unique<frmRenameFiles>(m);
        m_renameFiles->onClosed = [this] { RenamePicturesClosed(); };
    }
    m_renameFiles->OpenWindow();
}

// The window goes to the folder that the renames ended in; its picture stays, under its new name.
void FileRoom::RenamePicturesClosed() {
    const std::string folder = m_renameFiles->Folder();
    FolderTreeview& tree = *m.controls.FolderTreeview1;
    if (folder.empty()) return; // none could be opened
    if (folder != m.controls.FileListBox->Path()) {
        tree.SetSelectedPath(folder);
        tree.Reveal(folder);
        return;
    }
    const FileListBox& list = *m.controls.FileListBox;
    const std::string now = m_renameFiles->CurrentPath();
    const int row = list.CurrentRow();
    m.navigation.RefreshDirButton_Click();
    if (now != m.state.Filename || (list.CurrentRow() < 0 && !now.empty())) {
        const DroppedNote dropped(m);
        Show(now, row);
        m.shell.Tell(Outcome::Did(m_renameFiles->Said() + dropped.Word()));
    }
    m.navigation.ResetFileHistory(list.Count() > 0);
    m.shell.FocusPane();
}

Outcome FileRoom::MakeFolder(const std::string& in) {
    const std::string name =
        m.dialogs.AskText("Create new folder", "Name of the new folder in " + in, "");
    if (name.empty()) return Outcome::Refused();
    const std::string fault = FaultOfName(name, {});
    std::string error = fault;
    Changes changes(m.history, "New folder '" + name + "'");
    if (fault.empty() && !changes.MakeFolder(JoinPath(in, name), &error) && error.empty())
        error = "cannot be made";
    if (!error.empty()) return Outcome::Refused("Folder '" + name + "' not created - " + error);
    m.controls.FolderTreeview1->Reveal(JoinPath(in, name));
    return Outcome::Did("Folder '" + name + "' created");
}

// Where the files of the list go, what is at the current one's row is shown.
Outcome FileRoom::PutFiles(const FolderDrop& drop) {
    Changes changes(m.history, {});
    return PutFilesIn(drop, changes);
}

Outcome FileRoom::PutFilesIn(const FolderDrop& drop, Changes& changes) {
    if (!drop.copy) {
        Outcome kept = KeepWritten();
        if (!kept) return kept;
        if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    }
    if (Outcome written = m.marks.Flush(); !written) return written;
    const DroppedNote dropped(m);
    changes.SetWhat((drop.copy ? "Copy to '" : "Move to '") + drop.folder + "'");
    Outcome outcome = tarn::PutFiles(m, Notes()).Run(drop, changes);
    if (changes.Count() == 0) return outcome;
    TakeMarksAlong(m.marks, changes);
    changes.Close();
    m.notes.NoteFilesChanged();
    if (drop.copy)
        m.navigation.RefreshDirButton_Click();
    else
        m.navigation.RefreshAfterDelete();
    outcome.text += dropped.Word();
    return outcome;
}

// The copy first; only the very path that was copied goes.
void FileRoom::MoveToButton_Click() {
    ProgramState& s = m.state;
    const std::string path = s.Filename;
    const std::string name = s.FileNameOnly;
    if (path.empty() || m.controls.FileListBox->Count() < 1) return;
    const bool advances = s.CopyAuto;
    const DroppedNote dropped(m);
    const auto before = m.files.Look(path);
    Changes changes(m.history, {});
    CopyOutcome copied;
    {
        const QScopedValueRollback<bool> stays(s.CopyAuto, false);
        copied = m.copies.CopyImageIn(changes);
    }
    m.shell.Tell(copied);
    if (!copied.copyOk.empty()) return; // nothing is moved
    const auto now = m.files.Look(path);
    if (copied && (!before || !now || !now->IsSameContent(*before)))
        return m.shell.Tell(
            Outcome::Refused("Copied, NOT moved: '" + name + "' has changed since it was copied"));
    Belongings belongings(m.files, Notes());
    const DeletePlan plan = PlanDelete(belongings, path, false);
    if (const std::string stays = NotCopied(plan, changes); !stays.empty())
        return m.shell.Tell(Outcome::Refused("Copied, NOT moved: '" + name + "', its sidecar '" +
                                             LastPart(stays) + "' was not copied"));
    const Outcome deleted = Delete(plan, false, "Move", changes);
    if (!deleted) return m.shell.Tell(deleted);
    if (!advances) m.navigation.PrevButton_Click();
    m.shell.ShowMessage("Moved '" + name + "'" + dropped.Word());
}

} // namespace tarn
