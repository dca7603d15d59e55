// Contact sheets: where each picture of a list and the texts under it stand. Twips throughout.
#pragma once

#include "print/PrintFaces.h"
#include "widgets/printing/Printer.h"

#include <string>
#include <string_view>

namespace tarn {

struct PictureInfo;

// What the sheets of the family differ in.
struct SheetLayout {
    std::string_view name; // "3x4"
    int columns;
    int rows;
    double firstX;
    double columnStep;
    double firstY;
    double rowStep;
    double boxWidth; // 0: every picture has the box's height
    double boxHeight;
    double points;
    int nameChars; // of the name on the first and on the second line
    int nameRestChars;
    bool dateLines;
    double notePoints; // 0: never notes
    int noteLines;
    int noteChars;
    int noteRestChars; // of the first line, on a line of its own; 0: dropped
    double noteRestIndent;

    int PerPage() const { return columns * rows; }
};

extern const SheetLayout kSheet2x2;
extern const SheetLayout kSheet3x4;
extern const SheetLayout kSheet4x6;
extern const SheetLayout kSheet5x8;

// By its name; null for another one.
const SheetLayout* FindSheet(std::string_view name);

// Which pictures of a list are printed, counted from 1.
struct SheetPlan {
    int first = 1;
    int last = 0;
    int fileCount = 0; // as it is shown
    int pageCount = 1;
};

// All of the list, or one page from the current row (from 0) on.
SheetPlan PlanSheets(int listCount, int perPage, bool onePage, int currentRow);

// Size on paper of a picture with these sides, whatever their unit. Without a picture the box.
PaperSize CellSize(const SheetLayout& layout, double picW, double picH);

struct SheetCell {
    int fileNumber = 1;
    std::string name;
    PaperSize size; // from CellSize
    QImage picture; // null: the frame alone
    std::string date;
    std::string speed;
    std::string time;
    std::string sizeLine;
    std::string note; // empty: none is printed
};

// The cell of a picture with these sides, whatever their unit, and the texts of its record; without
// its pixels and its note.
SheetCell CellFor(const SheetLayout& layout, int fileNumber, const PictureInfo& info, double picW,
                  double picH);

class ThumbnailSheet {
public:
    // `heading` is the text at the page's upper left.
    ThumbnailSheet(Printer& printer, const SheetLayout& layout, PrintFaces faces,
                   std::string heading, int pageCount);

    // Where the next picture will stand, both from 1.
    int NextPage() const { return m_added / m_layout.PerPage() + 1; }
    int NextOnPage() const { return m_added % m_layout.PerPage() + 1; }

    // The next cell, on a new page when this one is full.
    void Add(const SheetCell& cell);

private:
    void BeginPage();
    void Line(double x, const PaperFont& font, std::string_view text);
    void Name(double x, const SheetCell& cell);
    void Dates(double x, const SheetCell& cell);
    void Notes(double x, const SheetCell& cell);

    Printer& m_printer;
    const SheetLayout& m_layout;
    PrintFaces m_faces;
    std::string m_heading;
    int m_pageCount;
    int m_added = 0;
    double m_y = 0; // of the next line
};

// "Tarn_View v61.14 06/22/2004 - /folder"; of date and time the part before the first blank.
std::string SheetHeading(const std::string& version, const std::string& now,
                         const std::string& folder);

} // namespace tarn
