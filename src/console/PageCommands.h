// "tarn page" and "tarn gallery": the pages that the window's forms make, of a whole folder.
#pragma once

#include "console/Subcommand.h"
#include "desk/state/GallerySettings.h"
#include "desk/state/HtmlSettings.h"

#include <string>
#include <vector>

namespace tarn {

extern const Usage kPageUsage;
extern const Usage kGalleryUsage;

struct PageRequest {
    std::string out; // absolute, as the folder
    std::string folder;
    std::vector<std::string> names; // of its pictures
    std::string notes;              // folder; empty: no notes
    std::string now;                // empty: now
    std::string version;
    HtmlSettings page;
    std::vector<std::string> set; // what was set of it, "KEY=VALUE": before what an old page says
    bool append = false;
    bool reverse = false;
    int previewWidth = 800;
    int previewHeight = 533;

    GallerySettings gallery;
    bool frames = false;
    bool thumbnails = false; // missing ones are made
    int thumbnailSize = 120;
    std::string subFolder = "thumbnails";
};

struct PageResult {
    std::vector<std::string> complaints; // about single files
    std::string error;                   // why there is no page; empty when it was written
    int count = 0;                       // of entries or cells
};

using PageMaker = std::function<PageResult(const PageRequest& request)>;

int RunPage(std::span<const std::string> words, std::string_view version, const PageMaker& make);
int RunGallery(std::span<const std::string> words, std::string_view version, const PageMaker& make);

} // namespace tarn
