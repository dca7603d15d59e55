// A gallery's pages: an index of thumbnails, a page for each picture, and the style sheet that all
// of them share. All texts are page bytes, sizes pixels.
#pragma once

#include "desk/state/GallerySettings.h"

#include <string>
#include <vector>

namespace tarn {

// What is the same in all pages of one run.
struct GalleryRunFacts {
    bool frames = false; // else the plain site
    int count = 0;       // pictures
    int thumbnailSize = 0;
    std::string version;
    std::string subFolder; // of the thumbnails
    std::string indexName; // file name of the chosen file
    std::string prefix;    // in front of pictures and thumbnails; empty where they stand beside
    std::string now;       // date and time
};

struct GalleryPicture {
    std::string name;      // the picture's file name
    std::string thumbnail; // its thumbnail's
    int width = 0;         // of the picture as it stands upright
    int height = 0;
    long long fileBytes = 0;
    std::string note;               // bytes of the note file, at most kNoteBytes
    std::vector<std::string> panel; // rows of the camera data; wanted with DataCheck only
};

inline constexpr std::size_t kNoteBytes = 8000;
inline constexpr int kAllNoteLines = 10; // the end of the note sliders; in cells: no limit
inline constexpr char kFrameTopName[] = "index_top.html";
inline constexpr char kFrameThumbsName[] = "index_thumbs.html";

// "ImageT001.html" of the k-th picture, counting from 1.
std::string PicturePageName(int k);

std::string GalleryStyle(const GallerySettings& settings);

// The chosen file of a plain site up to the first row of cells, and of a site in frames whole.
std::string GalleryIndexHead(const GallerySettings& settings, const GalleryRunFacts& run);

// In frames: the page on top, and the page of the thumbnails up to the first row of cells.
std::string GalleryFrameTop(const GallerySettings& settings, const GalleryRunFacts& run);
std::string GalleryFrameThumbsHead(const GallerySettings& settings, const GalleryRunFacts& run);

// The cells of the index, picture by picture, with the ends of their rows.
class GalleryCells {
public:
    GalleryCells(const GallerySettings& settings, const GalleryRunFacts& run);

    // The lines for the k-th picture, k from 1 to the run's count, in order.
    std::string Next(const GalleryPicture& picture);

private:
    const GallerySettings& m_settings;
    const GalleryRunFacts& m_run;
    int m_columns;
    int m_k = 0;
    int m_rowsSinceBreak = 1;
};

// What ends the page of the cells.
std::string GalleryIndexFoot(const GallerySettings& settings, const GalleryRunFacts& run);

// The page of the k-th picture.
std::string GalleryPicturePage(const GallerySettings& settings, const GalleryRunFacts& run,
                               const GalleryPicture& picture, int k);

// Where the picture's map is laid and how large the page shows it: its own size, or limited.
struct MapSize {
    long long width = 0;
    long long height = 0;
};
MapSize GalleryMapSize(const GallerySettings& settings, int width, int height);

// Whether the limit of sizes is on and leaves no pixel of a picture.
bool LimitHidesPictures(const GallerySettings& settings);

// "1.0M" from 1000000 bytes on, else "1000K".
std::string GalleryFileSize(long long bytes);

} // namespace tarn
