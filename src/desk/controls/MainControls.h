// Pointers to the main window's controls and menu entries under their given names. They are made
// from the two tables beside this file, controls.def and menus.def; rooms show their results here.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QMenu;
class QMenuBar;
class QObject;
class QPlainTextEdit;
class QPushButton;
class QWidget;

namespace tarn {

class FileListBox;
class Files;
class FolderTreeview;
class PageBrowser;
class PictureBox;

// Where a control stands in the window.
enum class Place {
    FolderBar, // above the tree
    Tree,
    Classes,  // boxes of the file classes, above the list
    ListNote, // what is to be said about the list
    List,
    ListBar,
    Step, // above the picture
    Turn,
    View,
    Slides,
    CopyTo,
    Info,  // texts above the picture
    Panes, // one of them up at a time
    Video, // the transport under the video pane
    Over,  // upon the picture
    Exif,  // camera data
    NotesHead,
    NotesText,
    NotesBar,
    NotesStep,
    Message, // the line at the bottom
    Status,  // beside the path, below it
};

struct MainControls {
#define TARN_CONTROL(type, name, caption, tooltip, place, icon) type* name = nullptr;
#define TARN_CONTROL_ROW(type, name, index, caption, tooltip, place, icon)
#include "desk/controls/controls.def"
#undef TARN_CONTROL
#undef TARN_CONTROL_ROW
    std::array<QPushButton*, 7> VideoButton{}; // 0, 1, 3 to 6
    QWidget* VideoFrame = nullptr;             // what holds them

#define TARN_MENU(parent, name, caption) QMenu* name = nullptr;
#define TARN_POPUP(name) QMenu* name = nullptr;
#define TARN_ENTRY(menu, name, caption, key, shortcut, flags) QAction* name = nullptr;
#define TARN_ROW(menu, name, index, caption, flags)
#define TARN_LINE(menu)
#include "desk/controls/menus.def"
#undef TARN_MENU
#undef TARN_POPUP
#undef TARN_ENTRY
#undef TARN_ROW
#undef TARN_LINE
    std::array<QAction*, 4> ExportFilesButton{};
    std::array<QAction*, 2> CopyCameraButton{};
    std::array<QAction*, 16> ThumbSizeButton{};      // 1 to 15
    std::array<QAction*, 7> SlideTextButton{};       // 1 to 6
    std::array<QAction*, 8> SlideTextSizeButton{};   // 1 to 7
    std::array<QAction*, 9> SlideTextColorButton{};  // 0 to 8
    std::array<QAction*, 6> SlideBackgroundButton{}; // 1 to 5
    std::array<QAction*, 3> ThemeButton{};           // as `Theme` counts them
};

// A control of the table, with what makes it.
struct ControlRow {
    const char* name; // object name; a member of an array is "Name_index"
    const char* caption;
    const char* tooltip;
    Place place;
    const char* icon; // name of a drawing in icons/, or ""
    QWidget* (*make)(MainControls&, const Files&);
};
const std::vector<ControlRow>& ControlRows();

// Makes every control with name, texts and icon; `put` gives each its place. Commands begin
// disabled, until one is connected.
void MakeControls(MainControls& controls, const Files& files,
                  const std::function<void(QWidget*, Place)>& put);

// Fills the menu bar and makes the popup.
void MakeMenus(MainControls& controls, QMenuBar& bar, QWidget& window);

// Gives a button, box or menu entry its command. What has none stays disabled whatever SetEnabled
// says. A box runs its command on every change, also in code.
void Connect(QPushButton* button, std::function<void()> command);
void Connect(QCheckBox* box, std::function<void()> command);
void Connect(QAction* entry, std::function<void()> command);
void SetEnabled(QPushButton* button, bool enabled);
void SetEnabled(QCheckBox* box, bool enabled);
void SetEnabled(QAction* entry, bool enabled);

// Object names of the buttons, boxes and entries that have no command, in the order of the tables.
std::vector<std::string> Unconnected(const MainControls& controls);

} // namespace tarn
