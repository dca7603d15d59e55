#include "app/help/HelpPages.h"

namespace tarn {

const std::vector<HelpPageRow>& HelpPages() {
    static const std::vector<HelpPageRow> pages{
        {kHelpContents, "Contents", "help/index.html"},
        {kHelpTour, "A First Evening", "help/tour.html"},
        {kHelpReadOn, "The Window", "help/window.html"},
        {kHelpKeys, "Keys", "made/keys"},
        {kHelpNavigation, "Picture Navigation", "help/navigation.html"},
        {kHelpFolders, "Folders and Files", "help/folders.html"},
        {kHelpReadOn, "The List as Pictures", "help/list_pictures.html"},
        {kHelpReadOn, "Marks, Choice and Order of the List", "help/marks.html"},
        {kHelpReadOn, "A Night Judged", "help/night.html"},
        {kHelpReadOn, "Blink, What Moves, and the Sum", "help/blink.html"},
        {kHelpReadOn, "Camera Data", "help/camera_data.html"},
        {kHelpReadOn, "Notes", "help/notes.html"},
        {kHelpReadOn, "The Note Composer", "help/composer.html"},
        {kHelpReadOn, "File Commands and Undo", "help/file_commands.html"},
        {kHelpReadOn, "Rename Pictures in Folder", "help/rename_files.html"},
        {kHelpReadOn, "Copy To and Convert to Jpg", "help/convert.html"},
        {kHelpFileDate, "Picture File Date", "help/file_date.html"},
        {kHelpSlides, "Slides (Full Screen)", "help/slides.html"},
        {kHelpTwoAndFour, "Two and Four Pictures", "help/two_and_four.html"},
        {kHelpSizeWindow, "Size Window", "help/size_window.html"},
        {kHelpOneToOne, "Full Size 1:1", "help/one_to_one.html"},
        {kHelpReadOn, "Turns and Brightness", "help/brightness.html"},
        {kHelpThumbFolder, "Thumbnail Sub Folder", "help/thumb_folder.html"},
        {kHelpThumbSizes, "Thumbnail Image Sizes", "help/thumb_sizes.html"},
        {kHelpPrintLayouts, "Print Thumbnail Pages Layouts", "help/print_layouts.html"},
        {kHelpWebPages, "Web Pages and Galleries", "help/web_pages.html"},
        {kHelpReadOn, "Videos, Texts and Web Files", "help/video.html"},
        {kHelpReadOn, "FITS, Raw Files and Color", "help/fits_raw.html"},
        {kHelpReadOn, "On the Console", "help/console.html"},
        {kHelpRegistry, "Registry Entries", "help/settings.html"},
        {kHelpReadOn, "Troubleshooting", "help/troubleshooting.html"},
        {kHelpReadOn, "Messages", "help/messages.html"},
        {kHelpAbout, "About and Initial Picture", "help/about.html"},
    };
    return pages;
}

} // namespace tarn
