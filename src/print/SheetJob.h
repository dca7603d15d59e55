// Walks through the list and puts each picture, loaded as for the screen, into its cell.
#pragma once

#include "desk/Context.h"
#include "print/ThumbnailSheet.h"

#include <string>

namespace tarn {

class BatchRun;

class SheetJob {
public:
    SheetJob(Context& context, Printer& printer, const SheetLayout& layout, PrintFaces faces,
             const std::string& now);

    // False when it was cancelled or the program ends. What it has loaded is still the program's
    // current picture.
    bool Run(const BatchRun& batch);

    // Of a picture whose pixels went away while it was printed; empty when all is well.
    const std::string& Fault() const { return m_fault; }

private:
    std::string Progress() const;
    void Load(int fileNumber);
    SheetCell Cell(int fileNumber);
    void ExpectNext(int fileNumber);

    Context& m;
    Printer& m_printer;
    const SheetLayout& m_layout;
    SheetPlan m_plan;
    ThumbnailSheet m_sheet;
    std::string m_fault;
};

} // namespace tarn
