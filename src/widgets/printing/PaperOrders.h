// What stands on printed pages, as orders. Positions and sizes are twips, 1/1440 inch, from the
// corner of the printable area; the place of a text is its top left. Everything is black.
#pragma once

#include <string>
#include <variant>
#include <vector>

namespace tarn {

inline constexpr double kTwipsPerInch = 1440;
inline constexpr double kPaperLine = 15; // width of rules and frames

struct PaperSize {
    double width = 0;
    double height = 0;
};

struct PaperFont {
    std::string family;
    double points = 8;
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

struct PaperText {
    double x = 0;
    double y = 0;
    PaperFont font;
    std::string text; // one line
};

struct PaperRule {
    double x = 0; // from here to there, level
    double y = 0;
    double toX = 0;
};

struct PaperBox {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

struct PaperPicture {
    PaperBox place;
    // As a JPEG: a folder's pixels would not fit into memory.
    std::string jpeg;
};

using PaperOrder = std::variant<PaperText, PaperRule, PaperBox, PaperPicture>;
using PaperPage = std::vector<PaperOrder>;

} // namespace tarn
