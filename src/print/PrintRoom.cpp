#include "print/PrintRoom.h"

#include "common/dates.h"
#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/KeptFiles.h"
#include "desk/batch/KeptNote.h"
#include "desk/controls/SheetEntries.h"
#include "platform/CrashNote.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "print/DataSheet.h"
#include "print/PaperImage.h"
#include "print/SheetJob.h"
#include "print/frmPrintPreview.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"
#include "widgets/printing/clsPrintDialog.h"

#include <QAction>
#include <QFontInfo>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>

#include <algorithm>

namespace tarn {

namespace {

std::string Stem(const std::string& name) {
    return name.substr(0, name.rfind('.'));
}

} // namespace

PrintRoom::PrintRoom(Context& context) : m(context) {}

PrintRoom::~PrintRoom() = default;

void PrintRoom::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.PrintButton, [this] { PrintButton_Click(); });
    Connect(c.PrintSetup, [this] { PrintSetup_Click(); });
    Connect(c.Printc4Button, [this] { Printc4Button_Click(); });
    Connect(c.PrintCButton, [this] { PrintCButton_Click(); });
    Connect(c.PrintCMButton, [this] { PrintCMButton_Click(); });
    Connect(c.PrintCSButton, [this] { PrintCSButton_Click(); });
    Connect(c.PrintCancelButton, [this] { PrintCancelButton_Click(); });
    QObject::connect(c.PrintMenu, &QMenu::aboutToShow, c.PrintMenu, [this] {
        ShowPageCounts(m.controls, static_cast<int>(FilesForSheets(m).size()));
    });
}

bool PrintRoom::MayPrint() const {
    const ProgramState& s = m.state;
    return !s.BatchRuns && !s.SlideViewing && !s.Closing;
}

bool PrintRoom::IsEnlarged() const {
    const ProgramState& s = m.state;
    const QSize window = m.controls.FileListBox->window()->size() * kTwipsPerPixel;
    return s.MainStartWidth > 0 &&
           (window.width() > s.MainStartWidth || window.height() > s.MainStartHeight);
}

PrintFaces PrintRoom::Faces() const {
    const MainControls& c = m.controls;
    const QFontInfo list(c.List1->font());
    const QFontInfo notes(c.NotesBox->font());
    return {FromQt(c.TextNumOf->font().family()), "Courier New", list.pointSizeF(),
            FromQt(c.NotesBox->font().family()), notes.pointSizeF()};
}

void PrintRoom::PrintSetup_Click() {
    if (MayPrint()) ShowPrinter(clsPrintDialog::kSetup, "print.pdf");
}

// What was chosen becomes the printer of this run and of the next ones.
bool PrintRoom::ShowPrinter(long flags, const std::string& fileName) {
    ProgramState& s = m.state;
    m_choice = {s.PrinterName, s.PrintToFile,    {},
                s.PrintPaper,  s.PrintLandscape, std::max(1, s.PrintCopies)};
    m_choice.pdf = JoinPath(s.PrintFolder.empty() ? m.files.HomeFolder() : s.PrintFolder, fileName);
    clsPrintDialog dialog(m.dialogs, m_choice);
    dialog.Flags = flags;
    if (!dialog.ShowPrinter()) return false;
    s.PrinterName = m_choice.printer;
    s.PrintToFile = m_choice.toFile;
    if (m_choice.toFile) s.PrintFolder = FolderOf(m_choice.pdf);
    s.PrintPaper = m_choice.paper;
    s.PrintLandscape = m_choice.landscape;
    s.PrintCopies = m_choice.copies;
    return true;
}

void PrintRoom::PrintButton_Click() {
    const ProgramState& s = m.state;
    if (!MayPrint() || !s.ImageLoaded) return;
    if (!ShowPrinter(clsPrintDialog::kNormal, Stem(s.FileNameOnly) + ".pdf")) return;
    auto printer = m.printing.Open(m_choice);
    const PictureBox& pane = *m.controls.Picture1;
    const double twips = kTwipsPerPixel / pane.devicePixelRatioF();
    DataSheet sheet;
    sheet.version = s.Version;
    sheet.path = s.Filename;
    sheet.size = DataPictureSize(pane.Picture().width() * twips, pane.Picture().height() * twips,
                                 IsEnlarged());
    std::string fault;
    sheet.picture = ImageForPaper(m.display.ShownPicture(),
                                  printer->PixelsFor(sheet.size.width, sheet.size.height), &fault);
    if (!fault.empty()) m.shell.ShowError(fault + " - " + s.FileNameOnly);
    sheet.rows = s.PanelRows;
    sheet.note = s.NoteText;
    sheet.now = NowText();
    PrintDataSheet(*printer, sheet, Faces());
    Finish(std::move(printer));
}

void PrintRoom::PrintCancelButton_Click() {
    m.shell.ShowMessage("Printing cancelled");
    m.state.BatchCancelled = true;
}

void PrintRoom::PrintSheets(const SheetLayout& layout) {
    ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    if (!MayPrint() || list.Count() == 0) return;
    if (s.SheetsOfKept && !AwaitMarks(m)) return m.shell.ShowMessage("Cancelled");
    if (FilesForSheets(m).empty()) return m.shell.ShowMessage("No kept files in this list");
    if (IsEnlarged()) {
        m.shell.ShowMessage(
            "Sheets are printed with the main window no larger than at the start (" +
            std::to_string(s.MainStartWidth / kTwipsPerPixel) + " x " +
            std::to_string(s.MainStartHeight / kTwipsPerPixel) +
            "): make it smaller, or end the program and start it again at this size");
        return;
    }
    const std::string folder = LastPart(WithoutTrailingSeparator(list.Path()));
    const std::string name =
        (folder.empty() ? "" : folder + " ") + std::string(layout.name) + ".pdf";
    if (!ShowPrinter(clsPrintDialog::kNormal, name)) return;
    PrinterChoice upright = m_choice;
    upright.landscape = false;
    auto printer = m.printing.Open(upright);

    KeptNote kept(m);
    Outcome said;
    const bool done = RunSheets(*printer, layout, kept, said);
    SetCrashFile(s.Filename);
    if (m.events.ProgramEnds() || s.Closing) return;
    const std::string inBuffer = kept.Settle();
    if (!done)
        m.shell.ShowMessage(said.text + inBuffer);
    else
        Finish(std::move(printer), inBuffer);
    if (!said.fault.empty()) m.shell.ShowError(said.fault);
    if (!said.faults.empty())
        m.shell.ShowFaults("Pictures that could not be read whole:", said.faults);
}

bool PrintRoom::RunSheets(Printer& printer, const SheetLayout& layout, KeptNote& notes,
                          Outcome& said) {
    const BatchRun batch(m, m.controls.PrintCancelButton);
    SheetJob job(m, printer, layout, Faces(), NowText(), FilesForSheets(m));
    const bool done = job.Run(batch, notes);
    if (!done) said.text = "Printing cancelled";
    said.faults = job.Faults();
    if (!said.faults.empty())
        said.fault = said.faults.front().why + " - " + LastPart(said.faults.front().path);
    if (!done) printer.Kill();
    return done;
}

void PrintRoom::Finish(std::unique_ptr<Printer> printer, const std::string& more) {
    if (!m.state.PrintPreview) {
        Send(*printer, m_choice, more);
        return;
    }
    if (!m_preview) m_preview = std::make_unique<frmPrintPreview>(m);
    m_preview->ShowPages(std::move(printer), m_choice,
                         [this, choice = m_choice](Printer& sent) { return Send(sent, choice); });
    m.shell.ShowMessage("Pages shown in the preview" + more);
}

bool PrintRoom::Send(Printer& printer, const PrinterChoice& choice, const std::string& more) {
    m.shell.SetBusy(true);
    std::string error;
    const bool sent = printer.End(&error);
    m.shell.SetBusy(false);
    m.shell.ShowMessage((!sent           ? "Printing failed: " + error
                         : choice.toFile ? "'" + choice.pdf + "' file created"
                                         : "Printed on '" + choice.printer + "'") +
                        more);
    return sent;
}

} // namespace tarn
