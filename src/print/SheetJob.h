// Puts each picture of a list, as the window would show it, into its cell.
#pragma once

#include "desk/Context.h"
#include "desk/batch/PassingPictures.h"
#include "desk/commands/Outcome.h"
#include "print/ThumbnailSheet.h"

#include <string>
#include <vector>

namespace tarn {

class BatchRun;
class KeptNote;

// A file of the list that goes onto the sheets.
struct SheetFile {
    int row = 0;
    std::string path;
};
std::vector<SheetFile> FilesForSheets(const Context& m); // all, or those that are kept

class SheetJob {
public:
    SheetJob(Context& context, Printer& printer, const SheetLayout& layout, PrintFaces faces,
             const std::string& now, const std::vector<SheetFile>& files);
    ~SheetJob(); // the counter is that of the current picture again

    // False when it was cancelled or the program ends.
    bool Run(const BatchRun& batch, KeptNote& notes);

    // Of pictures that are not read, or not whole, and of those whose pixels went away while they
    // were printed; empty when all is well.
    const std::vector<FileFault>& Faults() const { return m_faults; }

private:
    std::string Progress() const;
    void ShowCounter(const std::string& counter);
    SheetCell Cell(int fileNumber);

    Context& m;
    Printer& m_printer;
    const SheetLayout& m_layout;
    SheetPlan m_plan;
    ThumbnailSheet m_sheet;
    std::vector<std::string> m_paths; // those that are printed
    PassingPictures m_pictures;
    std::string m_counterBefore;
    std::vector<FileFault> m_faults;
};

} // namespace tarn
