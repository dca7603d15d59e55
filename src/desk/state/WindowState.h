// Last places of all windows, in twips (15 a logical pixel), also of windows never opened.
#pragma once

#include <string>

namespace tarn {

struct WindowPlace {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const WindowPlace&) const = default;
};

inline constexpr int kTwipsPerPixel = 15;

struct WindowState {
    float MainLeft = 100;
    float MainTop = 100;
    int MainWidth = 0; // 0: the design size
    int MainHeight = 0;
    bool MainNormal = true; // neither minimised nor maximised
    bool MainMaximised = false;
    int MainNormalWidth = 0; // the size to which a maximised window goes back, 0: none yet
    int MainNormalHeight = 0;
    std::string MainScreen; // on which it was maximised, by the window system's name
    int MainStartWidth = 0; // as it stood at the end of start-up
    int MainStartHeight = 0;
    int SplitterTop = 0; // place of the splitter below the tree, 0: the design place
    int TreeWidth = 0;   // of tree and list, as dragged; this and the next two 0: as designed
    int StripHeight = 0; // of camera data and note
    int NotesWidth = 0;
    int Theme = 0; // the desktop's colours, dark, red

    WindowPlace BrightnessPlace{100, 100, 0, 0};
    WindowPlace FilterPlace{200, 200, 0, 0};
    WindowPlace CaptionPlace{400, 500, 0, 0};
    WindowPlace ExpCalcPlace{200, 200, 0, 0};
    WindowPlace OneToOnePlace;
    WindowPlace PicPlace;
    WindowPlace HelpPlace;
    WindowPlace RenamePlace;
    WindowPlace HistoryPlace;
    WindowPlace LogsPlace;
    WindowPlace HtmlLayoutPlace;
    WindowPlace HtmlThumbPlace;
    WindowPlace PreviewPlace; // of printed pages
    WindowPlace StretchPlace;
    WindowPlace NightPlace;
    WindowPlace CornersPlace;
    WindowPlace ReportPlace;
    WindowPlace SitesPlace;
    WindowPlace BlinkPlace;
    WindowPlace MoversPlace;
    WindowPlace SumPlace;
    WindowPlace BestFramesPlace;
    WindowPlace KitsPlace;
    WindowPlace ClockPlace;
    WindowPlace FillNotesPlace;
    WindowPlace NotesFolderPlace; // this and the next are written by their own windows
    WindowPlace NewNotesPlace;
    bool OneAlwaysTop = false;
};

} // namespace tarn
