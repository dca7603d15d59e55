// What a room is given: the desk, the window's controls, the other rooms by their interface, and
// the outside. Made once in the program and once in each test.
#pragma once

#include "desk/commands/Commands.h"
#include "desk/controls/MainControls.h"
#include "desk/state/CurrentFile.h"
#include "desk/state/ProgramState.h"

namespace tarn {

class Clipboard;
class Desktop;
class Dialogs;
class EventPump;
class Files;
class History;
class PicturesAhead;
class Printing;
class SettingsStore;
class Sound;

struct Context {
    ProgramState& state;
    CurrentFile& current;
    MainControls& controls;

    NavigationCommands& navigation;
    DisplayCommands& display;
    InfoCommands& info;
    NotesCommands& notes;
    MarkCommands& marks;
    NightCommands& night;
    SlideCommands& slides;
    CopyCommands& copies;
    FileCommands& fileops;
    ThumbnailCommands& thumbnails;
    VideoCommands& video;
    ShellCommands& shell;

    PicturesAhead& ahead;
    Clipboard& clipboard;
    Files& files;
    History& history;
    SettingsStore& settings;
    EventPump& events;
    Dialogs& dialogs;
    Sound& sound;
    Desktop& desktop;
    Printing& printing;
};

} // namespace tarn
