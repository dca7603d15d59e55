#include "fileops/FileRoom.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/MarksAlong.h"
#include "fileops/PutFiles.h"
#include "fileops/frmNewName.h"
#include "fileops/frmRenameFiles.h"
#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QElapsedTimer>
#include <QPushButton>
#include <QScopedValueRollback>

namespace tarn {

namespace {

constexpr NewNameTexts kRename{"frmRename", "Tarn_View - Rename Picture", "RenameText",
                               "RenameButton", "Rename"};
constexpr NewNameTexts kDuplicate{"frmDuplicate", "Tarn_View - Duplicate Picture", "DupText",
                                  "DuplicateButton", "Duplicate"};

constexpr int kProgressEvery = 50; // milliseconds; the screen would cost more than the disk

std::string Arrow(const std::string& from, const std::string& to) {
    return from + " > " + to;
}

std::string NoteWord(const NewNamePlan& plan) {
    return plan.notWritten.empty() ? std::string()
                                   : ", its note stays: '" + plan.notWritten + "' has that name";
}

} // namespace

FileRoom::FileRoom(Context& context)
    : m(context), m_copyPaste(context, [this](UndoEntry entry) { PushUndo(std::move(entry)); }) {}

FileRoom::~FileRoom() = default;

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
    ConnectMarks();
    SetEnabled(c.UndoButton, false);
    m_copyPaste.ConnectControls();
}

NotesPlace FileRoom::Notes() const {
    NotesPlace notes{m.state.NotesFolder, {}};
    const FileListBox& list = *m.controls.FileListBox;
    for (int row = 0; row < list.Count(); ++row) notes.listed.push_back(list.Text(row));
    return notes;
}

void FileRoom::PushUndo(UndoEntry entry) {
    for (MarkBefore& mark : TakeMarksAlong(m.marks, entry.done))
        entry.marks.push_back(std::move(mark));
    m_undo.Push(std::move(entry));
    SetEnabled(m.controls.UndoButton, !m_undo.IsEmpty());
    m.controls.UndoButton->setText(m_undo.IsEmpty()
                                       ? QStringLiteral("&Undo")
                                       : QStringLiteral("&Undo ") + ToCaption(m_undo.NextText()));
}

void FileRoom::UndoButton_Click() {
    if (m_undo.IsEmpty()) return;
    if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
    const int row = m.controls.FileListBox->CurrentRow();
    UndoResult result;
    {
        const std::string all = std::to_string(m_undo.NextSize());
        const BatchRun batch(m);
        QElapsedTimer sinceShown;
        result = m_undo.Undo(m.files, [&](std::size_t number) {
            if (sinceShown.isValid() && sinceShown.elapsed() < kProgressEvery) return true;
            sinceShown.start();
            return batch.Step("Undoing " + std::to_string(number) + " of " + all);
        });
    }
    PushUndo({});
    SetMarksBack(result.marks);
    const DroppedNote dropped(m);
    m.notes.NoteFilesChanged();
    m.navigation.RefreshDirButton_Click();
    std::string first; // of what came back into this folder
    for (const std::string& path : result.back)
        if (first.empty() && RowOf(path) >= 0) first = path;
    if (!first.empty() || m.controls.FileListBox->CurrentRow() < 0) Show(first, row);
    m.shell.ShowMessage(result.text + dropped.Word());
}

// Selects the file; where it is not listed, what is at the row now.
void FileRoom::Show(const std::string& path, int otherwise) {
    const int row = RowOf(path);
    ShowFromRow(row >= 0 ? row : otherwise);
}

// What a failed command could not put back stays within the reach of Undo.
void FileRoom::KeepRest(const Changes& changes, const std::string& what) {
    if (!changes.Written().empty()) PushUndo({"the failed " + what, changes.Written()});
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
    if (!way(plan, m.files, changes, error, left)) {
        KeepRest(changes, what);
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
    Changes changes(m.files);
    std::string error;
    LeftBehind left;
    if (!CarryOut(CarryOutRename, plan, what, changes, &error, &left))
        return Outcome::Refused(kept.text, error);
    PushUndo({what, changes.Written()});
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
    Changes changes(m.files);
    std::string error;
    if (!CarryOut(CarryOutDuplicate, plan, "Duplicate '" + LastPart(from) + "'", changes, &error,
                  nullptr))
        return Outcome::Refused(kept.text, error);
    TakeMarksAlong(m.marks, changes.Written());
    ReadAgain();
    Show(from, row);
    return Outcome::Did("Duplicate - " + Arrow(LastPart(from), newName) + NoteWord(plan) +
                        dropped.Word());
}

void FileRoom::RenamePicturesButton_Click() {
    if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    if (!m_renameFiles) {
        m_renameFiles = std::make_unique<frmRenameFiles>(
            m, [this](UndoEntry entry) { PushUndo(std::move(entry)); });
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
    if (fault.empty() && !m.files.MakeFolder(JoinPath(in, name), &error) && error.empty())
        error = "cannot be made";
    if (!error.empty()) return Outcome::Refused("Folder '" + name + "' not created - " + error);
    m.controls.FolderTreeview1->Reveal(JoinPath(in, name));
    return Outcome::Did("Folder '" + name + "' created");
}

// Where the files of the list go, what is at the current one's row is shown.
Outcome FileRoom::PutFiles(const FolderDrop& drop) {
    if (!drop.copy) {
        Outcome kept = KeepWritten();
        if (!kept) return kept;
        if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    }
    if (Outcome written = m.marks.Flush(); !written) return written;
    const DroppedNote dropped(m);
    Changes changes(m.files);
    Outcome outcome = tarn::PutFiles(m, Notes()).Run(drop, changes);
    if (changes.Written().empty()) return outcome;
    PushUndo({(drop.copy ? "Copy to '" : "Move to '") + drop.folder + "'", changes.Written()});
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
    CopyOutcome copied;
    {
        const QScopedValueRollback<bool> stays(s.CopyAuto, false);
        copied = m.copies.CopyImage();
    }
    m.shell.Tell(copied);
    if (!copied.copyOk.empty()) return; // nothing is moved
    const auto now = m.files.Look(path);
    if (copied && (!before || !now || !now->IsSameContent(*before)))
        return m.shell.Tell(
            Outcome::Refused("Copied, NOT moved: '" + name + "' has changed since it was copied"));
    Changes changes(m.files);
    for (const CopiedFile& file : copied.files) {
        if (!file.replaced.empty()) changes.Note({Done::Kind::ThrownAway, file.to, file.replaced});
        if (!file.from.empty()) changes.Note({Done::Kind::Made, file.from, file.to});
    }
    Belongings belongings(m.files, Notes());
    const Outcome deleted = Delete(PlanDelete(belongings, path, false), false, "Move", changes);
    if (!deleted) return m.shell.Tell(deleted);
    if (!advances) m.navigation.PrevButton_Click();
    m.shell.ShowMessage("Moved '" + name + "'" + dropped.Word());
}

} // namespace tarn
