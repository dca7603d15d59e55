// What every subcommand of the console companion has in common: a row in the table of them, the
// exit statuses, and how faults are told.
#pragma once

#include "console/Usage.h"
#include "convert/ConvertOptions.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

inline constexpr int kExitSuccess = 0;
inline constexpr int kExitFailedFile = 1; // the other files were still worked on
inline constexpr int kExitBadUsage = 2;

struct Subcommand {
    const Usage& usage;
    std::function<int(std::span<const std::string> words)> run; // gives the exit status
};

// What a picture's own reader says of it for the panel.
struct PictureLook {
    int width = 0; // pixels; 0 x 0 when no reader knows the file
    int height = 0;
    std::vector<std::string> lines; // rows that only pictures of telescopes have
    std::string cameraDate;         // and their date, in the form of a camera's
    std::string fault;              // why a picture by its first bytes cannot be read
};
using PictureLooker = std::function<PictureLook(const std::string& path)>;

// A picture written as a JPEG: into the folder, or beside the picture where that is empty.
struct ConvertedFile {
    std::string target; // its path
    std::string error;  // empty when it was written
};
using PictureConverter = std::function<ConvertedFile(
    const std::string& path, const std::string& folder, const ConvertOptions& options)>;

// Thumbnails of a folder, told one by one as they are made or fail.
struct ThumbnailOrder {
    std::string folder;
    std::string subFolder = "thumbnails";
    int width = 120;     // pixels
    std::string notes;   // folder of the notes; empty: none
    bool update = false; // keep those that stand
    // Leaves names out, where it is given.
    std::function<void(std::vector<std::string>& names)> narrow = {};
    std::function<void(const std::string& text)> made;
    std::function<void(const std::string& path, const std::string& fault)> failed;
};
struct ThumbnailOutcome {
    std::string report;
    std::string fault; // why nothing was done; empty otherwise
};
using ThumbnailMaker = std::function<ThumbnailOutcome(const ThumbnailOrder& order)>;

// Messages on the standard error stream.
int ComplainOfUsage(std::string_view fault, const Usage& usage); // gives kExitBadUsage
void ComplainOfFile(const std::string& path, std::string_view fault);

} // namespace tarn
