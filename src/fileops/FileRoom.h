// Commands on the current picture and its note: away into the wastebasket, another name, a second
// one; the FITS files of a folder; a new folder; and the last of these taken back.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "fileops/CopyPaste.h"
#include "fileops/PicturePlan.h"
#include "history/History.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarn {

class Worker;
class frmHistory;
class frmNewName;
class frmRenameFiles;
struct NewNameTexts;

class FileRoom : public FileCommands, public Room {
public:
    explicit FileRoom(Context& context);
    ~FileRoom() override;

    void ConnectControls() override;
    void Started() override;
    void End() override;

    Outcome DeleteButton_Click() override;
    Outcome DeleteOnlyButton_Click() override;
    Outcome RenameButton_Click() override;
    Outcome DuplicateButton_Click() override;
    Outcome PutFiles(const FolderDrop& drop) override;
    Outcome MakeFolder(const std::string& in) override;

    Outcome DeletePicButton_Click();
    void DeleteAllFitsButton_Click();
    void MoveToButton_Click();
    void RenamePicturesButton_Click();
    void UndoButton_Click();
    void RedoButton_Click();

    // For the other commands of the room.
    NotesPlace Notes() const;

private:
    Outcome DeleteCurrent(bool withNote, bool ask);
    Outcome Delete(const DeletePlan& plan, bool ask, const std::string& verb, Changes& changes);
    bool AskDelete(const DeletePlan& plan);
    Outcome ThrowPicture(const std::string& path, Changes& changes);
    int RowOf(const std::string& path) const;
    void ShowFromRow(int row);
    void ShowFromRow(const std::function<int()>& rowOf); // asked when the list is read again
    // At most so many behind it, and so many ahead of it.
    std::vector<std::string> Following(int row, int most) const;
    void ShowNext(const std::vector<std::string>& following, int otherwise);
    void ShowNothing();

    Outcome KeepWritten();
    NewNamePlan Plan(const std::string& from, const std::string& newName) const;
    using CarryOutNewName = bool (*)(const NewNamePlan&, Changes&, std::string*, LeftBehind*);
    using NewNameCommand = Outcome (FileRoom::*)(const std::string& from,
                                                 const std::string& newName);
    Outcome AskNewName(std::unique_ptr<frmNewName>& form, const NewNameTexts& texts,
                       NewNameCommand act);
    bool CarryOut(CarryOutNewName way, const NewNamePlan& plan, const std::string& what,
                  Changes& changes, std::string* error, LeftBehind* left);
    Outcome Rename(const std::string& from, const std::string& newName);
    Outcome Duplicate(const std::string& from, const std::string& newName);
    void Show(const std::string& path, int otherwise);
    void ReadAgain(); // what the disk has now
    void ShowUndo();
    using Way = std::function<UndoResult(const GoOn&)>;
    void Turn(const CommandRow& row, const std::string& doing, const Way& way);
    void ShowTurned(const UndoResult& result, int row);
    void AskAboutBrokenOff();
    void Prune();
    void HistoryButton_Click();
    void ShowFile(const std::string& path);
    void RenamePicturesClosed();
    void ConnectMarks();
    // Files by their marks, or why there are none.
    struct ByMark {
        std::vector<std::string> paths;
        Outcome refusal;
    };
    ByMark FilesMarked(bool (*takes)(const Mark&), const std::string& kind) const;
    bool AskOfMarked(const std::string& title, const std::string& text);
    Outcome RejectedToWastebasket();
    Outcome RejectedIntoSubFolder();
    Outcome KeptToCopyFolder();
    Outcome ClearAllMarks();
    Outcome ThrowAll(const std::vector<std::string>& paths, Changes& changes);
    Outcome PutFilesIn(const FolderDrop& drop, Changes& changes);
    void SetMarksBack(const std::vector<MarkBack>& marks);
    std::string ThrowFits(const std::vector<std::string>& paths, Changes& changes,
                          std::size_t& thrown);

    bool AskGoOn(const std::string& text);
    Outcome KnowAllDone();

    Context& m;
    QObject m_here;              // what other threads have done is taken up in its own
    std::int64_t m_nextUndo = 0; // of the commands that the menu names; 0: none
    std::int64_t m_nextRedo = 0;
    std::string m_markToCome; // that the menu names
    CopyPaste m_copyPaste;
    std::string m_historyNotice; // that was told
    std::atomic<bool> m_prunesNoMore = false;
    std::unique_ptr<Worker> m_pruner;
    std::unique_ptr<frmHistory> m_historyWindow;
    std::unique_ptr<frmNewName> m_rename;    // frmRename
    std::unique_ptr<frmNewName> m_duplicate; // frmDuplicate
    std::unique_ptr<frmRenameFiles> m_renameFiles;
};

} // namespace tarn
