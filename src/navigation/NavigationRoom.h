// The file list, its selection and all stepping through it: every way of moving ends in
// FileListBox_Click, which decides what kind of file was chosen and which display takes over.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "navigation/ContextMenus.h"
#include "navigation/FindInList.h"
#include "navigation/HistoryList.h"
#include "navigation/ListArrangement.h"
#include "navigation/ListFilter.h"
#include "navigation/Stepping.h"

#include <string>
#include <vector>

namespace tarn {

class NavigationRoom : public NavigationCommands, public Room {
public:
    explicit NavigationRoom(Context& context);

    // Connects list, tree and buttons.
    void ConnectControls() override;
    void ShowSettings() override;
    void Started() override { ShowHint(); }
    void KeepValues() override;

    void FileListBox_Click() override;
    using NavigationCommands::SelectRow;
    void SelectRow(int row, const PictureRequest& request) override;
    void StepFrom(int row, int by, const PictureRequest& request) override;
    void StepBy(int rows, const PictureRequest& request) override;
    void ClearMultiselect() override;
    void Update_Num_Files(int index) override;
    void EnableListCommands() override;
    void RefreshDirButton_Click() override;
    void ReadAgain() override;
    void RefreshAfterDelete() override;
    void ResetFileHistory(bool withCurrent) override;

    // Opens a folder on the file of this name, or on its first row when the name is empty.
    void OpenFolder(const std::string& folder, const std::string& name);

    void ListClassOf(const std::string& path) override { m_filter.ListClassOf(path); }

    // What the pane says while it shows no picture.
    void ShowHint();

    void SelectAllButton_Click();
    void FileBackButton_Click();
    void FileFwdButton_Click();
    std::optional<int> MoveThroughViews(bool back) override;
    const ViewHistory& Views() const { return m_views; }
    void SetFilterShown(bool shown) override;
    void ShowWholeList() override;

    // The tree's selection event.
    void FolderTreeview1_Selection(const std::string& path);
    void FolderBackButton_Click();
    void FolderFwdButton_Click();
    void FolderUpButton_Click();
    void GotoCopyFolderButton_Click();

private:
    void ShowNamed(const std::string& name);
    void ShowView(std::optional<int> row);
    void GoToFolder(int entry);
    bool MoveTree(const std::string& folder);
    bool EnterFolder(const std::string& path);
    void LoadStartFolder();
    bool RecordSelection(int row);
    bool IsOutOfDate() const;
    void ShowChosenFile(const FileLook& look);
    void ShowVideo();
    void ShowPictureOrText(const FileLook& look);
    void SetHistoryButtons();
    void FilesAdded(const std::vector<int>& rows);

    Context& m;
    HistoryList m_historyList;
    ListFilter m_filter;
    ContextMenus m_menus;
    FindInList m_find;
    ListArrangement m_arrangement;
    ViewHistory m_views;
    std::string m_wanted;                  // name to select in the folder that is being entered
    PictureRequest m_request = Stepping(); // or that of the selection that code is making
    // A list may raise its event also for rows that are marked or unmarked.
    bool m_clearingMultiselect = false;
    bool m_selectingAll = false;
};

} // namespace tarn
