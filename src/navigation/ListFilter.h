// The class boxes beside the file list and the two windows that narrow it: frmFileTypes for the
// types behind the boxes, frmFilter for as long as it is open.
#pragma once

#include "desk/Context.h"
#include "navigation/ClassFilter.h"
#include "navigation/HiddenFiles.h"

#include <functional>
#include <memory>
#include <string>

namespace tarn {

class frmFileTypes;
class frmFilter;

class ListFilter {
public:
    // `hint`: what the pane says while it shows nothing has changed.
    ListFilter(Context& context, std::function<void()> hint);
    ~ListFilter();

    void ConnectControls();

    void PCheck_Click();
    void VCheck_Click();
    void WCheck_Click();
    void FCheck_Click();
    void CCheck_Click();
    void TCheck_Click();

    // A file that was asked for by its name: ticks the box of its class, if that lists it.
    void ListClassOf(const std::string& path);

    // Files of the folder that the boxes keep out of the list, said as a sentence without its end;
    // empty: there are none.
    const std::string& Hidden() const { return m_hidden; }
    void ShowHiddenFiles(); // ticks the boxes of their classes

    // Puts FileTypes on the list and keeps the current file selected.
    void ApplyFileTypes();

    // The commands that need a picture to begin with; turned false while none is shown.
    void EnableSlideCommands(bool& enabled);

    void SetFileTypesButton_Click();
    void FilesFilterButton2_Click();
    void SetFilterShown(bool shown); // without closing it

private:
    ClassBoxes Boxes() const;
    QCheckBox* BoxOf(FileClass fileClass) const;
    void TellHidden();

    Context& m;
    std::function<void()> m_hint;
    std::string m_hidden;
    // FileTypes as it stood when FCheck, CCheck or TCheck was ticked.
    std::string m_fitsSaved;
    std::string m_rawSaved;
    std::string m_textSaved;
    std::unique_ptr<frmFileTypes> m_fileTypes;
    std::unique_ptr<frmFilter> m_filter; // keeps its boxes from one opening to the next
};

} // namespace tarn
