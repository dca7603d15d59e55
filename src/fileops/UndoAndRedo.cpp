// Commands taken back and done again, also those of earlier runs and of the console.
#include "common/paths.h"
#include "common/sidecar_names.h"
#include "common/worker.h"
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
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

namespace tarn {

namespace {

constexpr int kProgressEvery = 50; // milliseconds; the screen would cost more than the disk
const std::vector<std::string> kGoOn{"Go on without", "Cancel"};
constexpr const char* kFinish = "Finish";
constexpr const char* kTakeBack = "Take back";
constexpr const char* kLeave = "Leave as it is";

void Name(QAction* entry, const std::string& verb, const std::string& next) {
    SetEnabled(entry, !next.empty());
    entry->setText(ToQt(verb) + (next.empty() ? QString() : QLatin1Char(' ') + ToCaption(next)));
}

std::string WhatOf(const std::optional<CommandRow>& row) {
    return row ? row->what : std::string();
}

} // namespace

void FileRoom::Started() {
    m.history.onUnwritable = [this](const std::string& text) { return AskGoOn(text); };
    ShowUndo();
    AskAboutBrokenOff();
    Prune();
}

// The thread of a command that is not this one waits for the answer.
bool FileRoom::AskGoOn(const std::string& text) {
    const bool isHere = QThread::currentThread() == m_here.thread();
    bool goesOn = false;
    QMetaObject::invokeMethod(
        &m_here,
        [&] { goesOn = m.dialogs.Choose(Dialogs::Icon::Exclamation, "History", text, kGoOn) == 0; },
        isHere ? Qt::DirectConnection : Qt::BlockingQueuedConnection);
    return goesOn;
}

// Also the marks, which another thread writes, are done and known of.
Outcome FileRoom::KnowAllDone() {
    Outcome written = m.marks.Flush();
    m.history.EndLate();
    QCoreApplication::sendPostedEvents(&m_here, QEvent::MetaCall);
    if (!m_markToCome.empty()) ShowUndo(); // what the menu named is done by now
    return written;
}

void FileRoom::ShowUndo() {
    const std::string toCome = m.marks.CommandToCome(); // Undo waits for it
    if (!toCome.empty()) { // nor is the database asked, which is being written
        Name(m.controls.UndoButton, "&Undo", toCome);
        Name(m.controls.RedoButton, "Redo", {});
        return;
    }
    const auto undo = m.history.NextToUndo();
    const auto redo = m.history.NextToRedo();
    m_nextUndo = undo ? undo->id : 0;
    m_nextRedo = redo ? redo->id : 0;
    Name(m.controls.UndoButton, "&Undo", WhatOf(undo));
    Name(m.controls.RedoButton, "Redo", WhatOf(redo));
    if (const std::string notice = m.history.Notice(); notice != m_historyNotice) {
        m_historyNotice = notice;
        m.shell.ShowError(notice);
    }
    if (m_historyWindow && m_historyWindow->isVisible()) m_historyWindow->ReadAgain();
}

// The menu may name what another program has already taken back, or done something behind.
void FileRoom::UndoButton_Click() {
    if (const Outcome written = KnowAllDone(); !written) return m.shell.Tell(written);
    const auto next = m.history.NextToUndo();
    if (next && next->id == m_nextUndo)
        return Turn(*next, "Undoing ", [this](const GoOn& goOn) { return m.history.Undo(goOn); });
    ShowUndo();
    if (next)
        m.shell.ShowMessage("Another program has done since: " + next->what +
                            ". Undo again takes that back");
}

void FileRoom::RedoButton_Click() {
    if (const Outcome written = KnowAllDone(); !written) return m.shell.Tell(written);
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
            if (const Outcome written = KnowAllDone(); !written) return m.shell.Tell(written);
            Turn(row, "Undoing ", [&](const GoOn& goOn) { return m.history.UndoOf(row.id, goOn); });
        };
        m_historyWindow->onRedo = [this](const CommandRow& row) {
            if (const Outcome written = KnowAllDone(); !written) return m.shell.Tell(written);
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
    int row = m.controls.FileListBox->RowOf(LastPart(path));
    if (row < 0 && IsSidecarName(path)) // of the picture that has it
        row = m.controls.FileListBox->RowOf(LastPart(path.substr(0, path.rfind('.'))));
    if (row < 0)
        return m.shell.ShowMessage("'" + LastPart(path) + "' is not in the list of " + folder);
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row);
}

// Behind the user's back, in small pieces.
void FileRoom::Prune() {
    constexpr std::int64_t kMegabyte = 1 << 20;
    m_pruner =
        std::make_unique<Worker>([&history = m.history, days = m.state.HistoryDays,
                                  bytes = m.state.HistoryMegabytes * kMegabyte,
                                  &stop = m_prunesNoMore] { history.Prune(days, bytes, stop); });
}

void FileRoom::End() {
    m_prunesNoMore = true;
    m_pruner.reset();
}

void FileRoom::AskAboutBrokenOff() {
    for (const CommandRow& row : m.history.BrokenOff()) {
        const auto steps = m.history.StepsOf(row);
        const auto done = std::count_if(steps.begin(), steps.end(), [](const Step& step) {
            return step.state == StepState::Done;
        });
        std::vector<std::string> ways{kTakeBack, kLeave};
        if (m.history.MayFinish(row)) ways.insert(ways.begin(), kFinish);
        const int choice = m.dialogs.Choose(
            Dialogs::Icon::Exclamation, "History",
            "'" + row.what + "' was broken off when the program ended: " + std::to_string(done) +
                " of " + std::to_string(steps.size()) + " steps are done in " + row.folder + ".",
            ways);
        const std::string way = choice < 0 ? std::string() : ways[std::size_t(choice)];
        if (way == kFinish)
            Turn(row, "Finishing ",
                 [&](const GoOn& goOn) { return m.history.RedoOf(row.id, goOn); });
        else if (way == kTakeBack)
            Turn(row, "Undoing ", [&](const GoOn& goOn) { return m.history.UndoOf(row.id, goOn); });
        else if (way == kLeave && !m.history.Leave(row))
            m.shell.ShowMessage("NOT settled: " + row.what +
                                "; another program has it in hand, or the history cannot be "
                                "written");
        ShowUndo();
    }
}

} // namespace tarn
