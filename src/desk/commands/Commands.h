// The switchboard: what one room may ask of another. A room implements its own interface itself; a
// test implements the one or two that its room rings.
#pragma once

#include "common/mark.h"
#include "common/mark_text.h"
#include "common/paths.h"
#include "desk/commands/Outcome.h"
#include "desk/commands/PictureRequest.h"
#include "imaging/StoredRaster.h"

#include <QPointF>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QPushButton;

namespace tarn {

class Changes;
struct JudgedFrame;
struct PictureFacts;

class NavigationCommands {
public:
    virtual ~NavigationCommands() = default;
    virtual void FileListBox_Click() = 0;
    // Raises FileListBox_Click; outside the list nothing.
    virtual void SelectRow(int row, const PictureRequest& request) = 0;
    void SelectRow(int row) { SelectRow(row, {}); }
    // So many rows on from `row`, or back, round the ends of the list; whatever was selected beside
    // it is so no more.
    virtual void StepFrom(int row, int by, const PictureRequest& request) = 0;
    virtual void StepBy(int rows, const PictureRequest& request) = 0; // from the current one
    void NextButton_Click() { StepBy(1, {}); }
    void PrevButton_Click() { StepBy(-1, {}); }
    virtual void ClearMultiselect() = 0;
    virtual void Update_Num_Files(int index) = 0;
    virtual void EnableListCommands() = 0;
    virtual void RefreshDirButton_Click() = 0;
    // The folder and, where it is no picture that stands well, the current file, too. A folder that
    // could not be shown is tried again.
    virtual void ReadAgain() = 0;
    // Files of the list are gone: the list anew; where the current one went, what is at its row
    // now.
    virtual void RefreshAfterDelete() = 0;
    // For a show, which shows it itself: the row of the view before or behind; none at the ends.
    virtual std::optional<int> MoveThroughViews(bool back) = 0;
    // The view history starts anew; with the current row as its first entry, or with none.
    virtual void ResetFileHistory(bool withCurrent) = 0;
    virtual void SetFilterShown(bool shown) = 0; // the filter window, if it is open
    virtual void ShowWholeList() = 0;            // what is found in it no longer narrows it
    // A file that no box lists: the box of its class is ticked.
    virtual void ListClassOf(const std::string& path) = 0;
};

// A ring upon the picture, in pixels of the file as it is stored, (0, 0) the centre of the first.
struct PictureRing {
    double x = 0;
    double y = 0;
    double radius = 0;
    int rgb = 0; // 0xRRGGBB
};

struct PictureRings {
    std::string path; // of the file that they belong to
    StoredRaster raster;
    std::vector<PictureRing> rings;
};

class DisplayCommands {
public:
    virtual ~DisplayCommands() = default;
    virtual void DisplayPicture(const PictureRequest& request) = 0;
    void DisplayPicture() { DisplayPicture({}); }
    virtual void ShowPreview() = 0;
    // No picture, clip or page: pane, panel, texts and picture windows are emptied, so that nothing
    // stands under another name. Filename and FileNameOnly stay.
    virtual void ShowNothing() = 0;
    virtual void Redraw() = 0;
    virtual void SetPictureCommands(bool enabled) = 0;
    virtual void RotateRightButton_Click() = 0;
    virtual void RotateLeftButton_Click() = 0;
    virtual void MirrorButton_Click() = 0;
    virtual void FlipButton_Click() = 0;
    virtual void ViewFull() = 0;
    virtual void OneToOneButton_Click() = 0;
    virtual void AdjustButton_Click() = 0; // the brightness window
    virtual void ResetBButton_Click() = 0;
    virtual void SetBrightness(int value) = 0; // -100 to 100, as if the slider moved there
    // So many steps closer, below 0 away, at a place of the pane; without one where the pointer is,
    // or in the middle.
    virtual void Zoom(int steps, std::optional<QPointF> at) = 0;
    void Zoom(int steps) { Zoom(steps, {}); }
    virtual bool MayPan() const = 0; // parts of the zoomed picture lie outside the pane
    virtual void Pan(QPointF way) = 0;
    // What the preview shows, turned and brightened, at its own size: the whole picture, its cut at
    // 1x and 2x, or what is seen of it while it is zoomed.
    virtual ImgX ShownPicture() = 0;
    // Upon pane and 1:1 window as long as that file is shown; without rings none.
    virtual void ShowRings(const PictureRings& rings) = 0;
};

class InfoCommands {
public:
    virtual ~InfoCommands() = default;
    virtual void ReadPictureInfo(const PictureFacts& facts) = 0; // of the current file
    virtual Outcome SetFileDatesButton_Click() = 0;              // done: the times were set
};

// What the last loading of a note had to say, and which one that was.
struct NoteLoad {
    int number = 0;
    std::string word;
};

class NotesCommands {
public:
    virtual ~NotesCommands() = default;
    // From its file; what was being written goes into the restore buffer.
    virtual void ReloadNote() = 0;
    virtual void SetNotesFilename() = 0;
    virtual NoteLoad LastLoad() = 0;
    virtual Outcome SaveNote() = 0;
    virtual void SaveNotesButton_Click() = 0;
    virtual void RestoreNotesButton_Click() = 0;
    virtual void DeleteNotesButton_Click() = 0;
    virtual void SetSaveCommands() = 0; // on when there is something to save and a place for it
    // What is being written for the current file goes into its note; done also when there is
    // nothing.
    virtual Outcome SaveIfUnsaved() = 0;
    virtual void NoteFilesChanged() = 0; // files came into or left the notes folder
    // The saved note of any picture, empty when it has none; box and restore buffer are left alone.
    virtual std::string SavedNoteOf(const std::string& picture) = 0;
    virtual std::string NoteTextOf(const std::string& picture) = 0; // with what is being written
    // The note file's own bytes, at most 8000, as they are; empty when it has none.
    virtual std::string NoteBytesOf(const std::string& picture) = 0;
    virtual std::string UnsavedText() = 0; // what the box holds and no note has; empty: nothing
};

// What is to become of the mark of one file.
struct MarkWish {
    std::string path;
    MarkChange change;
};

// Marks stand in sidecars beside the pictures. They are read and written in the background; no call
// here but MarksOnDisk and Flush asks the disk.
class MarkCommands {
public:
    virtual ~MarkCommands() = default;
    // The mark of a file of the folder shown, with what is still to be written; none: not read yet.
    virtual std::optional<Mark> MarkOf(const std::string& path) = 0;
    // Of any files, in their order; asks the disk. One whose sidecar cannot be read has none.
    virtual std::vector<Mark> MarksOnDisk(const std::vector<std::string>& paths) = 0;
    virtual bool AllRead() = 0;   // of the files of the list
    virtual bool AnyMarked() = 0; // of the files of the list, as far as they are read
    // What is kept in the state folder, since its sidecar cannot be written.
    virtual std::optional<MarkChange> KeptAside(const std::string& path) = 0;
    // Marks as one command, which can be taken back; `what` says it ("Reject 31 frames"). Seen at
    // once, on the disk and in the history within a second. Also of files of other folders.
    virtual void MarkFiles(const std::string& what, const std::vector<MarkWish>& wishes) = 0;
    void MarkFiles(const std::vector<std::string>& paths, const MarkChange& change) {
        std::vector<MarkWish> wishes;
        for (const std::string& path : paths) wishes.push_back({path, change});
        const std::string which = paths.size() == 1
                                      ? " '" + LastPart(paths.front()) + "'"
                                      : " - " + std::to_string(paths.size()) + " files";
        MarkFiles(SaidOfChange(change) + which, wishes);
    }
    // What the last of these said that is not yet in the history; empty: all are.
    virtual std::string CommandToCome() = 0;
    // No command of its own: a part of another one, or what was taken back. A change of nothing
    // drops what is kept aside.
    virtual void SetMarks(const std::vector<MarkWish>& wishes) = 0;
    void SetMarks(const std::vector<std::string>& paths, const MarkChange& change) {
        std::vector<MarkWish> wishes;
        for (const std::string& path : paths) wishes.push_back({path, change});
        SetMarks(wishes);
    }
    // What is set is on the disk, or kept aside: ahead of a command that touches files. Refused
    // where the disk takes long and the user does not wait for it.
    virtual Outcome Flush() = 0;
    virtual void SidecarsChanged() = 0; // a command has moved some: they are read again
    // Called when marks have come or changed; in the order of following.
    virtual void Follow(std::function<void()> follower) = 0;
};

// The frames of the folder shown, measured and judged in the background as long as any wants them.
class NightCommands {
public:
    virtual ~NightCommands() = default;
    virtual void WantFrames(const void* by, bool wanted) = 0;
    // A picture of the folder, also one that the list leaves out; null: not measured yet, or nobody
    // wants them. Good until the next event.
    virtual const JudgedFrame* FrameOf(const std::string& path) = 0;
    virtual bool AllMeasured() = 0;          // and judged; also where measuring was cancelled
    virtual std::string MeasuringSaid() = 0; // "12 of 300 measured"; empty: all are
    // Called when more is known; in the order of following.
    virtual void FollowFrames(std::function<void()> follower) = 0;
};

class SlideCommands {
public:
    virtual ~SlideCommands() = default;
    virtual void SlideDone() = 0;             // ends a show that runs; may come twice
    virtual void SlideKeyUp(int keycode) = 0; // as from the slide window's own keys
    virtual void ShowSlideAgain() = 0;        // the brightness has changed
    // The show of two pictures, of which the first, that of row `stays`, stays.
    virtual void CompareRows(int stays, int other) = 0;
};

struct CopyOutcome : Outcome {
    // Empty after a good copy, else why the last one failed; a refusal leaves it as it was.
    std::string copyOk;
};

// Copies of pictures: into the copy-to folder, converted, as text.
class CopyCommands {
public:
    virtual ~CopyCommands() = default;
    // Filename into the copy-to folder, as it is or converted.
    virtual CopyOutcome CopyImage() = 0;
    virtual CopyOutcome CopyImageIn(Changes& command) = 0; // as a part of another command
    virtual Outcome CMImage() = 0;
    virtual void SetCaptionShown(bool shown) = 0; // the caption window, if it is open
    virtual void FolderChanged() = 0;             // the list shows another folder
};

// Files that are to go into a folder.
struct FolderDrop {
    std::vector<std::string> paths; // of one folder
    std::string folder;
    bool copy = false; // else they are moved
};

// Filename and its note: away, under another name, twice. Each refreshes the list. Those that ask
// for a name are done when the question stands; what is answered there tells the rest.
class FileCommands {
public:
    virtual ~FileCommands() = default;
    virtual Outcome DeleteButton_Click() = 0;     // into the wastebasket, asked where that is due
    virtual Outcome DeleteOnlyButton_Click() = 0; // the note stays
    virtual Outcome RenameButton_Click() = 0;
    virtual Outcome DuplicateButton_Click() = 0;
    // Their notes come along; asks once about what stands there.
    virtual Outcome PutFiles(const FolderDrop& drop) = 0;
    virtual Outcome MakeFolder(const std::string& in) = 0; // asks for its name
};

// Thumbnails of the folder shown, in the size and sub folder that are set.
using ThumbnailTold = std::function<void(const std::string& message)>;
class ThumbnailCommands {
public:
    virtual ~ThumbnailCommands() = default;
    // One for each picture of the list; asks before it overwrites where that is due. With
    // `updateOnly` those that stand are kept. `told` (may be empty) gets the progress, as the
    // message line does. A modal window brings its own cancel button.
    virtual Outcome GenerateThumbnails(bool updateOnly, const ThumbnailTold& told,
                                       QPushButton* ownCancel) = 0;
    // "T120_m31.tif" of a picture's name or path.
    virtual std::string ThumbnailNameOf(const std::string& picture) = 0;
    // Where they are; empty when the sub folder's name leads out of the folder shown.
    virtual std::string ThumbnailFolderPath() = 0;
};

class VideoCommands {
public:
    virtual ~VideoCommands() = default;
    // Of the request the keyboard alone counts.
    virtual void ShowVideoFile(const PictureRequest& request) = 0;
    void ShowVideoFile() { ShowVideoFile({}); }
    virtual void CloseVideoClip() = 0;                        // an open clip, if there is one
    virtual void Load_web(const PictureRequest& request) = 0; // a page or a text
    void Load_web() { Load_web({}); }
};

// The window as a whole: what no room owns.
class ShellCommands {
public:
    virtual ~ShellCommands() = default;
    // The keyboard goes to the pane that is up; a show or a batch that runs keeps it.
    virtual void FocusPane() = 0;
    // The texts beside the picture, as they stand on the desk: rows of the camera data, sizes, the
    // caption of the edit button.
    virtual void ShowFileTexts() = 0;
    virtual void SetBusy(bool busy) = 0;             // hourglass; each true needs its false
    virtual void SetDeletePointer(bool deletes) = 0; // the same, while a file is deleted
    // What a verb answered with; where it has nothing to say, what stands stays.
    void Tell(const Outcome& outcome) {
        if (!outcome.text.empty()) ShowMessage(outcome.text);
        if (!outcome.fault.empty()) ShowError(outcome.fault);
        if (!outcome.faults.empty()) ShowFaults(outcome.text, outcome.faults);
    }
    virtual void ShowMessage(const std::string&) = 0;     // the message line, FileDateText
    virtual void ShowIfNoMessage(const std::string&) = 0; // the same, unless a text stands there
    // A batch has ended: which files failed and why, in a window that takes no keyboard; none puts
    // it away.
    virtual void ShowFaults(const std::string& text, const std::vector<FileFault>& faults) = 0;
    virtual void ShowStatus(const std::string&) = 0; // the status bar
    virtual void ShowError(const std::string&) = 0;  // Label_error; empty hides it
    virtual void SetListCommands(bool enabled) = 0;  // slides and note saving need a list
    // The help window on a page: 1 navigation, 2 slides, 3 size window, 4 1:1, 5 two and four
    // pictures.
    virtual void ShowHelpPage(int page) = 0;
    virtual void SetMainShown(bool shown) = 0; // hidden while a show runs
    virtual bool MainMinimised() = 0;
    virtual void SetMainMinimised(bool minimised) = 0; // false: restored
};

} // namespace tarn
