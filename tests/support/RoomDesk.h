// What a room's test stands on: the real controls, files and settings; the other rooms and the
// outside write down what they are asked. The test adds its room and the Context.
#pragma once

#include "support/RecordingRooms.h"
#include "support/TestFolder.h"

#include "platform/Clipboard.h"
#include "platform/FileListBox.h"
#include "platform/Files.h"
#include "platform/FolderTreeview.h"
#include "platform/PictureBox.h"
#include "platform/SettingsStore.h"
#include "platform/imaging/PicturesAhead.h"
#include "shell/Context.h"

#include <QMenuBar>
#include <QWidget>

#include <memory>
#include <string>

namespace tarn::testing {

struct RoomDesk {
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
    RecordingNotes notes{calls};
    RecordingVideo video{calls};
    RecordingShell shell{calls};
    RecordingSound sound{calls};
    RecordingDesktop desktop{calls};

    RecordingSlides slides{calls};
    RecordingCopies copies{calls};
    RecordingFileCommands fileops{calls};
    RecordingThumbnails thumbnails{calls};
    PicturesAhead ahead;
    RecordingPrinting printing{*files};
    std::unique_ptr<Clipboard> clipboard = MakeClipboard();

    RoomDesk() {
        MakeControls(controls, *files,
                     [this](QWidget* widget, Place) { widget->setParent(&window); });
        MakeMenus(controls, bar, window);
        state.FormLoadDone = true;
    }
    // With the rooms that a test brings itself.
    Context Join(NavigationCommands& navigation, DisplayCommands& display, InfoCommands& info) {
        return {state,  controls,  navigation, display, info,  notes,   slides,
                copies, fileops,   thumbnails, video,   shell, ahead,   *clipboard,
                *files, *settings, *events,    dialogs, sound, desktop, printing};
    }
};

} // namespace tarn::testing
