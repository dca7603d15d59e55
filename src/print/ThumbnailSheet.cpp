#include "print/ThumbnailSheet.h"

#include "common/numbers.h"
#include "common/pages.h"
#include "common/text.h"
#include "pictureinfo/PictureInfo.h"
#include "print/NoteLines.h"

#include <algorithm>

namespace tarn {

// clang-format off
//                            name  grid  x    step  y    step  box         pt name     dates  notes
const SheetLayout kSheet2x2{"2x2", 2, 2, 600, 5800, 600, 7200, 0,    6600, 8, 50, 40, false, 0, 0, 0,  0,  0};
const SheetLayout kSheet3x4{"3x4", 3, 4, 500, 3700, 550, 3600, 3000, 1995, 8, 35, 40, true,  6, 4, 65, 0,  0};
const SheetLayout kSheet4x6{"4x6", 4, 6, 500, 2800, 550, 2375, 2000, 1333, 7, 24, 27, false, 7, 2, 40, 35, 40};
const SheetLayout kSheet5x8{"5x8", 5, 8, 500, 2240, 550, 1800, 1500, 998,  6, 24, 29, false, 6, 1, 40, 40, 20};
// clang-format on

namespace {

constexpr double kHeaderX = 100;
constexpr double kHeaderY = 200;
constexpr double kPageTextFromRight = 2000;
constexpr double kHeaderPoints = 8;
constexpr double kRuleBelow = 100;
constexpr double kNameBelow = 50;
constexpr double kNotesBelow = 40;

double Whole(double value) {
    return static_cast<double>(RoundHalfEven(value));
}

} // namespace

const SheetLayout* FindSheet(std::string_view name) {
    for (const SheetLayout* layout : {&kSheet2x2, &kSheet3x4, &kSheet4x6, &kSheet5x8})
        if (layout->name == name) return layout;
    return nullptr;
}

SheetCell CellFor(const SheetLayout& layout, int fileNumber, const PictureInfo& info, double picW,
                  double picH) {
    SheetCell cell;
    cell.fileNumber = fileNumber;
    cell.name = info.FileNameOnly;
    cell.size = CellSize(layout, picW, picH);
    cell.date = info.PictureDate.empty() ? info.FileDate : info.PictureDate;
    cell.speed = info.ExpSpeed;
    cell.time = info.ExpTime;
    cell.sizeLine = info.ExpSizeLine;
    return cell;
}

SheetPlan PlanSheets(int listCount, int perPage, bool onePage, int currentRow) {
    if (onePage) {
        const int first = std::max(currentRow, 0) + 1;
        return {first, std::min(listCount, first + perPage - 1), perPage, 1};
    }
    return {1, listCount, listCount, std::max(1, PageCount(listCount, perPage))};
}

PaperSize CellSize(const SheetLayout& layout, double picW, double picH) {
    const double boxW = layout.boxWidth;
    const double boxH = layout.boxHeight;
    if (picW <= 0 || picH <= 0) return {boxW > 0 ? boxW : boxH, boxH};
    if (boxW <= 0 || picH >= picW) return {Whole(boxH / picH * picW), boxH};
    const double height = Whole(boxW / picW * picH);
    if (height <= boxH) return {boxW, height};
    return {Whole(boxH / height * boxW), boxH};
}

std::string SheetHeading(const std::string& version, const std::string& now,
                         const std::string& folder) {
    return ProgramLine(version) + " " + now.substr(0, now.find(' ')) + " - " + folder;
}

ThumbnailSheet::ThumbnailSheet(Printer& printer, const SheetLayout& layout, PrintFaces faces,
                               std::string heading, int pageCount)
    : m_printer(printer), m_layout(layout), m_faces(std::move(faces)),
      m_heading(std::move(heading)), m_pageCount(pageCount) {}

void ThumbnailSheet::Add(const SheetCell& cell) {
    const int place = m_added % m_layout.PerPage();
    if (place == 0) BeginPage();
    const double x = m_layout.firstX + place % m_layout.columns * m_layout.columnStep;
    const int row = place / m_layout.columns;
    const double y = m_layout.firstY + row * m_layout.rowStep;
    const PaperBox box{x, y, cell.size.width, cell.size.height};
    m_printer.Picture(box, cell.picture);
    m_printer.Box(box);
    m_y = y + box.height + kNameBelow;
    Name(x, cell);
    if (m_layout.dateLines) Dates(x, cell);
    if (m_layout.notePoints > 0) Notes(x, cell);
    ++m_added;
}

void ThumbnailSheet::BeginPage() {
    if (m_added > 0) m_printer.NewPage();
    const PaperFont font{m_faces.text, kHeaderPoints};
    const double width = m_printer.PageSize().width;
    m_printer.Text(kHeaderX, kHeaderY, font, m_heading);
    m_printer.Text(width - kPageTextFromRight, kHeaderY, font,
                   "Page " + std::to_string(NextPage()) + " of " + std::to_string(m_pageCount));
    m_printer.Rule(0, kHeaderY + m_printer.LineHeight(font) + kRuleBelow, width);
}

// An empty text takes its line all the same.
void ThumbnailSheet::Line(double x, const PaperFont& font, std::string_view text) {
    m_printer.Text(x, m_y, font, text);
    m_y += m_printer.LineHeight(font);
}

void ThumbnailSheet::Name(double x, const SheetCell& cell) {
    PaperFont font{m_faces.text, m_layout.points};
    font.bold = true;
    const int first = m_layout.nameChars;
    Line(x, font,
         std::to_string(cell.fileNumber) + ".  " + std::string(LeftChars(cell.name, first)));
    Line(x, font, MidChars(cell.name, first + 1, m_layout.nameRestChars));
}

void ThumbnailSheet::Dates(double x, const SheetCell& cell) {
    const PaperFont font{m_faces.text, m_layout.points};
    std::string line = cell.date;
    for (const std::string& part : {cell.speed, cell.time})
        if (!part.empty()) line += ", " + part;
    Line(x, font, line);
    Line(x, font, cell.sizeLine);
}

void ThumbnailSheet::Notes(double x, const SheetCell& cell) {
    const PaperFont font{m_faces.notes, m_layout.notePoints};
    m_y += kNotesBelow;
    const auto lines = NoteLines(cell.note, static_cast<std::size_t>(m_layout.noteLines));
    for (const std::string& line : lines) {
        Line(x, font, LeftChars(line, m_layout.noteChars));
        const auto rest = MidChars(line, m_layout.noteChars + 1, m_layout.noteRestChars);
        if (&line == &lines.front() && !rest.empty()) Line(x + m_layout.noteRestIndent, font, rest);
    }
}

} // namespace tarn
