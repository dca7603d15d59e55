// The folder below the pictures folder that holds the thumbnails: which names it may have, and how
// it is emptied without ever touching an original.
#pragma once

#include "platform/Files.h"

#include <string>
#include <vector>

namespace tarn {

inline constexpr char kBadSubFolder[] = "Sub folder name is not valid";

// Empty unless the folder of this name lies strictly below the pictures folder, links followed, and
// is not the folder of notes, which would be emptied. `notes` is empty when there is none.
std::string ThumbnailFolder(const Files& files, const std::string& pictures,
                            const std::string& subFolder, const std::string& notes);

// Whether a name can be one wherever the pictures are: not empty, not absolute, and it does not
// lead out of the pictures folder or stay in it.
bool IsSubFolderName(const std::string& subFolder);

// With the folders above it, as far as they are missing. An error shows at the first save.
void MakeThumbnailFolder(Files& files, const std::string& pictures, const std::string& subFolder);

// What could not be done, counted.
struct ClearFaults {
    int count = 0;
    std::string first;        // "'a.jpg' - Permission denied"
    std::string Text() const; // "2 files remain: 'a.jpg' - Permission denied", or empty
};

// Plain visible files: thumbnails are deleted, anything else goes to the wastebasket.
ClearFaults ClearThumbnails(Files& files, const std::string& folder);

// "Image*.html" of the pictures folder, to the wastebasket.
std::vector<std::string> GalleryPages(const Files& files, const std::string& pictures);
void ThrowAwayPages(Files& files, const std::string& pictures, ClearFaults& faults);

} // namespace tarn
