// Rooms and outside that write down what they are asked, one line a call.
#pragma once

#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/Sound.h"
#include "platform/imaging/ImgX.h"
#include "shell/commands/Commands.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn::testing {

using Calls = std::vector<std::string>;

struct RecordingDisplay : DisplayCommands {
    explicit RecordingDisplay(Calls& written) : calls(written) {}
    void DisplayPicture() override { calls.push_back("DisplayPicture"); }
    void ShowPreview() override { calls.push_back("ShowPreview"); }
    void ShowNothing() override { calls.push_back("ShowNothing"); }
    void UpdatePictureWindows() override { calls.push_back("UpdatePictureWindows"); }
    void Redraw() override { calls.push_back("Redraw"); }
    void SetPictureCommands(bool on) override {
        calls.push_back(on ? "commands on" : "commands off");
    }
    void RotateRightButton_Click() override { calls.push_back("RotateRight"); }
    void RotateLeftButton_Click() override { calls.push_back("RotateLeft"); }
    void MirrorButton_Click() override { calls.push_back("Mirror"); }
    void FlipButton_Click() override { calls.push_back("Flip"); }
    void ViewFull() override { calls.push_back("ViewFull"); }
    void OneToOneButton_Click() override { calls.push_back("OneToOne"); }
    void AdjustButton_Click() override { calls.push_back("Adjust"); }
    void ResetBButton_Click() override { calls.push_back("ResetB"); }
    void SetBrightness(int value) override {
        calls.push_back("brightness " + std::to_string(value));
    }
    ImgX ShownPicture() override { return shown; }
    ImgX shown;
    Calls& calls;
};

struct RecordingNavigation : NavigationCommands {
    explicit RecordingNavigation(Calls& written) : calls(written) {}
    void FileListBox_Click() override { calls.push_back("FileListBox_Click"); }
    void SelectRow(int) override { calls.push_back("SelectRow"); }
    void NextButton_Click() override { calls.push_back("Next"); }
    void PrevButton_Click() override { calls.push_back("Prev"); }
    void ClearMultiselect() override { calls.push_back("ClearMultiselect"); }
    void Update_Num_Files(int) override { calls.push_back("Update_Num_Files"); }
    void EnableListCommands() override { calls.push_back("EnableListCommands"); }
    void RefreshDirButton_Click() override { calls.push_back("RefreshDir"); }
    void RefreshAfterDelete() override { calls.push_back("RefreshAfterDelete"); }
    void FileBackButton_Click() override { calls.push_back("FileBack"); }
    void FileFwdButton_Click() override { calls.push_back("FileFwd"); }
    void SetFilterShown(bool shown) override {
        calls.push_back(shown ? "filter up" : "filter down");
    }
    void ResetFileHistory(bool with) override {
        calls.push_back(with ? "history with row" : "history empty");
    }
    Calls& calls;
};

struct RecordingVideo : VideoCommands {
    explicit RecordingVideo(Calls& written) : calls(written) {}
    void ShowVideoFile() override { calls.push_back("ShowVideoFile"); }
    void CloseVideoClip() override { calls.push_back("CloseVideoClip"); }
    void Load_web() override { calls.push_back("Load_web"); }
    Calls& calls;
};

struct RecordingShell : ShellCommands {
    explicit RecordingShell(Calls& written) : calls(written) {}
    void ShowPane(Pane pane) override {
        calls.push_back("ShowPane " + std::to_string(static_cast<int>(pane)));
        if (onPane) onPane(pane);
    }
    void FocusPane() override { calls.push_back("FocusPane"); }
    void SetBusy(bool busy) override { calls.push_back(busy ? "busy" : "ready"); }
    void SetDeletePointer(bool on) override { calls.push_back(on ? "deleting" : "deleted"); }
    void ShowMessage(const std::string& text) override { calls.push_back("message " + text); }
    void ShowStatus(const std::string& text) override { calls.push_back("status " + text); }
    void ShowError(const std::string& text) override { calls.push_back("error " + text); }
    void SetListCommands(bool on) override { calls.push_back(on ? "list on" : "list off"); }
    void ShowHelpPage(int page) override { calls.push_back("help " + std::to_string(page)); }
    void SetMainShown(bool shown) override { calls.push_back(shown ? "main up" : "main down"); }
    bool MainMinimised() override { return minimised; }
    void SetMainMinimised(bool small) override {
        calls.push_back(small ? "main minimised" : "main restored");
        minimised = small;
    }
    Calls& calls;
    bool minimised = false;
    std::function<void(Pane)> onPane;
};

struct RecordingInfo : InfoCommands {
    explicit RecordingInfo(Calls& written) : calls(written) {}
    void ReadPictureInfo() override { calls.push_back("ReadPictureInfo"); }
    bool SetFileDatesButton_Click() override {
        calls.push_back("SetFileDates");
        return true;
    }
    Calls& calls;
};

struct RecordingNotes : NotesCommands {
    explicit RecordingNotes(Calls& written) : calls(written) {}
    void CheckForNotes() override { calls.push_back("CheckForNotes"); }
    void SetNotesFilename() override { calls.push_back("SetNotesFilename"); }
    bool SaveNote() override {
        calls.push_back("SaveNote");
        return true;
    }
    void SaveNotesButton_Click() override { calls.push_back("SaveNotesButton"); }
    void ClearNotesForPage() override { calls.push_back("ClearNotesForPage"); }
    void RestoreNotesButton_Click() override { calls.push_back("RestoreNotesButton"); }
    void DeleteNotesButton_Click() override { calls.push_back("DeleteNotesButton"); }
    bool SaveIfUnsaved() override {
        calls.push_back("SaveIfUnsaved");
        return true;
    }
    void SetSaveCommands() override { calls.push_back("SetSaveCommands"); }
    void NoteFilesChanged() override { calls.push_back("NoteFilesChanged"); }
    std::string SavedNoteOf(const std::string&) override { return note; }
    std::string NoteTextOf(const std::string&) override { return unsaved.empty() ? note : unsaved; }
    std::string NoteBytesOf(const std::string&) override { return {}; }
    std::string UnsavedText() override { return unsaved; }
    Calls& calls;
    std::string note;
    std::string unsaved;
};

struct RecordingSlides : SlideCommands {
    explicit RecordingSlides(Calls& written) : calls(written) {}
    void SlideDone() override { calls.push_back("SlideDone"); }
    void SlideKeyUp(int key) override { calls.push_back("SlideKeyUp " + std::to_string(key)); }
    Calls& calls;
};

struct RecordingCopies : CopyCommands {
    explicit RecordingCopies(Calls& written) : calls(written) {}
    bool CopyImage() override {
        calls.push_back("CopyImage");
        return copies;
    }
    bool CMImage() override {
        calls.push_back("CMImage");
        return copies;
    }
    void SetCaptionShown(bool shown) override {
        calls.push_back(shown ? "caption up" : "caption down");
    }
    void FolderChanged() override {}
    void PictureShown() override {}
    Calls& calls;
    bool copies = true;
};

struct RecordingFileCommands : FileCommands {
    explicit RecordingFileCommands(Calls& written) : calls(written) {}
    void DeleteButton_Click() override { calls.push_back("Delete"); }
    void DeleteOnlyButton_Click() override { calls.push_back("DeleteOnly"); }
    void RenameButton_Click() override { calls.push_back("Rename"); }
    void DuplicateButton_Click() override { calls.push_back("Duplicate"); }
    Calls& calls;
};

struct RecordingThumbnails : ThumbnailCommands {
    explicit RecordingThumbnails(Calls& written) : calls(written) {}
    void GenerateThumbnails(bool updateOnly, const ThumbnailTold& told, QPushButton*) override {
        calls.push_back(updateOnly ? "thumbnails updated" : "thumbnails");
        if (told) told("0 thumbnails");
    }
    std::string ThumbnailNameOf(const std::string& picture) override {
        return "T120_" + picture.substr(picture.rfind('/') + 1);
    }
    std::string ThumbnailFolderPath() override { return folder; }
    void ThumbnailsDone() override { calls.push_back("ThumbnailsDone"); }
    Calls& calls;
    std::string folder;
};

struct RecordingSound : Sound {
    explicit RecordingSound(Calls& written) : calls(written) {}
    void Play(const std::string& name) override { calls.push_back("play " + name); }
    void PlayAndWait(const std::string& name) override { calls.push_back("play out " + name); }
    Calls& calls;
};

struct RecordingDesktop : Desktop {
    explicit RecordingDesktop(Calls& written) : calls(written) {}
    std::string StartProgram(const std::string& program, const std::string& path) override {
        calls.push_back("start " + program + " " + path);
        return failure;
    }
    std::string OpenAssociated(const std::string& path) override {
        calls.push_back("open " + path);
        return failure;
    }
    std::string EditText(const std::string& path) override {
        calls.push_back("edit " + path);
        return failure;
    }
    std::string ShowInFileManager(const std::string& folder, const std::string& file) override {
        calls.push_back("manager " + folder + " " + file);
        return failure;
    }
    void HoldAwake(bool hold) override { calls.push_back(hold ? "awake" : "may sleep"); }
    Calls& calls;
    std::string failure;
};

// Prints into PDF files and keeps what was recorded for them; a printer fails or has no file.
struct RecordingPrinting : Printing {
    explicit RecordingPrinting(Files& disk) : files(disk) {}
    struct Watched : Printer {
        Watched(RecordingPrinting& owner, const PrinterChoice& choice)
            : m(owner), real(MakePdfPrinter(owner.files, choice)) {}
        PaperSize PageSize() const override { return real->PageSize(); }
        double TextWidth(const PaperFont& f, std::string_view t) const override {
            return real->TextWidth(f, t);
        }
        double LineHeight(const PaperFont& f) const override { return real->LineHeight(f); }
        QSize PixelsFor(double w, double h) const override { return real->PixelsFor(w, h); }
        void Text(double x, double y, const PaperFont& f, std::string_view t) override {
            real->Text(x, y, f, t);
        }
        void Rule(double x, double y, double toX) override { real->Rule(x, y, toX); }
        void Box(const PaperBox& box) override { real->Box(box); }
        void Picture(const PaperBox& place, const QImage& picture) override {
            real->Picture(place, picture);
        }
        void NewPage() override { real->NewPage(); }
        const std::vector<PaperPage>& Pages() const override { return real->Pages(); }
        bool End(std::string* error) override {
            m.pages = real->Pages();
            *error = m.failure;
            return m.failure.empty() && (!m.intoFiles || real->End(error));
        }
        void Kill() override {
            ++m.killed;
            real->Kill();
        }
        RecordingPrinting& m;
        std::unique_ptr<Printer> real;
    };
    std::unique_ptr<Printer> Open(const PrinterChoice& choice) override {
        opened = choice;
        intoFiles = choice.toFile;
        return std::make_unique<Watched>(*this, choice);
    }
    Files& files;
    PrinterChoice opened;
    bool intoFiles = false;
    std::string failure; // of the next printers
    std::vector<PaperPage> pages;
    int killed = 0;
};

// Answers from a list, first come first served; an empty list cancels.
struct ScriptedDialogs : Dialogs {
    std::function<void()> onMessage;

    void Message(Icon, const std::string& title, const std::string& text) override {
        shown.push_back(title + "|" + text);
        if (onMessage) onMessage();
    }
    bool Confirm(Icon, const std::string& title, const std::string& text) override {
        shown.push_back(title + "|" + text);
        return !Next().empty();
    }
    int Choose(Icon, const std::string& title, const std::string& text,
               const std::vector<std::string>& buttons) override {
        shown.push_back(title + "|" + text);
        const std::string answer = Next();
        for (std::size_t i = 0; i < buttons.size(); ++i)
            if (buttons[i] == answer) return static_cast<int>(i);
        return static_cast<int>(buttons.size()) - 1;
    }
    std::string AskText(const std::string& title, const std::string& label,
                        const std::string&) override {
        shown.push_back(title + "|" + label);
        return Next();
    }
    std::string OpenFile(const std::string& title, const std::string&,
                         const std::string&) override {
        shown.push_back(title);
        return Next();
    }
    std::string ChooseFolder(const std::string& title, const std::string&) override {
        shown.push_back(title);
        return Next();
    }
    std::string SaveFile(const std::string& title, const std::string&,
                         const std::string&) override {
        shown.push_back(title);
        return Next();
    }
    std::string ChooseTarget(const std::string& title, const std::string&, const std::string&,
                             const std::string&) override {
        shown.push_back(title);
        return Next();
    }
    std::optional<int> ChooseColor(const std::string& title, int) override {
        shown.push_back(title);
        const std::string answer = Next();
        return answer.empty() ? std::nullopt : std::optional<int>(std::stoi(answer));
    }
    bool ChooseFont(const std::string& title, std::string& name, int& size) override {
        shown.push_back(title);
        const std::string answer = Next();
        if (answer.empty()) return false;
        name = answer;
        size = 12;
        return true;
    }
    // An answer that is a path prints into that file, "printer NAME" on that printer.
    bool ChoosePrinter(PrintQuestion& question) override {
        shown.push_back(question.setup ? "printer set-up" : "print");
        asked = question.choice;
        const std::string answer = Next();
        if (answer.empty()) return false;
        question.choice.toFile = answer.front() == '/';
        (question.choice.toFile ? question.choice.pdf : question.choice.printer) = answer;
        if (onPrinter) onPrinter(question.choice);
        return true;
    }
    PrinterChoice asked;
    std::function<void(PrinterChoice&)> onPrinter;
    std::string Next() {
        if (answers.empty()) return {};
        std::string answer = answers.front();
        answers.erase(answers.begin());
        return answer;
    }
    std::vector<std::string> answers;
    Calls shown;
};

} // namespace tarn::testing
