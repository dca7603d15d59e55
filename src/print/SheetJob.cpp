#include "print/SheetJob.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/KeptFiles.h"
#include "desk/batch/KeptNote.h"
#include "platform/CrashNote.h"
#include "platform/QtText.h"
#include "print/PaperImage.h"
#include "widgets/FileListBox.h"

#include <QLabel>

#include <algorithm>

namespace tarn {

namespace {

SheetPlan PlanOf(const Context& m, const SheetLayout& layout, const std::vector<SheetFile>& files) {
    const int current = m.controls.FileListBox->CurrentRow();
    const auto behind = std::find_if(files.begin(), files.end(), [current](const SheetFile& file) {
        return file.row >= current;
    });
    const auto count = static_cast<int>(files.size());
    return PlanSheets(count, layout.PerPage(), m.state.PrintOnly1stPage,
                      std::min(static_cast<int>(behind - files.begin()), count - 1));
}

std::vector<std::string> PathsOf(const std::vector<SheetFile>& files, const SheetPlan& plan) {
    std::vector<std::string> paths;
    for (int number = plan.first; number <= plan.last; ++number)
        paths.push_back(files[static_cast<std::size_t>(number - 1)].path);
    return paths;
}

// By its name; a clip's cell, or a page's, has no picture of its own anyway.
bool IsPicture(const ProgramState& s, const std::string& path) {
    const std::string type = FileTypeOf(path);
    return type != ".TXT" && !IsListedType(s.VideoTypes, type) && !IsListedType(s.WebTypes, type);
}

} // namespace

std::vector<SheetFile> FilesForSheets(const Context& m) {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<SheetFile> files;
    for (int row = 0; row < list.Count(); ++row) {
        std::string path = JoinPath(list.Path(), list.Text(row));
        if (!m.state.SheetsOfKept || IsKept(m, path)) files.push_back({row, std::move(path)});
    }
    return files;
}

SheetJob::SheetJob(Context& context, Printer& printer, const SheetLayout& layout, PrintFaces faces,
                   const std::string& now, const std::vector<SheetFile>& files)
    : m(context), m_printer(printer), m_layout(layout), m_plan(PlanOf(context, layout, files)),
      m_sheet(printer, layout, std::move(faces),
              SheetHeading(context.state.Version, now, context.controls.FileListBox->Path()),
              m_plan.pageCount),
      m_paths(PathsOf(files, m_plan)), m_pictures(context, m_paths),
      m_counterBefore(context.state.TextNumOf) {}

SheetJob::~SheetJob() {
    ShowCounter(m_counterBefore);
}

void SheetJob::ShowCounter(const std::string& counter) {
    m.state.TextNumOf = counter;
    m.controls.TextNumOf->setText(ToQt(counter));
}

std::string SheetJob::Progress() const {
    return "Printing " + std::to_string(m_layout.PerPage()) + " picture thumbnail sheets page (" +
           std::to_string(m_sheet.NextPage()) + " of " + std::to_string(m_plan.pageCount) + ") # " +
           std::to_string(m_sheet.NextOnPage());
}

bool SheetJob::Run(const BatchRun& batch, KeptNote& notes) {
    for (int number = m_plan.first; number <= m_plan.last; ++number) {
        const std::string& path = m_paths[static_cast<std::size_t>(number - m_plan.first)];
        SetCrashFile(path);
        ShowCounter(std::to_string(number) + " of " + std::to_string(m_plan.fileCount));
        if (!batch.Step(Progress())) return false;
        SheetCell cell = Cell(number);
        std::string note = notes.NoteOf(path);
        if (m.state.PrintNotesOnThumbnails) cell.note = std::move(note);
        m_sheet.Add(cell);
    }
    return true;
}

SheetCell SheetJob::Cell(int fileNumber) {
    PassedPicture passed = m_pictures.Show(static_cast<std::size_t>(fileNumber - m_plan.first));
    const PictureInfo& info = m_pictures.Info();
    SheetCell cell =
        CellFor(m_layout, fileNumber, info, passed.inPane.width(), passed.inPane.height());
    std::string fault;
    cell.picture = ImageForPaper(std::move(passed.picture),
                                 m_printer.PixelsFor(cell.size.width, cell.size.height), &fault);
    if (fault.empty() && IsPicture(m.state, info.Filename)) fault = passed.fault;
    if (!fault.empty()) m_faults.push_back({info.Filename, fault});
    return cell;
}

} // namespace tarn
