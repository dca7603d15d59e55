// Import and export of pictures and notes: asks for a folder, plans, asks once about what stands
// there already, and copies with progress and cancel.
#pragma once

#include "desk/Context.h"
#include "desk/Room.h"
#include "fileops/CopyPlan.h"

#include <string>
#include <vector>

namespace tarn {

class ImportExport : public Room {
public:
    explicit ImportExport(Context& context) : m(context) {}

    void ConnectControls() override;

    void ImportNotesFilesButton_Click();
    void ImportButton_Click();
    void ImportNotesFormat_Click();
    void CopySelectedNotesFilesButton_Click();
    void CopyNotesFilesButton_Click();
    // 0 files and notes of the selection, 1 of the folder; 2 and 3 the same without notes.
    void ExportFilesButton_Click(int index);
    void ExportNotesFormat_Click();

private:
    std::vector<std::string> ListedNames(bool selectedOnly) const;
    bool HasNotesFolder(); // false with a word when none is set
    std::string AskForSource(const std::string& title);
    std::string AskForTarget(const std::string& title);
    bool IsOurs(const std::string& folder, const std::string& what);
    void ExportNotes(bool selectedOnly);
    void Import(const CopyRequest& request, const std::string& to);
    // Both return what the message line is to say.
    Outcome PlanAndRun(const CopyRequest& request, const std::string& verb, const std::string& to);
    Outcome Run(CopyPlan plan, const std::string& verb, const std::string& to);

    Context& m;
};

} // namespace tarn
