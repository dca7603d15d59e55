// The roof: the desk, the window, the platform and every room, joined by the one Context.
#pragma once

#include "app/about/CrashStrip.h"
#include "app/about/frmText.h"
#include "app/logs/frmLogs.h"
#include "app/outside/OutsidePrograms.h"
#include "app/start/Lifecycle.h"
#include "app/window/DateStrip.h"
#include "app/window/ShellRoom.h"
#include "app/window/StartCard.h"
#include "app/window/frmFirstSteps.h"
#include "app/window/frmMain.h"
#include "blink/BlinkRoom.h"
#include "desk/Context.h"
#include "display/DisplayRoom.h"
#include "fileops/CopyRoom.h"
#include "fileops/FileRoom.h"
#include "fileops/ImportExport.h"
#include "follow/FollowRoom.h"
#include "history/History.h"
#include "imaging/PicturesAhead.h"
#include "marks/MarksRoom.h"
#include "navigation/NavigationRoom.h"
#include "navigation/PaneKeys.h"
#include "night/NightRoom.h"
#include "notes/NotesRoom.h"
#include "panel/PictureInfoRoom.h"
#include "print/PrintRoom.h"
#include "slides/SlideRoom.h"
#include "thumbnails/ThumbRoom.h"
#include "video/VideoRoom.h"
#include "web/WebRoom.h"
#include "widgets/AltLetters.h"
#include "widgets/ShownWindows.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace tarn {

// The outside, as the program or a test brings it.
struct Platform {
    Files& files;
    SettingsStore& settings;
    EventPump& events;
    Dialogs& dialogs;
    Sound& sound;
    Desktop& desktop;
    Clipboard& clipboard;
    Printing& printing;
};

class House {
public:
    explicit House(const Platform& platform);

    // False when the program cannot run.
    bool Start(const std::string& path, const std::string& imagingError);

    // A file or folder from outside: dropped, chosen, or handed over by a second start.
    void Open(const std::string& path);

    // What broke the work at the current file off.
    void TellThrown(const std::string& fault);

    ShownWindows screens;
    ProgramState state;
    CurrentFile current{state};
    MainControls controls;
    PicturesAhead ahead;
    Context context;
    History history;
    frmMain window;
    ShellRoom shell;
    NavigationRoom navigation;
    DisplayRoom display;
    PictureInfoRoom info;
    NotesRoom notes;
    MarksRoom marks;
    SlideRoom slides;
    CopyRoom copies;
    FileRoom fileops;
    PrintRoom print;
    ThumbRoom thumbnails;
    WebRoom web;
    VideoRoom video;
    NightRoom night;
    BlinkRoom blink;
    FollowRoom follow;
    ImportExport importExport;
    OutsidePrograms programs;
    PaneKeys keys;
    Lifecycle lifecycle;
    CrashStrip crash;

private:
    std::vector<Room*> Rooms();
    void WireFile();
    void WireHelp();
    void WireWindow();
    void MeasurePane();
    void WindowResized();
    void PaneResized();
    void ResizeTimer_Timer();
    void AskForFile();
    void AskForFolder();

    void FirstStepsButton_Click();
    void ShowLogsButton_Click();
    void VersionButton_Click();

    AltLetters m_altLetters;
    std::unique_ptr<frmLogs> m_logs; // made when it is first asked for
    std::unique_ptr<frmText> m_about;
    std::unique_ptr<frmFirstSteps> m_firstSteps;
    std::unique_ptr<DateStrip> m_strip; // of the window, once all commands are connected
    std::unique_ptr<StartCard> m_card;
    QTimer m_resizeTimer;
    QElapsedTimer m_started;
    std::string m_handedEarly; // a path that came while the program was loading
};

} // namespace tarn
