#include "console/decoders/Sheets.h"

#include "common/codepage.h"
#include "common/dates.h"
#include "common/paths.h"
#include "desk/state/Replay.h"
#include "desk/state/ShellState.h"
#include "display/Placeholder.h"
#include "imaging/PicturesAhead.h"
#include "imaging/fits/FitsLines.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"
#include "pictureinfo/PictureInfoReader.h"
#include "platform/Files.h"
#include "platform/ProgramFiles.h"
#include "print/DataSheet.h"
#include "print/PaperImage.h"
#include "print/ThumbnailSheet.h"
#include "widgets/printing/PageSizes.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kAhead = 3; // pictures decoded while one is put onto the sheet
constexpr double kWidest = 4;     // sides of a picture that are decoded at once, without a limit

class SheetWriter {
public:
    explicit SheetWriter(const SheetRequest& request)
        : m_request(request), m_printer(MakePdfPrinter(*m_files, ChoiceOf(request))),
          m_notes(*m_files) {
        if (!request.notes.empty()) m_notes.index.SetFolder(request.notes);
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
        choice.pdf = request.out;
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
        return WithoutTrailingSeparator(m_files->Absolute(m_request.folder));
    }

    SheetCell Cell(const SheetLayout& layout, std::size_t index) {
        ImgX picture = Load(index);
        SheetCell cell =
            CellFor(layout, static_cast<int>(index) + 1, m_info, picture.Width(), picture.Height());
        cell.picture = ForPaper(std::move(picture), cell.size);
        if (m_request.printNotes) cell.note = NoteOf(m_info.FileNameOnly);
        return cell;
    }

    // Only of a picture that can be read.
    bool PrintData() {
        m_wanted = m_printer->PixelsFor(kDataBoxWidth * 2, kDataBoxHeight * 2);
        ImgX picture = Load(0);
        if (!m_result.failures.empty()) return false;
        DataSheet sheet;
        sheet.version = ShellState().Version;
        sheet.path = m_files->Absolute(m_info.Filename);
        sheet.size = DataPictureSize(picture.Width(), picture.Height(), true);
        sheet.picture = ForPaper(std::move(picture), sheet.size);
        sheet.rows = m_info.PanelRows;
        for (std::string& line : FitsLinesOf(m_info.Filename))
            sheet.rows.push_back(std::move(line));
        sheet.note = NoteOf(m_info.FileNameOnly);
        sheet.now = m_now;
        PrintDataSheet(*m_printer, sheet, {});
        return true;
    }

    // The file's picture, upright, and its record; what stands in for it where there is none.
    ImgX Load(std::size_t index) {
        const std::string path = JoinPath(m_request.folder, m_request.names[index]);
        Begin(path);
        ImgX picture;
        std::string error = picture.LoadFile(path, m_wanted, m_ahead);
        ExpectBehind(index);
        if (!picture.HasImage() && picture.LoadWithSystemReader(path).empty()) error.clear();
        const bool isText = FileTypeOf(path) == ".TXT";
        if (!error.empty() && !isText) m_result.failures.push_back({path, error});
        if (!picture.HasImage()) {
            const Placeholder placeholder = PlaceholderFor(FileTypeOf(path));
            picture.LoadFile(ProgramFile(std::string(placeholder.picture)), m_wanted);
            return picture;
        }
        m_info.ImageWidth = picture.Width();
        m_info.ImageHeight = picture.Height();
        m_reader.ReadPictureInfo(m_info);
        if (!picture.IsUpright()) TurnUpright(m_info.ExpOrientation, picture);
        return picture;
    }

    // What is read of a picture alone is empty for a file without one.
    void Begin(const std::string& path) {
        BeginPicture(m_info, path);
        m_info.FileDate = FormatFileDate(ReadFileFacts(path));
        for (std::string* text :
             {&m_info.PictureDate, &m_info.ExpSpeed, &m_info.ExpTime, &m_info.ExpSizeLine})
            text->clear();
    }

    void ExpectBehind(std::size_t index) {
        std::vector<PictureWish> wishes;
        const std::size_t end = std::min(m_request.names.size(), index + 1 + kAhead);
        for (std::size_t next = index + 1; next < end; ++next)
            wishes.push_back({JoinPath(m_request.folder, m_request.names[next]), m_wanted, {}});
        m_ahead.Expect(wishes);
    }

    QImage ForPaper(ImgX picture, PaperSize size) {
        std::string fault;
        QImage image = ImageForPaper(std::move(picture),
                                     m_printer->PixelsFor(size.width, size.height), &fault);
        if (!fault.empty()) m_result.failures.push_back({m_info.Filename, fault});
        return image;
    }

    std::string NoteOf(const std::string& name) const {
        if (m_request.notes.empty()) return {};
        const auto bytes = m_notes.Read(NotePath(m_request.notes, name));
        return bytes ? FromCodePage(WithoutOldMarks(*bytes)) : std::string();
    }

    const SheetRequest& m_request;
    std::unique_ptr<Files> m_files = MakeFiles();
    std::unique_ptr<Printer> m_printer;
    NoteStore m_notes;
    PictureInfoReader m_reader;
    PictureInfo m_info;
    PicturesAhead m_ahead;
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
