// Last places of all windows, in twips (15 a logical pixel), also of windows never opened.
#pragma once

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
    int MainStartWidth = 0; // as it stood at the end of start-up
    int MainStartHeight = 0;
    int SplitterTop = 0; // place of the splitter below the tree, 0: the design place

    WindowPlace BrightnessPlace{100, 100, 0, 0};
    WindowPlace FilterPlace{200, 200, 0, 0};
    WindowPlace CaptionPlace{400, 500, 0, 0};
    WindowPlace ExpCalcPlace{200, 200, 0, 0};
    WindowPlace OneToOnePlace;
    WindowPlace PicPlace;
    WindowPlace HelpPlace;
    WindowPlace RenamePlace;
    WindowPlace LogsPlace;
    WindowPlace HtmlLayoutPlace;
    WindowPlace HtmlThumbPlace;
    WindowPlace PreviewPlace; // of printed pages
    WindowPlace StretchPlace;
    WindowPlace NotesFolderPlace; // this and the next are written by their own windows
    WindowPlace NewNotesPlace;
    bool OneAlwaysTop = false;
};

} // namespace tarn
