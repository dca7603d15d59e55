#include "shell/help/HelpPages.h"

namespace tarn {

const std::vector<HelpPageRow>& HelpPages() {
    static const std::vector<HelpPageRow> pages{
        {kHelpNavigation, "Picture Navigation", "help/navigation.html"},
        {kHelpFolders, "Folders and Files", "help/folders.html"},
        {kHelpFileDate, "Picture File Date", "help/file_date.html"},
        {kHelpSlides, "Slides (Full Screen)", "help/slides.html"},
        {kHelpTwoAndFour, "Two and Four Pictures", "help/two_and_four.html"},
        {kHelpSizeWindow, "Size Window", "help/size_window.html"},
        {kHelpOneToOne, "Full Size 1:1", "help/one_to_one.html"},
        {kHelpThumbFolder, "Thumbnail Sub Folder", "help/thumb_folder.html"},
        {kHelpThumbSizes, "Thumbnail Image Sizes", "help/thumb_sizes.html"},
        {kHelpWebPages, "Web Pages and Galleries", "help/web_pages.html"},
        {kHelpPrintLayouts, "Print Thumbnail Pages Layouts", "help/print_layouts.html"},
        {kHelpRegistry, "Registry Entries", "help/settings.html"},
        {kHelpAbout, "About and Initial Picture", "help/about.html"},
    };
    return pages;
}

} // namespace tarn
