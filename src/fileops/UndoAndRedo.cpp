// Commands taken back and done again, also those of earlier runs and of the console.
#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/FileRoom.h"
#include "fileops/frmHistory.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QElapsedTimer>

namespace tarn {

namespace {

constexpr int kProgressEvery = 50; // milliseconds; the screen would cost more than the disk
const std::vector<std::string> kGoOn{"Go on without", "Cancel"};
const std::vector<std::string> kBrokenOff{"Finish", "Take back", "Leave as it is"};
constexpr int kFinish = 0;
constexpr int kTakeBack = 1;

void Name(QAction* entry, const std::string& verb, const std::optional<CommandRow>& next) {
    SetEnabled(entry, next.has_value());
    entry->setText(ToQt(verb) + (next ? QLatin1Char(' ') + ToCaption(next->what) : QString()));
}

} // namespace

void FileRoom::Started() {
    m.history.onUnwritable = [this](const std::string& text) {
        return m.dialogs.Choose(Dialogs::Icon::Exclamation, "History", text, kGoOn) == 0;
    };
    if (const std::string notice = m.history.Notice(); !notice.empty()) m.shell.ShowError(notice);
    ShowUndo();
    AskAboutBrokenOff();
}

void FileRoom::ShowUndo() {
    const auto undo = m.history.NextToUndo();
    const auto redo = m.history.NextToRedo();
    m_nextUndo = undo ? undo->id : 0;
    m_nextRedo = redo ? redo->id : 0;
    Name(m.controls.UndoButton, "&Undo", undo);
    Name(m.controls.RedoButton, "Redo", redo);
    if (m_historyWindow && m_historyWindow->isVisible()) m_historyWindow->ReadAgain();
}

// The menu may name what another program has already taken back, or done something behind.
void FileRoom::UndoButton_Click() {
    if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
    const auto next = m.history.NextToUndo();
    if (next && next->id == m_nextUndo)
        return Turn(*next, "Undoing ", [this](const GoOn& goOn) { return m.history.Undo(goOn); });
    ShowUndo();
    if (next)
        m.shell.ShowMessage("Another program has done since: " + next->what +
                            ". Undo again takes that back");
}

void FileRoom::RedoButton_Click() {
    if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
    const auto next = m.history.NextToRedo();
    if (next && next->id == m_nextRedo)
        return Turn(*next, "Doing again ",
                    [this](const GoOn& goOn) { return m.history.Redo(goOn); });
    ShowUndo();
}

void FileRoom::Turn(const CommandRow& row, const std::string& doing, const Way& way) {
    if (m.state.VideoImage()) m.video.CloseVideoClip(); // an open clip holds its file
    const int listRow = m.controls.FileListBox->CurrentRow();
    UndoResult result;
    {
        const std::string all = std::to_string(m.history.StepsToGo(row));
        const BatchRun batch(m);
        QElapsedTimer sinceShown;
        result = way([&](std::size_t number) {
            if (sinceShown.isValid() && sinceShown.elapsed() < kProgressEvery) return true;
            sinceShown.start();
            return batch.Step(doing + std::to_string(number) + " of " + all);
        });
    }
    ShowUndo();
    SetMarksBack(result.marks);
    ShowTurned(result, listRow);
}

void FileRoom::ShowTurned(const UndoResult& result, int row) {
    const DroppedNote dropped(m);
    m.notes.NoteFilesChanged();
    m.navigation.RefreshDirButton_Click();
    std::string first; // of what came back into this folder
    for (const std::string& path : result.back)
        if (first.empty() && RowOf(path) >= 0) first = path;
    if (!first.empty() || m.controls.FileListBox->CurrentRow() < 0) Show(first, row);
    m.shell.ShowMessage(result.text + dropped.Word());
}

void FileRoom::HistoryButton_Click() {
    if (!m_historyWindow) {
        m_historyWindow = std::make_unique<frmHistory>(m);
        m_historyWindow->onUndo = [this](const CommandRow& row) {
            if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
            Turn(row, "Undoing ", [&](const GoOn& goOn) { return m.history.UndoOf(row.id, goOn); });
        };
        m_historyWindow->onRedo = [this](const CommandRow& row) {
            if (const Outcome written = m.marks.Flush(); !written) return m.shell.Tell(written);
            Turn(row, "Doing again ",
                 [&](const GoOn& goOn) { return m.history.RedoOf(row.id, goOn); });
        };
        m_historyWindow->onForgotten = [this] { ShowUndo(); };
        m_historyWindow->onShowFile = [this](const std::string& path) { ShowFile(path); };
    }
    m_historyWindow->ShowHistory();
}

void FileRoom::ShowFile(const std::string& path) {
    const std::string folder = FolderOf(path);
    if (folder != m.controls.FileListBox->Path()) {
        if (!m.files.IsFolder(folder))
            return m.shell.ShowMessage("The folder '" + folder + "' is not there any more");
        m.controls.FolderTreeview1->SetSelectedPath(folder);
        m.controls.FolderTreeview1->Reveal(folder);
    }
    const int row = m.controls.FileListBox->RowOf(LastPart(path));
    if (row < 0)
        return m.shell.ShowMessage("'" + LastPart(path) + "' is not in the list of " + folder);
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row);
}

void FileRoom::End() {
    constexpr std::int64_t kMegabyte = 1 << 20;
    m.history.Prune(m.state.HistoryDays, m.state.HistoryMegabytes * kMegabyte);
}

void FileRoom::AskAboutBrokenOff() {
    for (const CommandRow& row : m.history.BrokenOff()) {
        const auto steps = m.history.StepsOf(row);
        const auto done = std::count_if(steps.begin(), steps.end(), [](const Step& step) {
            return step.state == StepState::Done;
        });
        const int choice = m.dialogs.Choose(
            Dialogs::Icon::Exclamation, "History",
            "'" + row.what + "' was broken off when the program ended: " + std::to_string(done) +
                " of " + std::to_string(steps.size()) + " steps are done in " + row.folder + ".",
            kBrokenOff);
        if (choice == kFinish)
            Turn(row, "Finishing ",
                 [&](const GoOn& goOn) { return m.history.RedoOf(row.id, goOn); });
        if (choice == kTakeBack)
            Turn(row, "Undoing ", [&](const GoOn& goOn) { return m.history.UndoOf(row.id, goOn); });
    }
}

} // namespace tarn
