// Commands taken back and done again, also those of earlier runs and of the console.
#include "desk/batch/BatchRun.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/FileRoom.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

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
}

// The menu may name what another program has already taken back, or done something behind.
void FileRoom::UndoButton_Click() {
    m.marks.Flush();
    const auto next = m.history.NextToUndo();
    if (next && next->id == m_nextUndo)
        return Turn(*next, "Undoing ", [this](const GoOn& goOn) { return m.history.Undo(goOn); });
    ShowUndo();
    if (next)
        m.shell.ShowMessage("Another program has done since: " + next->what +
                            ". Undo again takes that back");
}

void FileRoom::RedoButton_Click() {
    m.marks.Flush();
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
