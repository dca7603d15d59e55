// Rooms and outside that write down what they are asked, one line a call.
#pragma once

#include "desk/commands/Commands.h"
#include "imaging/ImgX.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "platform/Sound.h"
#include "sky/judging/JudgedFrame.h"
#include "widgets/Dialogs.h"
#include "widgets/printing/PageSizes.h"
#include "widgets/printing/RecordedPaper.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tarn::testing {

using Calls = std::vector<std::string>;

struct Recorder {
    explicit Recorder(Calls& written) : calls(written) {}
    void Write(const std::string& call) { calls.push_back(call); }
    Calls& calls;
};

struct RecordingDisplay : DisplayCommands, Recorder {
    using Recorder::Recorder;
    void DisplayPicture(const PictureRequest& request) override {
        Write("DisplayPicture");
        requested = request;
    }
    PictureRequest requested;
    void ShowPreview() override { Write("ShowPreview"); }
    void ShowNothing() override { Write("ShowNothing"); }
    void Redraw() override { Write("Redraw"); }
    void SetPictureCommands(bool on) override { Write(on ? "commands on" : "commands off"); }
    void RotateRightButton_Click() override { Write("RotateRight"); }
    void RotateLeftButton_Click() override { Write("RotateLeft"); }
    void MirrorButton_Click() override { Write("Mirror"); }
    void FlipButton_Click() override { Write("Flip"); }
    void ViewFull() override { Write("ViewFull"); }
    void OneToOneButton_Click() override { Write("OneToOne"); }
    void AdjustButton_Click() override { Write("Adjust"); }
    void ResetBButton_Click() override { Write("ResetB"); }
    void SetBrightness(int value) override { Write("brightness " + std::to_string(value)); }
    void Zoom(int steps, std::optional<QPointF> at) override {
        Write("zoom " + std::to_string(steps) + (at ? Place(*at) : ""));
    }
    bool MayPan() const override { return zoomed; }
    void Pan(QPointF way) override { Write("pan" + Place(way)); }
    static std::string Place(QPointF at) {
        return " " + std::to_string(int(at.x())) + "," + std::to_string(int(at.y()));
    }
    bool zoomed = false;
    ImgX ShownPicture() override { return shown; }
    ImgX shown;
    void ShowRings(const PictureRings& rings) override {
        Write("rings " + std::to_string(rings.rings.size()));
    }
};

struct RecordingNavigation : NavigationCommands, Recorder {
    using Recorder::Recorder;
    void FileListBox_Click() override { Write("FileListBox_Click"); }
    void SelectRow(int, const PictureRequest&) override { Write("SelectRow"); }
    void StepFrom(int row, int by, const PictureRequest&) override {
        Write("step from " + std::to_string(row) + " by " + std::to_string(by));
    }
    void StepBy(int rows, const PictureRequest& request) override {
        requested = request;
        Write(rows == 1 ? "Next" : rows == -1 ? "Prev" : "step by " + std::to_string(rows));
        if (onStep) onStep();
    }
    void ClearMultiselect() override { Write("ClearMultiselect"); }
    void Update_Num_Files(int) override { Write("Update_Num_Files"); }
    void EnableListCommands() override { Write("EnableListCommands"); }
    void RefreshDirButton_Click() override { Write("RefreshDir"); }
    void ReadAgain() override { Write("ReadAgain"); }
    void RefreshAfterDelete() override { Write("RefreshAfterDelete"); }
    std::optional<int> MoveThroughViews(bool back) override {
        Write(back ? "view back" : "view forward");
        return {};
    }
    void SetFilterShown(bool shown) override { Write(shown ? "filter up" : "filter down"); }
    void ListClassOf(const std::string& path) override { Write("list class of " + path); }
    PictureRequest requested; // with the last step
    std::function<void()> onStep;
    void ShowWholeList() override {}
    void ResetFileHistory(bool with) override {
        Write(with ? "history with row" : "history empty");
    }
};

struct RecordingVideo : VideoCommands, Recorder {
    using Recorder::Recorder;
    void ShowVideoFile(const PictureRequest&) override { Write("ShowVideoFile"); }
    void CloseVideoClip() override { Write("CloseVideoClip"); }
    void Load_web(const PictureRequest&) override { Write("Load_web"); }
};

struct RecordingShell : ShellCommands, Recorder {
    using Recorder::Recorder;
    void ShowFileTexts() override {}
    void FocusPane() override { Write("FocusPane"); }
    void SetBusy(bool busy) override { Write(busy ? "busy" : "ready"); }
    void SetDeletePointer(bool on) override { Write(on ? "deleting" : "deleted"); }
    void ShowMessage(const std::string& text) override { Write("message " + text); }
    void ShowFaults(const std::string&, const std::vector<FileFault>& faults) override {
        for (const FileFault& fault : faults) Write("fault " + fault.path + " - " + fault.why);
    }
    void ShowIfNoMessage(const std::string& text) override { Write("message if none " + text); }
    void ShowStatus(const std::string& text) override { Write("status " + text); }
    void ShowError(const std::string& text) override { Write("error " + text); }
    void SetListCommands(bool on) override { Write(on ? "list on" : "list off"); }
    void ShowHelpPage(int page) override { Write("help " + std::to_string(page)); }
    void SetMainShown(bool shown) override { Write(shown ? "main up" : "main down"); }
    bool MainMinimised() override { return minimised; }
    void SetMainMinimised(bool small) override {
        Write(small ? "main minimised" : "main restored");
        minimised = small;
    }
    bool minimised = false;
};

struct RecordingInfo : InfoCommands, Recorder {
    using Recorder::Recorder;
    void ReadPictureInfo(const PictureFacts&) override { Write("ReadPictureInfo"); }
    Outcome SetFileDatesButton_Click() override {
        Write("SetFileDates");
        return Outcome::Did();
    }
};

struct RecordingNotes : NotesCommands, Recorder {
    using Recorder::Recorder;
    void ReloadNote() override { Write("ReloadNote"); }
    void SetNotesFilename() override { Write("SetNotesFilename"); }
    NoteLoad LastLoad() override { return {}; }
    Outcome SaveNote() override {
        Write("SaveNote");
        return Outcome::Did();
    }
    void SaveNotesButton_Click() override { Write("SaveNotesButton"); }
    void RestoreNotesButton_Click() override { Write("RestoreNotesButton"); }
    void DeleteNotesButton_Click() override { Write("DeleteNotesButton"); }
    Outcome SaveIfUnsaved() override {
        Write("SaveIfUnsaved");
        return Outcome::Did();
    }
    void SetSaveCommands() override { Write("SetSaveCommands"); }
    void NoteFilesChanged() override { Write("NoteFilesChanged"); }
    std::string SavedNoteOf(const std::string&) override { return note; }
    std::string NoteTextOf(const std::string&) override { return unsaved.empty() ? note : unsaved; }
    std::string NoteBytesOf(const std::string&) override { return {}; }
    std::string UnsavedText() override { return unsaved; }
    std::string note;
    std::string unsaved;
};

struct RecordingMarks : MarkCommands, Recorder {
    using Recorder::Recorder;
    std::optional<Mark> MarkOf(const std::string& path) override {
        const auto at = marks.find(path);
        return at == marks.end() ? Mark() : at->second;
    }
    bool AllRead() override { return true; }
    bool AnyMarked() override { return !marks.empty(); }
    std::vector<Mark> MarksOnDisk(const std::vector<std::string>& paths) override {
        return std::vector<Mark>(paths.size());
    }
    std::optional<MarkChange> KeptAside(const std::string& path) override {
        const auto at = kept.find(path);
        return at == kept.end() ? std::nullopt : std::optional(at->second);
    }
    using MarkCommands::MarkFiles;
    void MarkFiles(const std::string&, const std::vector<MarkWish>& wishes) override {
        SetMarks(wishes);
    }
    std::string CommandToCome() override { return {}; }
    using MarkCommands::SetMarks;
    void SetMarks(const std::vector<MarkWish>& wishes) override {
        for (const MarkWish& wish : wishes)
            marks[wish.path] = Changed(marks[wish.path], wish.change);
    }
    Outcome Flush() override { return Outcome::Did(); }
    void SidecarsChanged() override {}
    void Follow(std::function<void()>) override {}
    std::map<std::string, Mark> marks;      // by path
    std::map<std::string, MarkChange> kept; // aside
};

struct RecordingNight : NightCommands {
    void WantFrames(const void* by, bool wanted) override {
        if (wanted)
            wanting.insert(by);
        else
            wanting.erase(by);
    }
    const JudgedFrame* FrameOf(const std::string& path) override {
        const auto at = frames.find(path);
        return at == frames.end() ? nullptr : &at->second;
    }
    bool AllMeasured() override { return said.empty(); }
    std::string MeasuringSaid() override { return said; }
    void FollowFrames(std::function<void()> follower) override {
        followers.push_back(std::move(follower));
    }
    void Tell() const {
        for (const auto& follower : followers) follower();
    }
    std::string said; // of what is still to be measured
    std::set<const void*> wanting;
    std::map<std::string, JudgedFrame> frames; // by path
    std::vector<std::function<void()>> followers;
};

struct RecordingSlides : SlideCommands, Recorder {
    using Recorder::Recorder;
    void SlideDone() override { Write("SlideDone"); }
    void SlideKeyUp(int key) override { Write("SlideKeyUp " + std::to_string(key)); }
    void ShowSlideAgain() override { Write("slide again"); }
    void CompareRows(int stays, int other) override {
        Write("compare " + std::to_string(stays) + " with " + std::to_string(other));
    }
};

struct RecordingCopies : CopyCommands, Recorder {
    using Recorder::Recorder;
    CopyOutcome CopyImage() override {
        Write("CopyImage");
        return answer;
    }
    CopyOutcome CopyImageIn(Changes&) override { return CopyImage(); }
    Outcome CMImage() override {
        Write("CMImage");
        return answer;
    }
    void SetCaptionShown(bool shown) override { Write(shown ? "caption up" : "caption down"); }
    void FolderChanged() override {}
    CopyOutcome answer{Outcome::Did(), {}};
};

struct RecordingFileCommands : FileCommands, Recorder {
    using Recorder::Recorder;
    Outcome DeleteButton_Click() override { return Answer("Delete"); }
    Outcome DeleteOnlyButton_Click() override { return Answer("DeleteOnly"); }
    Outcome RenameButton_Click() override { return Answer("Rename"); }
    Outcome DuplicateButton_Click() override { return Answer("Duplicate"); }
    Outcome PutFiles(const FolderDrop& drop) override {
        std::string call = drop.copy ? "copy" : "move";
        for (const std::string& path : drop.paths) call += " " + path;
        return Answer(call + " to " + drop.folder);
    }
    Outcome MakeFolder(const std::string& in) override { return Answer("folder in " + in); }
    Outcome Answer(const std::string& call) {
        Write(call);
        return Outcome::Did();
    }
};

struct RecordingThumbnails : ThumbnailCommands, Recorder {
    using Recorder::Recorder;
    Outcome GenerateThumbnails(bool updateOnly, const ThumbnailTold&, QPushButton*) override {
        Write(updateOnly ? "thumbnails updated" : "thumbnails");
        return Outcome::Did("0 thumbnails");
    }
    std::string ThumbnailNameOf(const std::string& picture) override {
        return "T120_" + picture.substr(picture.rfind('/') + 1);
    }
    std::string ThumbnailFolderPath() override { return folder; }
    std::string folder;
};

struct RecordingSound : Sound, Recorder {
    using Recorder::Recorder;
    void Play(const std::string& name) override { Write("play " + name); }
    void PlayAndWait(const std::string& name) override { Write("play out " + name); }
};

struct RecordingDesktop : Desktop, Recorder {
    using Recorder::Recorder;
    std::string StartProgram(const std::string& program, const std::string& path) override {
        return Done("start " + program + " " + path);
    }
    std::string OpenAssociated(const std::string& path) override { return Done("open " + path); }
    std::string EditText(const std::string& path) override { return Done("edit " + path); }
    std::string ShowInFileManager(const std::string& folder, const std::string& file) override {
        return Done("manager " + folder + " " + file);
    }
    void HoldAwake(bool hold) override { Write(hold ? "awake" : "may sleep"); }
    std::string Done(const std::string& call) {
        Write(call);
        return failure;
    }
    std::string failure;
};

// Prints into PDF files and keeps what was recorded for them; a printer has no file.
struct RecordingPrinting : Printing {
    explicit RecordingPrinting(Files& disk) : files(disk) {}
    struct Watched : RecordedPaper {
        Watched(RecordingPrinting& owner, const PrinterChoice& choice)
            : RecordedPaper(InTwips(PageSizeOf(choice.paper), choice.landscape), 300), m(owner),
              pdf(choice.toFile ? choice.pdf : std::string()) {}
        bool End(std::string* error) override {
            m.pages = Pages();
            return pdf.empty() || WritePdf(m.files, pdf, PageSize(), Pages(), error);
        }
        void Kill() override {
            ++m.killed;
            RecordedPaper::Kill();
        }
        RecordingPrinting& m;
        std::string pdf;
    };
    std::unique_ptr<Printer> Open(const PrinterChoice& choice) override {
        return std::make_unique<Watched>(*this, choice);
    }
    Files& files;
    std::vector<PaperPage> pages;
    int killed = 0;
};

// Answers from a list, first come first served; an empty list cancels.
struct ScriptedDialogs : Dialogs {
    std::function<void()> onMessage;
    std::function<void()> onAsk; // while the question stands

    void Message(Icon, const std::string& title, const std::string& text) override {
        shown.push_back(title + "|" + text);
        if (onMessage) onMessage();
    }
    bool Confirm(Icon, const std::string& title, const std::string& text) override {
        return !Ask(title + "|" + text).empty();
    }
    int Choose(Icon, const std::string& title, const std::string& text,
               const std::vector<std::string>& buttons) override {
        const std::string answer = Ask(title + "|" + text);
        for (std::size_t i = 0; i < buttons.size(); ++i)
            if (buttons[i] == answer) return static_cast<int>(i);
        return static_cast<int>(buttons.size()) - 1;
    }
    std::string AskText(const std::string& title, const std::string& label,
                        const std::string&) override {
        return Ask(title + "|" + label);
    }
    std::string OpenFile(const std::string& title, const std::string&,
                         const std::string&) override {
        return Ask(title);
    }
    std::string ChooseFolder(const std::string& title, const std::string&) override {
        return Ask(title);
    }
    std::string SaveFile(const std::string& title, const std::string&,
                         const std::string&) override {
        return Ask(title);
    }
    std::string ChooseTarget(const std::string& title, const std::string&, const std::string&,
                             const std::string&) override {
        return Ask(title);
    }
    std::optional<int> ChooseColor(const std::string& title, int) override {
        const std::string answer = Ask(title);
        return answer.empty() ? std::nullopt : std::optional<int>(std::stoi(answer));
    }
    bool ChooseFont(const std::string& title, std::string& name, int& size) override {
        const std::string answer = Ask(title);
        if (answer.empty()) return false;
        name = answer;
        size = 12;
        return true;
    }
    // An answer that is a path prints into that file, "printer NAME" on that printer.
    bool ChoosePrinter(PrintQuestion& question) override {
        asked = question.choice;
        const std::string answer = Ask(question.setup ? "printer set-up" : "print");
        if (answer.empty()) return false;
        question.choice.toFile = answer.front() == '/';
        (question.choice.toFile ? question.choice.pdf : question.choice.printer) = answer;
        return true;
    }
    PrinterChoice asked;
    std::string Ask(const std::string& question) {
        shown.push_back(question);
        if (onAsk) onAsk();
        if (answers.empty()) return {};
        std::string answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    }
    std::vector<std::string> answers;
    Calls shown;
};

} // namespace tarn::testing
