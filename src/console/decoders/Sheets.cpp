#include "console/decoders/Sheets.h"

#include "common/codepage.h"
#include "common/dates.h"
#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "desk/state/ShellState.h"
#include "facts/PictureReading.h"
#include "history/Changes.h"
#include "imaging/PicturesAhead.h"
#include "imaging/fits/FitsLines.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"
#include "platform/Files.h"
#include "print/DataSheet.h"
#include "print/PaperImage.h"
#include "print/ThumbnailSheet.h"
#include "widgets/printing/PageSizes.h"

#include <utility>

namespace tarn {

namespace {

constexpr double kWidest = 4; // sides of a picture that are decoded at once, without a limit

class SheetWriter {
public:
    explicit SheetWriter(const SheetRequest& request)
        : m_request(request), m_changes(m_open.history, "Sheet '" + LastPart(request.out) + "'"),
          m_printer(MakePdfPrinter(m_changes, ChoiceOf(request))), m_notes(*m_open.files) {
        if (!request.notes.empty()) m_notes.index.SetFolder(request.notes);
        for (const std::string& name : request.names)
            m_paths.push_back(JoinPath(request.folder, name));
        m_now = request.now.empty() ? NowText() : request.now;
    }

    SheetResult Write() {
        const SheetLayout* layout = FindSheet(m_request.layout);
        const bool drawn = layout ? PrintThumbnails(*layout) : PrintData();
        if (drawn) m_printer->End(&m_result.error);
        return m_result;
    }

private:
    static PrinterChoice ChoiceOf(const SheetRequest& request) {
        PrinterChoice choice;
        choice.toFile = true;
        choice.pdf = MakeFiles()->Absolute(request.out); // as the history knows it
        choice.paper = request.paper;
        return choice;
    }

    bool PrintThumbnails(const SheetLayout& layout) {
        const auto count = static_cast<int>(m_request.names.size());
        const SheetPlan plan = PlanSheets(count, layout.PerPage(), false, 0);
        ThumbnailSheet sheet(*m_printer, layout, {},
                             SheetHeading(ShellState().Version, m_now, AbsoluteFolder()),
                             plan.pageCount);
        const double wide = layout.boxWidth > 0 ? layout.boxWidth : kWidest * layout.boxHeight;
        m_wanted = m_printer->PixelsFor(wide, layout.boxHeight);
        for (std::size_t i = 0; i < m_request.names.size(); ++i) sheet.Add(Cell(layout, i));
        return true;
    }

    std::string AbsoluteFolder() const {
        return WithoutTrailingSeparator(m_open.files->Absolute(m_request.folder));
    }

    SheetCell Cell(const SheetLayout& layout, std::size_t index) {
        ImgX picture = Load(index);
        SheetCell cell = CellFor(layout, static_cast<int>(index) + 1, m_reading.Info(),
                                 picture.Width(), picture.Height());
        cell.picture = ForPaper(std::move(picture), cell.size);
        if (m_request.printNotes) cell.note = NoteOf(m_reading.Info().FileNameOnly);
        return cell;
    }

    // Only of a picture that can be read.
    bool PrintData() {
        m_wanted = m_printer->PixelsFor(kDataBoxWidth * 2, kDataBoxHeight * 2);
        ImgX picture = Load(0);
        if (!m_result.failures.empty()) return false;
        DataSheet sheet;
        sheet.version = ShellState().Version;
        sheet.path = m_open.files->Absolute(m_reading.Info().Filename);
        sheet.size = DataPictureSize(picture.Width(), picture.Height(), true);
        sheet.picture = ForPaper(std::move(picture), sheet.size);
        sheet.rows = m_reading.Info().PanelRows;
        sheet.note = NoteOf(m_reading.Info().FileNameOnly);
        sheet.now = m_now;
        PrintDataSheet(*m_printer, sheet, {});
        return true;
    }

    ImgX Load(std::size_t index) {
        const std::string path = m_paths[index];
        ReadPicture read = m_reading.Read(path, m_wanted);
        m_reading.Expect(m_paths, index + 1, m_wanted);
        if (!read.fault.empty() && FileTypeOf(path) != ".TXT")
            m_result.failures.push_back({path, read.fault});
        return std::move(read.picture);
    }

    QImage ForPaper(ImgX picture, PaperSize size) {
        std::string fault;
        QImage image = ImageForPaper(std::move(picture),
                                     m_printer->PixelsFor(size.width, size.height), &fault);
        if (!fault.empty()) m_result.failures.push_back({m_reading.Info().Filename, fault});
        return image;
    }

    std::string NoteOf(const std::string& name) const {
        if (m_request.notes.empty()) return {};
        const auto bytes = m_notes.Read(NotePath(m_request.notes, name));
        return bytes ? FromCodePage(WithoutOldMarks(*bytes)) : std::string();
    }

    const SheetRequest& m_request;
    OpenHistory m_open;
    Changes m_changes;
    std::unique_ptr<Printer> m_printer;
    NoteStore m_notes;
    PicturesAhead m_ahead;
    PictureReading m_reading{m_ahead};
    std::vector<std::string> m_paths;
    QSize m_wanted;
    std::string m_now;
    SheetResult m_result;
};

} // namespace

SheetResult WriteSheet(const SheetRequest& request) {
    if (IsKnownPaper(request.paper)) return SheetWriter(request).Write();
    SheetResult result;
    result.badPaper = request.paper;
    return result;
}

} // namespace tarn
