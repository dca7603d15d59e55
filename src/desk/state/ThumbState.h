// Thumbnails and what is printed of them.
#pragma once

#include <string>

namespace tarn {

struct ThumbState {
    bool ThumbUpdate = false;
    int ThumbSizeIndex = 3; // 1 to ThumbNumOfSizes
    int ThumbSize = 0;      // pixels, from the menu row's caption
    static constexpr int ThumbNumOfSizes = 15;
    std::string ThumbSubFolder = "thumbnails";
    bool ThumbClear = true;
    bool ThumbCreateNotes = true;
    bool PrintNotesOnThumbnails = true;
    bool PrintOnly1stPage = false;
    // While a batch runs: the picture that was on screen, and its row in the folder's history.
    std::string BatchFilename;
    int BatchRow = 0;
    bool ListPictures = false; // the file list shows pictures, not names
};

} // namespace tarn
