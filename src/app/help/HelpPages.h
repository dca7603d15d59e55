// The pages of the help, which are the manual in docs/manual: which file holds which. Pages 1 to 5
// are called by their number, some others by the menu entry that opens them, the rest is chosen in
// the window.
#pragma once

#include <vector>

namespace tarn {

enum HelpPage {
    kHelpNavigation = 1,
    kHelpSlides,
    kHelpSizeWindow,
    kHelpOneToOne,
    kHelpTwoAndFour,
    kHelpFolders,
    kHelpFileDate,
    kHelpThumbFolder,
    kHelpThumbSizes,
    kHelpPrintLayouts,
    kHelpRegistry,
    kHelpAbout,
    kHelpWebPages,
    kHelpContents,
    kHelpTour,
    kHelpKeys,   // made when it is shown
    kHelpReadOn, // no command opens it
};

struct HelpPageRow {
    int page;
    const char* title;
    const char* file; // among the program's own files; of the page of keys only a name
};

// All pages, in the order in which they are listed.
const std::vector<HelpPageRow>& HelpPages();

} // namespace tarn
