// Where the parts of the main window stand: arithmetic on sizes alone.
#pragma once

#include <QRect>
#include <QSize>

namespace tarn {

// Sizes that follow from the desktop's font, in logical pixels.
struct LayoutMeasures {
    int treeWidth = 0;       // left column
    int folderBarHeight = 0; // buttons above the tree
    int toolsHeight = 0;     // buttons and texts above the picture
    int notesWidth = 0;
    int panelHeight = 0; // camera data and notes
    int messageHeight = 0;
    int noticeHeight = 0; // of a strip above the message line, while one is shown
};

// What the gaps take of the width beside the tree and the tools.
inline constexpr int kAroundTools = 16;

struct MainLayout {
    QRect folderBar;
    QRect splitter; // tree above, list below
    QRect tools;
    QRect picture; // the panes
    QRect exif;
    QRect notes;
    QRect notice;
    QRect message;
    QRect treeHandle; // between tree and picture, and so on
    QRect stripHandle;
    QRect notesHandle;
};

// Where the user has dragged the handles, in logical pixels; 0: as designed.
struct PanePlaces {
    int tree = 0;  // width of tree and list
    int strip = 0; // height of camera data and note
    int notes = 0; // width
};

MainLayout LayOut(QSize window, const LayoutMeasures& measures);

// A place of the splitter in twips, brought to a whole number of rows of the list (224 twips).
int SnapSplitter(int twips);

} // namespace tarn
