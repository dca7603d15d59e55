// "tarn sheet": contact sheets of a folder and the data sheet of a picture as PDF files.
#pragma once

#include "console/Subcommand.h"

#include <vector>

namespace tarn {

extern const Usage kSheetUsage;
inline constexpr std::string_view kDataSheet = "data";

struct SheetRequest {
    std::string layout; // "3x4", or kDataSheet
    std::string out;
    std::string folder;
    std::vector<std::string> names; // files of the folder; one for a data sheet
    std::string notes;              // folder; empty: no notes
    bool printNotes = true;
    std::string now; // date and time as printed; empty: now
    std::string paper = "A4";
};

struct SheetResult {
    struct Failure {
        std::string path;
        std::string fault;
    };
    std::vector<Failure> failures; // files that are not on the sheet as pictures
    std::string badPaper;          // no paper has this name: nothing was done
    std::string error;             // why there is no PDF; empty when it was written
};

using SheetPrinter = std::function<SheetResult(const SheetRequest& request)>;

int RunSheet(std::span<const std::string> words, const SheetPrinter& print);

} // namespace tarn
