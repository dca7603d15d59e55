#include "print/SheetJob.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "imaging/PicturesAhead.h"
#include "platform/CrashNote.h"
#include "platform/QtText.h"
#include "print/PaperImage.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QLabel>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kAhead = 3; // pictures decoded while one is put onto the sheet

SheetPlan PlanOf(const Context& m, const SheetLayout& layout) {
    const FileListBox& list = *m.controls.FileListBox;
    return PlanSheets(list.Count(), layout.PerPage(), m.state.PrintOnly1stPage, list.CurrentRow());
}

} // namespace

SheetJob::SheetJob(Context& context, Printer& printer, const SheetLayout& layout, PrintFaces faces,
                   const std::string& now)
    : m(context), m_printer(printer), m_layout(layout), m_plan(PlanOf(context, layout)),
      m_sheet(printer, layout, std::move(faces),
              SheetHeading(context.state.Version, now, context.controls.FileListBox->Path()),
              m_plan.pageCount) {}

std::string SheetJob::Progress() const {
    return "Printing " + std::to_string(m_layout.PerPage()) + " picture thumbnail sheets page (" +
           std::to_string(m_sheet.NextPage()) + " of " + std::to_string(m_plan.pageCount) + ") # " +
           std::to_string(m_sheet.NextOnPage());
}

bool SheetJob::Run(const BatchRun& batch) {
    ProgramState& s = m.state;
    for (int number = m_plan.first; number <= m_plan.last; ++number) {
        const FileListBox& list = *m.controls.FileListBox;
        s.Filename = JoinPath(list.Path(), list.Text(number - 1));
        SetCrashFile(s.Filename);
        s.FileType = FileTypeOf(s.Filename);
        s.TextNumOf = std::to_string(number) + " of " + std::to_string(m_plan.fileCount);
        m.controls.TextNumOf->setText(ToQt(s.TextNumOf));
        const bool goesOn = batch.Step(Progress());
        if (!goesOn || s.PrintCancelled) return false;
        Load(number);
        m_sheet.Add(Cell(number));
    }
    return true;
}

void SheetJob::Load(int fileNumber) {
    ProgramState& s = m.state;
    // A file that is no picture leaves these as they are, of the picture before.
    for (std::string* text : {&s.ExpSpeed, &s.ExpTime, &s.ExpSizeLine}) text->clear();
    m.display.DisplayPicture();
    ExpectNext(fileNumber);
}

// Loading alone knows only the neighbours of the current row, which stays.
void SheetJob::ExpectNext(int fileNumber) {
    const ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    const bool whole = s.OneX || s.TwoX || s.OneToOneLoaded;
    const QSize wanted = whole ? QSize() : QSize(s.PreviewWidth, s.PreviewHeight);
    std::vector<PictureWish> wishes;
    const int last = std::min(m_plan.last, fileNumber + kAhead);
    for (int next = fileNumber + 1; next <= last; ++next)
        wishes.push_back({JoinPath(list.Path(), list.Text(next - 1)), wanted, {}});
    m.ahead.Expect(wishes);
}

SheetCell SheetJob::Cell(int fileNumber) {
    const ProgramState& s = m.state;
    const ImgX shown = m.display.ShownPicture();
    const QSize pane = m.controls.Picture1->Picture().size();
    SheetCell cell = CellFor(m_layout, fileNumber, s, pane.width(), pane.height());
    std::string fault;
    cell.picture =
        ImageForPaper(shown, m_printer.PixelsFor(cell.size.width, cell.size.height), &fault);
    if (!fault.empty() && m_fault.empty()) m_fault = fault + " - " + s.FileNameOnly;
    if (s.PrintNotesOnThumbnails) cell.note = s.NoteText;
    return cell;
}

} // namespace tarn
