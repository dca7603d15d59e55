// What a room's test stands on: the real controls, files and settings; the other rooms and the
// outside write down what they are asked. The test adds its room and the Context.
#pragma once

#include "support/RecordingRooms.h"
#include "support/TestFolder.h"

#include "desk/Context.h"
#include "history/History.h"
#include "imaging/PicturesAhead.h"
#include "platform/Clipboard.h"
#include "platform/Files.h"
#include "platform/SettingsStore.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/PictureBox.h"

#include <QMenuBar>
#include <QWidget>

#include <memory>
#include <string>

namespace tarn::testing {

struct RoomDesk {
    Calls calls;
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    History history{*files, {}};
    std::unique_ptr<SettingsStore> settings = MakeSettingsStore(folder.Path() + "/.settings.ini");
    std::unique_ptr<EventPump> events = MakeEventPump();
    ScriptedDialogs dialogs;
    ProgramState state;
    CurrentFile current{state};
    QWidget window;
    QMenuBar bar{&window};
    MainControls controls;
    RecordingNotes notes{calls};
    RecordingMarks marks{calls};
    RecordingNight night;
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
        current.onKind = [this](FileKind) {
            calls.push_back("shown as " + std::to_string(static_cast<int>(state.Kind)));
        };
        current.Follow([this] { calls.push_back("told"); });
    }
    // What a test brings itself beside the three rooms below; null: the recording one.
    struct Own {
        SlideCommands* slides = nullptr;
        FileCommands* fileops = nullptr;
        EventPump* events = nullptr;
    };
    Context Join(NavigationCommands& navigation, DisplayCommands& display, InfoCommands& info) {
        return Join(navigation, display, info, {});
    }
    Context Join(NavigationCommands& navigation, DisplayCommands& display, InfoCommands& info,
                 const Own& own) {
        return {.state = state,
                .current = current,
                .controls = controls,
                .navigation = navigation,
                .display = display,
                .info = info,
                .notes = notes,
                .marks = marks,
                .night = night,
                .slides = own.slides ? *own.slides : slides,
                .copies = copies,
                .fileops = own.fileops ? *own.fileops : fileops,
                .thumbnails = thumbnails,
                .video = video,
                .shell = shell,
                .ahead = ahead,
                .clipboard = *clipboard,
                .files = *files,
                .history = history,
                .settings = *settings,
                .events = own.events ? *own.events : *events,
                .dialogs = dialogs,
                .sound = sound,
                .desktop = desktop,
                .printing = printing};
    }
};

} // namespace tarn::testing
