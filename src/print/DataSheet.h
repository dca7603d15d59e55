// The data sheet: one picture with its path, its camera data and its note on a page. Twips.
#pragma once

#include "print/PrintFaces.h"
#include "widgets/printing/Printer.h"

#include <string>
#include <vector>

namespace tarn {

// The preview's size up to which the sheet takes it over.
inline constexpr double kDataBoxWidth = 5985;
inline constexpr double kDataBoxHeight = 3990;

// Size of the picture on paper from that of the preview; `fixed`: as if the preview filled the
// box, whatever it is.
PaperSize DataPictureSize(double picW, double picH, bool fixed);

struct DataSheet {
    std::string version;
    std::string path;
    PaperSize size; // from DataPictureSize
    QImage picture; // null: the frame alone
    std::vector<std::string> rows;
    std::string note;
    std::string now;
};

// One page; what does not fit runs off its foot.
void PrintDataSheet(Printer& printer, const DataSheet& sheet, const PrintFaces& faces);

} // namespace tarn
