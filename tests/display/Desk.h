// Everything the display room is given: the real controls and files, and other rooms that write
// down what they are asked.
#pragma once

#include "PictureFiles.h"
#include "support/TestFolder.h"

#include "common/paths.h"
#include "display/DisplayRoom.h"
#include "platform/Dialogs.h"
#include "platform/EventPump.h"
#include "platform/FileListBox.h"
#include "platform/Files.h"
#include "platform/PictureBox.h"
#include "platform/SettingsStore.h"
#include "platform/Sound.h"

#include <QMenuBar>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarn::testing {

using Calls = std::vector<std::string>;

class OtherRooms : public NavigationCommands,
                   public InfoCommands,
                   public NotesCommands,
                   public VideoCommands,
                   public ShellCommands,
                   public Sound {
public:
    Calls calls;
    std::function<void()> whenRead; // what the reader of camera data finds

    void FileListBox_Click() override { calls.push_back("FileListBox_Click"); }
    void SelectRow(int) override { calls.push_back("SelectRow"); }
    void NextButton_Click() override { calls.push_back("NextButton_Click"); }
    void PrevButton_Click() override { calls.push_back("PrevButton_Click"); }
    void ClearMultiselect() override { calls.push_back("ClearMultiselect"); }
    void Update_Num_Files(int) override { calls.push_back("Update_Num_Files"); }
    void EnableListCommands() override { calls.push_back("EnableListCommands"); }
    void RefreshDirButton_Click() override { calls.push_back("RefreshDirButton_Click"); }
    void ResetFileHistory(bool with) override { Add("ResetFileHistory", with ? "with" : ""); }

    void ReadPictureInfo() override {
        calls.push_back("ReadPictureInfo");
        if (whenRead) whenRead();
    }
    void SetFileDatesButton_Click() override { calls.push_back("SetFileDates"); }
    void CheckForNotes() override { calls.push_back("CheckForNotes"); }
    void ShowVideoFile() override { calls.push_back("ShowVideoFile"); }
    void CloseVideoClip() override { calls.push_back("CloseVideoClip"); }
    void Load_web() override { calls.push_back("Load_web"); }

    void ShowPane(Pane) override { calls.push_back("ShowPane"); }
    void FocusPane() override { calls.push_back("FocusPane"); }
    void SetBusy(bool busy) override { calls.push_back(busy ? "busy" : "ready"); }
    void ShowMessage(const std::string& text) override { Add("message", text); }
    void ShowStatus(const std::string& text) override { Add("status", text); }
    void ShowError(const std::string& text) override { Add("error", text); }
    void SetListCommands(bool) override { calls.push_back("SetListCommands"); }
    void Play(const std::string& name) override { Add("play", name); }

private:
    void Add(const std::string& what, const std::string& text) {
        calls.push_back(text.empty() ? what : what + " " + text);
    }
};

// The room itself, writing down what it asks of itself by its interface.
class WatchedRoom : public DisplayRoom {
public:
    WatchedRoom(Context& context, Calls& calls) : DisplayRoom(context), m_calls(calls) {}
    void SetPictureCommands(bool enabled) override {
        m_calls.push_back(enabled ? "commands on" : "commands off");
        DisplayRoom::SetPictureCommands(enabled);
    }
    void OneToOneButton_Click() override { m_calls.push_back("OneToOneButton_Click"); }

private:
    Calls& m_calls;
};

struct Desk {
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    std::unique_ptr<SettingsStore> settings = MakeSettingsStore(folder.Path() + "/.settings.ini");
    std::unique_ptr<EventPump> events = MakeEventPump();
    std::unique_ptr<Dialogs> dialogs = MakeDialogs();
    ProgramState state;
    QWidget window;
    QMenuBar bar{&window};
    MainControls controls;
    OtherRooms others;
    WatchedRoom room{context, others.calls};
    Context context{state,  controls, others,    room,    others,   others, others,
                    others, *files,   *settings, *events, *dialogs, others};

    Desk() {
        MakeControls(controls, *files, [this](QWidget* widget, Place) {
            widget->setParent(&window);
            widget->hide(); // so that what the room shows stands out
        });
        MakeMenus(controls, bar, window);
        room.ConnectControls();
        state.PreviewWidth = 80;
        state.PreviewHeight = 50;
        state.FormLoadDone = true;
    }

    // Writes the file, makes it the current row of the list and shows it.
    void Show(const std::string& name, const std::string& bytes) {
        Choose(name, bytes);
        others.calls.clear();
        room.DisplayPicture();
    }

    void Choose(const std::string& name, const std::string& bytes) {
        state.Filename = folder.Write(name, bytes);
        state.FileType = FileTypeOf(name);
        controls.FileListBox->SetPath(folder.Path());
        controls.FileListBox->Refresh();
        controls.FileListBox->Select(controls.FileListBox->RowOf(name));
    }

    std::string LastCall() const { return others.calls.empty() ? "none" : others.calls.back(); }

    // Size and quarters of what the pane shows: "80x50 rgby".
    std::string Shown() const {
        const QImage& picture = controls.Picture1->Picture();
        if (picture.isNull()) return "nothing";
        return std::to_string(picture.width()) + "x" + std::to_string(picture.height()) + " " +
               Quarters(picture);
    }
};

} // namespace tarn::testing
