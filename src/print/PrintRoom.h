// The print menu: the data sheet of the picture on show, thumbnail sheets of the whole list, and
// the printer they go to.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "print/PrintFaces.h"
#include "print/ThumbnailSheet.h"
#include "widgets/printing/Printer.h"

#include <memory>
#include <string>

namespace tarn {

class KeptNote;
class frmPrintPreview;

class PrintRoom : public Room {
public:
    explicit PrintRoom(Context& context);
    ~PrintRoom() override;

    void ConnectControls() override;

    void PrintButton_Click();
    void PrintSetup_Click();
    void Printc4Button_Click() { PrintSheets(kSheet2x2); }
    void PrintCButton_Click() { PrintSheets(kSheet3x4); }
    void PrintCMButton_Click() { PrintSheets(kSheet4x6); }
    void PrintCSButton_Click() { PrintSheets(kSheet5x8); }
    void PrintCancelButton_Click();

    frmPrintPreview* Preview() const { return m_preview.get(); } // null before its first opening

private:
    bool MayPrint() const;
    bool IsEnlarged() const;
    PrintFaces Faces() const;
    bool ShowPrinter(long flags, const std::string& fileName);
    void PrintSheets(const SheetLayout& layout);
    bool RunSheets(Printer& printer, const SheetLayout& layout, KeptNote& notes, Outcome& said);
    // To the printer or into the preview; `more` ends the message that tells it.
    void Finish(std::unique_ptr<Printer> printer, const std::string& more = {});
    bool Send(Printer& printer, const PrinterChoice& choice, const std::string& more = {});

    Context& m;
    PrinterChoice m_choice; // of this run; what is kept of it lies on the desk
    std::unique_ptr<frmPrintPreview> m_preview;
};

} // namespace tarn
