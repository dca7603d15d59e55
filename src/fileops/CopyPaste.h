// Copy, cut and paste of files between folders. Notes do not travel.
#pragma once

#include "desk/Context.h"
#include "fileops/PicturePlan.h"

#include <functional>
#include <string>
#include <vector>

namespace tarn {

class CopyPaste {
public:
    // `pushUndo` gets what a paste of cut files did.
    explicit CopyPaste(Context& context) : m(context) {}

    void ConnectControls();

    void CopyButton_Click() { Gather(false); }
    void CutButton_Click() { Gather(true); }
    void PasteButton_Click();

private:
    void Gather(bool cut);
    void SetPasteCommands(bool enabled);
    void ClipboardChanged();
    void Paste(const std::vector<std::string>& sources, bool cut);
    struct Report {
        std::string message; // empty: all arrived
        std::string error;
    };
    std::vector<NewNamePlan> PutAll(const std::vector<std::string>& sources, bool cut,
                                    Changes& changes, Report& report);
    void EndCut(std::size_t arrived, std::size_t all);
    void ShowPasted(const std::string& name);

    Context& m;
    std::vector<std::string> m_files; // full paths, remembered by Copy or Cut
    bool m_cutPending = false;        // to be thrown away once they are pasted
    bool m_theirs = false; // what another program put on the clipboard is the later choice
};

} // namespace tarn
