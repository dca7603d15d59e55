#include "web/WebRoom.h"

#include "common/paths.h"
#include "history/Changes.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/WholeFile.h"
#include "web/SavedValues.h"
#include "web/frmHtmlLayout.h"
#include "web/frmHtmlThumb.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

namespace tarn {

WebRoom::WebRoom(Context& context) : m(context) {}

WebRoom::~WebRoom() = default;

void WebRoom::ConnectControls() {
    const MainControls& c = m.controls;
    Connect(c.CreateAppendHtmlFile, [this] { CreateAppendHtmlFile_Click(); });
    Connect(c.HtmlThumbButton, [this] { HtmlThumbButton_Click(); });
    Connect(c.HtmlEditButton, [this] { HtmlEditButton_Click(); });
    Connect(c.HtmlNotepadButton, [this] { HtmlNotepadButton_Click(); });
    Connect(c.HtmlEditCustomButton, [this] { HtmlEditCustomButton_Click(); });
    Connect(c.HtmlDeleteButton, [this] { HtmlDeleteButton_Click(); });
}

void WebRoom::CreateAppendHtmlFile_Click() {
    // Opened anew: numbers and links of the page before are forgotten.
    if (!m_layout || !m_layout->isVisible()) m_layout = std::make_unique<frmHtmlLayout>(m);
    m_layout->ShowForm();
}

void WebRoom::HtmlThumbButton_Click() {
    const std::string folder = m.controls.FileListBox->Path();
    std::string& last = m.state.HtmlGalleryPath;
    const bool lastHere = !last.empty() && FolderOf(last) == folder;
    const std::string path = m.dialogs.ChooseTarget("Create Html file using thumbnails & Images",
                                                    lastHere ? last : folder, kPageFilter, "html");
    if (path.empty()) return;
    if (m_layout && m_layout->HasPage() && m.files.IsSameFile(path, m_layout->PagePath())) {
        m.shell.ShowMessage("'" + LastPart(path) + "' is open in the page form");
        return;
    }
    if (m_gallery && m_gallery->isVisible()) m_gallery->Form_Unload(); // options not yet used
    if (m.files.Exists(path)) {
        if (m.state.HtmlOverwriteWarning &&
            !m.dialogs.Confirm(Dialogs::Icon::Exclamation, "Confirm Html Overwrite",
                               path + "\nWill be overwritten and all Image*.html files deleted!"))
            return;
        std::string error;
        const auto page = ReadWhole(m.files, path, kLargestPage, &error);
        if (!page)
            m.shell.ShowMessage("'" + LastPart(path) + "' - its settings are not read: " + error);
        if (page) ReadSavedValues(*page, static_cast<GallerySettings&>(m.state));
    }
    if (!m_gallery) m_gallery = std::make_unique<frmHtmlThumb>(m);
    last = path;
    m_gallery->ShowForm(path);
}

std::string WebRoom::AskForFile(const char* title, const char* filter) {
    return m.dialogs.OpenFile(title, m.controls.FileListBox->Path(), filter);
}

void WebRoom::Say(const std::string& failure, const std::string& done) {
    m.shell.ShowMessage(failure.empty() ? done : "ERROR - " + failure);
}

void WebRoom::HtmlEditButton_Click() {
    const std::string path = AskForFile("Open Html file", kPageFilter);
    if (!path.empty())
        Say(m.desktop.OpenAssociated(path), "'" + LastPart(path) + "' opened in its program");
}

void WebRoom::HtmlNotepadButton_Click() {
    const std::string path =
        AskForFile("Open Html & css file", "Html and css (*.html *.htm *.css)");
    if (!path.empty())
        Say(m.desktop.EditText(path), "'" + LastPart(path) + "' opened in the text editor");
}

void WebRoom::HtmlEditCustomButton_Click() {
    const std::string path = AskForFile("Edit Html file", kPageFilter);
    if (!path.empty())
        Say(m.desktop.StartProgram(m.state.HtmlEditor, path),
            "'" + LastPart(path) + "' opened in " + LastPart(m.state.HtmlEditor));
}

void WebRoom::HtmlDeleteButton_Click() {
    const std::string folder = m.controls.FileListBox->Path();
    std::vector<std::string> names;
    bool open = false;
    for (std::string& name : m.files.FileNames(folder).value_or(std::vector<std::string>())) {
        if (!IsPageName(name)) continue;
        const bool inForm = m_layout && m_layout->HasPage() &&
                            m.files.IsSameFile(JoinPath(folder, name), m_layout->PagePath());
        open = open || inForm;
        if (!inForm) names.push_back(std::move(name));
    }
    const std::string kept = open ? "\nThe page that is open in the form stays." : "";
    if (names.empty()) {
        m.shell.ShowMessage((open ? "No other Html files in '" : "No Html files in '") + folder +
                            "'");
        return;
    }
    if (!m.dialogs.Confirm(Dialogs::Icon::Exclamation, "Confirm Html Delete",
                           std::to_string(names.size()) + " Html files in '" + folder +
                               "'\nWill be deleted!" + kept))
        return;
    std::string fault;
    std::size_t done = 0;
    Changes changes(m.history, "Delete of " + std::to_string(names.size()) + " Html files");
    for (const std::string& name : names) {
        std::string error;
        if (changes.ThrowAway(JoinPath(folder, name), &error))
            ++done;
        else if (fault.empty())
            fault.append(", '").append(name).append("' not: ").append(error);
    }
    m.navigation.RefreshAfterDelete();
    m.shell.ShowMessage("Deleted " + std::to_string(done) + " Html files" + fault);
}

void WebRoom::KeepValues() {
    if (m_layout) m_layout->KeepChecks();
    if (m_gallery) m_gallery->Form_Unload();
}

void WebRoom::BreakOff() {
    if (m_layout) m_layout->Form_Unload();
}

} // namespace tarn
