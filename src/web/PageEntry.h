// One entry of a hand-laid page: a picture with its link, notes and camera data, or a text file.
// All texts are page bytes.
#pragma once

#include "desk/state/HtmlSettings.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// What an entry shows. Sizes in pixels.
struct EntryFacts {
    std::string name; // of the file, with its ending
    std::string type; // last four characters of the name, upper case
    int width = 0;    // of the picture that is shown
    int height = 0;
    int previewWidth = 0; // fitted into the preview box
    int previewHeight = 0;
    std::string sizeText;           // "3504 x 2336"
    std::string fileSizeText;       // "123 KB"; wanted for an mp4 video only
    std::string note;               // as the note's box holds it, empty: none
    std::vector<std::string> panel; // rows of the camera data
    std::vector<std::string> lines; // of a text file
    bool hasLabel = false;          // the picture of LabelNameOf stands beside it
    bool hasVideo = false;          // the video of VideoNameOf does
};

// What runs on from entry to entry of a page.
struct PageRun {
    int imageNumber = 0; // makes the names on the page unique
    int sinceBreak = 0;  // entries since the last page break
    std::string prefix;  // "../" or empty, before the picture's source
    std::string linkTarget;

    // As the head of a page sets them.
    void Begin() {
        imageNumber = 0;
        sinceBreak = 1;
    }
};

// The picture that stands in for an mp4 video, a companion file of the program.
inline constexpr char kVideoPicture[] = "MP4.jpg";

// Text entries are .TXT and .LOG files.
bool IsTextEntry(std::string_view type);

// The name of a picture's twin with labels; empty when label pictures are not used.
std::string LabelNameOf(const HtmlSettings& settings, std::string_view name);

// Whether this file is such a twin itself: it gets no entry.
bool IsLabelPicture(const HtmlSettings& settings, std::string_view name);

// The name of the mp4 video of the same name; empty when such are not linked.
std::string VideoNameOf(const HtmlSettings& settings, std::string_view name);

// The lines of an entry; moves `run` on. `exifInfo`: camera data in format 1.
std::string PageEntry(const HtmlSettings& settings, bool exifInfo, const EntryFacts& facts,
                      PageRun& run);

} // namespace tarn
