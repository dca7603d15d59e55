// Renames many files of a folder by another beginning of their names, and takes their notes along.
// It shows at all times what it would do. Holds the other windows while it is open; what it does
// can be taken back by Undo.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "fileops/RenameRun.h"

#include <QDialog>

#include <functional>
#include <string>
#include <vector>

class QCheckBox;
class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStringListModel;

namespace tarn {

class BatchRun;
class FileListBox;
class FolderTreeview;

class frmRenameFiles : public QDialog {
public:
    explicit frmRenameFiles(Context& context);

    // On the main window's folder, with what is selected there.
    void OpenWindow();

    std::function<void()> onClosed;
    const std::string& Folder() const; // the one on show
    // The file of the main window under the name that it has now.
    const std::string& CurrentPath() const { return m_currentPath; }

    // What the last renaming since the opening said; empty: there was none.
    const std::string& Said() const { return m_said; }

    void RenameCommand_Click();
    void CommandView_Click();
    void CommandDir_Click();
    void RenameFile_DblClick();

    void reject() override; // also the closing by the frame; stops a run

private:
    QLayout* MakeFolderSide();
    QLayout* MakeTexts();
    QLayout* MakeLists();
    QLayout* MakeResults();
    QLayout* MakeMessage();
    QLayout* MakeCommands();
    QPushButton* Button(const char* name, const char* caption, const char* tip,
                        std::function<void()> act);

    void FolderTreeview1_Selection(const std::string& path, bool& cancel);
    void SelectAsIn(const FileListBox& main);
    void NarrowToKept();
    void SetPattern();
    void BuildRenameLists();
    void ClearResults();
    void PasteSelectedName(QLineEdit& box);
    void RenameInputList_Click(int row);
    std::string FirstSelected() const;

    bool KeepWrittenNote();
    bool CarryOut(RenameRun& run, const BatchRun& batch, const std::string& doing, bool stops);
    void RenameAll(Changes& changes);
    RenamePlan PlanNotes(const std::vector<RenameRow>& moved,
                         const std::vector<std::string>& before,
                         const std::vector<std::string>& notes) const;
    RenamePlan PlanAll(const RenamePlan& pictures, const std::vector<std::string>& before,
                       const std::vector<std::string>& notes, Changes& changes) const;
    void RefuseAll(const std::string& why);
    void RenameNotes(RenamePlan plan, const BatchRun& batch, Changes& changes);
    void RenameSidecars(const std::vector<RenameRow>& moved, const std::vector<std::string>& before,
                        const BatchRun& batch, Changes& changes);
    void ShowFaults(const std::vector<RenameFault>& faults, const char* what);
    void Follow(const std::vector<RenameRow>& moved);

    Context& m;
    std::vector<RenameRow> m_rows; // as the two lists show them
    std::string m_currentPath;
    std::string m_said;
    bool m_building = false;
    bool m_running = false;

    FolderTreeview* m_tree = nullptr;
    FileListBox* m_list = nullptr; // RenameFile
    QLineEdit* m_from = nullptr;   // RenameInputFilter
    QLineEdit* m_to = nullptr;     // RenameFilter
    QStringListModel* m_inputs = nullptr;
    QStringListModel* m_outputs = nullptr;
    QListWidget* m_errors = nullptr;
    QGroupBox* m_errorFrame = nullptr;
    QLabel* m_count = nullptr;        // InCountLabel
    QLabel* m_done = nullptr;         // RenameLabel
    QLabel* m_notesDone = nullptr;    // NotesRenameLabel
    QLabel* m_date = nullptr;         // FileDateLabel
    QLabel* m_say = nullptr;          // progress, and why a file was not renamed
    QCheckBox* m_all = nullptr;       // CheckAll
    QCheckBox* m_showAll = nullptr;   // CheckShowAll
    QCheckBox* m_keptOnly = nullptr;  // CheckKeptOnly
    QCheckBox* m_moveNotes = nullptr; // RenameNotesCheck
    QCheckBox* m_copyNotes = nullptr; // CopyNotesCheck
    QPushButton* m_cancel = nullptr;
    KeptPlace m_place;
};

} // namespace tarn
