// The navigation room with real list, tree and controls; the other rooms write down their calls.
#pragma once

#include "support/RecordingRooms.h"
#include "support/TestFolder.h"

#include "navigation/NavigationRoom.h"
#include "platform/FileListBox.h"
#include "platform/Files.h"
#include "platform/FolderTreeview.h"
#include "platform/PictureBox.h"
#include "platform/SettingsStore.h"

#include <QMenuBar>
#include <QWidget>

#include <memory>
#include <string>

namespace tarn::testing {

struct NavDesk {
    Calls calls;
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    std::unique_ptr<SettingsStore> settings = MakeSettingsStore(folder.Path() + "/.settings.ini");
    std::unique_ptr<EventPump> events = MakeEventPump();
    ScriptedDialogs dialogs;
    ProgramState state;
    QWidget window;
    QMenuBar bar{&window};
    MainControls controls;
    RecordingDisplay display{calls};
    RecordingVideo video{calls};
    RecordingShell shell{calls};
    RecordingInfo info{calls};
    RecordingNotes notes{calls};
    RecordingSound sound{calls};
    RecordingDesktop desktop{calls};
    NavigationRoom room{context};
    Context context{state, controls, room,      display, info,    notes, video,
                    shell, *files,   *settings, *events, dialogs, sound, desktop};

    NavDesk() {
        MakeControls(controls, *files,
                     [this](QWidget* widget, Place) { widget->setParent(&window); });
        MakeMenus(controls, bar, window);
        room.ConnectControls();
        shell.onPane = [this](Pane pane) { state.CurrentPane = pane; };
        state.PictureTypes = "*.jpg;*.txt";
        state.VideoTypes = "*.avi;*.log";
        state.WebTypes = "*.html";
        controls.FileListBox->SetPattern("*.*");
        state.FormLoadDone = true;
    }

    // A folder of `count` pictures p00.jpg ... shown on its first row.
    void FillWithPictures(int count) {
        for (int i = 0; i < count; ++i) folder.Write(PictureName(i), "x");
        Enter();
    }
    static std::string PictureName(int i) {
        return std::string(i < 10 ? "p0" : "p") + std::to_string(i) + ".jpg";
    }
    void Enter() {
        controls.FolderTreeview1->SetSelectedPath(folder.Path());
        Settle();
    }
    // The display takes the row over, as it does with every picture.
    void Settle() { calls.clear(); }

    int Row() const { return controls.FileListBox->CurrentRow(); }
};

} // namespace tarn::testing
