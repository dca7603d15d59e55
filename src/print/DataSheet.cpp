#include "print/DataSheet.h"

#include "print/NoteLines.h"

namespace tarn {

namespace {

constexpr double kEnlargedBy = 2000; // of the longer side
constexpr double kLineX = 100;
constexpr double kLineY = 200;
constexpr double kRuleBelow = 100;
constexpr double kPathY = 700;
constexpr double kPictureY = 1200;
constexpr double kRowsX = 2100;
constexpr double kRowsY = 8000;
constexpr double kHeadingBelow = 400;
constexpr double kNoteBelow = 50;
constexpr double kNoteX = 1600;
constexpr double kDateAboveFoot = 1500;
constexpr double kDateFromRight = 1000;
constexpr double kSmall = 8; // points

void PrintHead(Printer& printer, const DataSheet& sheet, const PrintFaces& faces) {
    const PaperFont font{faces.text, kSmall};
    const double width = printer.PageSize().width;
    printer.Text(kLineX, kLineY, font, ProgramLine(sheet.version));
    printer.Rule(0, kLineY + printer.LineHeight(font) + kRuleBelow, width);
    const double wide = printer.TextWidth(font, sheet.path);
    printer.Text(width / 2 - wide / 2, kPathY, font, sheet.path);
    const PaperBox box{width / 2 - sheet.size.width / 2, kPictureY, sheet.size.width,
                       sheet.size.height};
    printer.Picture(box, sheet.picture);
    printer.Box(box);
}

// Gives where the rows end.
double PrintRows(Printer& printer, const DataSheet& sheet, const PrintFaces& faces) {
    PaperFont font{faces.list, faces.listPoints};
    font.bold = true;
    double y = kRowsY;
    for (const std::string& row : sheet.rows) {
        printer.Text(kRowsX, y, font, row);
        y += printer.LineHeight(font);
    }
    return y;
}

// What lies below the paper's foot is left out: a long note would take its time for nothing.
void PrintNote(Printer& printer, const DataSheet& sheet, const PrintFaces& faces, double y) {
    PaperFont font{faces.notes, faces.notesPoints};
    font.italic = font.underline = true;
    printer.Text(kRowsX, y, font, "Notes:");
    y += printer.LineHeight(font) + kNoteBelow;
    font.italic = font.underline = false;
    const double line = printer.LineHeight(font);
    const double room = printer.PageSize().height - y;
    const auto most = room > 0 ? static_cast<std::size_t>(room / line) + 1 : 0;
    for (const std::string& text : NoteLines(sheet.note, most)) {
        printer.Text(kNoteX, y, font, text);
        y += line;
    }
}

} // namespace

PaperSize DataPictureSize(double picW, double picH, bool fixed) {
    if (picW <= 0 || picH <= 0) {
        picW = kDataBoxWidth;
        picH = kDataBoxHeight;
    } else if (fixed || picW > kDataBoxWidth || picH > kDataBoxHeight) {
        const bool wide = picW >= picH;
        const double by = wide ? kDataBoxWidth / picW : kDataBoxHeight / picH;
        picW = wide ? kDataBoxWidth : by * picW;
        picH = wide ? by * picH : kDataBoxHeight;
    }
    if (picW >= picH) return {picW + kEnlargedBy, picH / picW * kEnlargedBy + picH};
    return {picW / picH * kEnlargedBy + picW, picH + kEnlargedBy};
}

void PrintDataSheet(Printer& printer, const DataSheet& sheet, const PrintFaces& faces) {
    PrintHead(printer, sheet, faces);
    PrintNote(printer, sheet, faces, PrintRows(printer, sheet, faces) + kHeadingBelow);
    const PaperFont font{faces.notes, kSmall};
    const PaperSize page = printer.PageSize();
    printer.Text(page.width - kDateFromRight - printer.TextWidth(font, sheet.now),
                 page.height - kDateAboveFoot, font, sheet.now);
}

} // namespace tarn
