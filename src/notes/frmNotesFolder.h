// The notes manager: every file of the notes folder, shown, edited, repaired, renamed or deleted
// without its picture.
#pragma once

#include "desk/Context.h"
#include "notes/NoteBox.h"
#include "notes/NotesFolderFiles.h"

#include <QDialog>

#include <memory>
#include <string>
#include <vector>

class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tarn {

class FileListBox;
class NotesRoom;

class frmNotesFolder : public QDialog {
public:
    frmNotesFolder(Context& context, NotesRoom& room);

    void OpenWindow();
    void KeepPlace(); // onto the desk

    void Form_Activate();
    void NotesFileListBox_Click();
    void FixQButton_Click();
    void FixQallButton_Click();
    void UpdateButton_Click();
    void DeleteButton_Click();
    void CommandNew_Click();

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLayout* MakeListSide();
    QLayout* MakeNoteSide();
    QLayout* MakeCommands();
    bool IsEdited() const;
    void NotesFolderNoteBox_Change();
    void ShowNote(const std::string& path);
    void ShowNothing();
    void SelectRow(int row);
    void SelectNear(int row);
    void Fail(const std::string& text, const std::string& why);
    void TellRun(const NotesRun& run, const std::string& text);
    void EnableCommands(bool enabled);
    int RowOfPicture() const;
    bool TakesPartInMainWindow(const std::vector<std::string>& paths);
    void KeepEdit();
    NotesRun Run(const std::string& what,
                 NotesRun (NotesFolderFiles::*work)(Files&, const std::vector<std::string>&,
                                                    const NotesFolderFiles::GoOn&));

    Context& m;
    NotesRoom& m_room;
    NotesFolderFiles m_folder;
    LoadedNote m_note;       // the file shown; its path changes only after a good read
    std::string m_shownText; // as the box had it then
    std::string m_lastFolder;
    bool m_wasAway = false;    // another window was active since
    bool m_fixPressed = false; // the F key went down in the list
    FileListBox* m_list = nullptr;
    QLineEdit* m_folderText = nullptr;
    QLabel* m_label = nullptr;
    QLabel* m_updateText = nullptr;
    QPlainTextEdit* m_edit = nullptr;
    QPushButton* m_update = nullptr;
    QPushButton* m_delete = nullptr;
    std::unique_ptr<NoteBox> m_box;
};

} // namespace tarn
