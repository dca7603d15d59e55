#include "app/outside/OutsidePrograms.h"

#include "common/paths.h"
#include "platform/Desktop.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QPushButton>

namespace tarn {

void OutsidePrograms::ConnectControls() {
    MainControls& c = m.controls;
    for (QAction* entry : {c.OpenButton, c.OpenButton2})
        entry->setProperty("baseCaption", entry->text());
    Connect(c.OpenWindowsExplorerButton, [this] { OpenWindowsExplorerButton_Click(); });
    Connect(c.OpenNotepadButton, [this] { OpenNotepadButton_Click(); });
    Connect(c.OpenButton, [this] { OpenButton_Click(); });
    Connect(c.OpenButton2, [this] { OpenButton2_Click(); });
    Connect(c.OpenButtonF, [this] { OpenButton2_Click(); });
    Connect(c.OpenImagesPlusButton, [this] { OpenImagesPlusButton_Click(); });
    Connect(c.PopupOpenButton, [this] { PopupOpenButton_Click(); });
    Connect(c.EditButton2, [this] { EditButton2_Click(); });
    Connect(c.SetOpenButton, [this] { SetOpenButton_Click(); });
    Connect(c.ClearOpenButton, [this] { ClearOpenButton_Click(); });
    Connect(c.FindImageEditCustomButton,
            [this] { ChooseProgram(m.state.ImagesPlusExp, "Set Edit Image Custom Program"); });
    Connect(c.FindHtmlEditorButton,
            [this] { ChooseProgram(m.state.HtmlEditor, "Set Html Editor Program"); });
    Connect(c.FindImagesPlusButton,
            [this] { ChooseProgram(m.state.ImagesPlus, "Set ImagesPlus Program"); });
}

void OutsidePrograms::ShowChosenPrograms() {
    const ProgramState& s = m.state;
    const MainControls& c = m.controls;
    const QString name = ToCaption(LastPart(s.OpenIn));
    for (QAction* entry : {c.OpenButton, c.OpenButton2}) {
        entry->setText(entry->property("baseCaption").toString() + name);
        entry->setVisible(!s.OpenIn.empty());
    }
    c.OpenButtonF->setText(QStringLiteral("Open ") + name);
    c.OpenButtonF->setToolTip(ToToolTip("Open picture in " + s.OpenIn));
    c.OpenButtonF->setVisible(!s.OpenIn.empty());
    c.HtmlEditCustomButton->setVisible(!s.HtmlEditor.empty());
}

bool OutsidePrograms::HasFile() {
    const std::string& file = m.state.Filename;
    if (!file.empty() && m.files.Exists(file)) return true;
    m.shell.ShowMessage(file.empty() ? "No file is selected" : "'" + file + "' does not exist");
    return false;
}

void OutsidePrograms::Say(const std::string& failure, const std::string& done) {
    m.shell.ShowMessage(failure.empty() ? done : "ERROR - " + failure);
}

void OutsidePrograms::OpenWindowsExplorerButton_Click() {
    const std::string& folder = m.controls.FileListBox->Path();
    const std::string& file = m.state.Filename;
    const bool inFolder = FolderOf(file) == folder && m.files.Exists(file);
    Say(m.desktop.ShowInFileManager(folder, inFolder ? file : std::string()),
        "Opened '" + folder + "'");
}

void OutsidePrograms::OpenNotepadButton_Click() {
    const ProgramState& s = m.state;
    const bool isText = !s.Filename.empty() && (IsListedType("*.txt;*.log", s.FileType) ||
                                                IsListedType(s.WebTypes, s.FileType));
    if (isText && !HasFile()) return;
    Say(m.desktop.EditText(isText ? s.Filename : std::string()), "Text editor opened");
}

void OutsidePrograms::OpenFileIn(const std::string& program) {
    if (!HasFile()) return;
    Say(m.desktop.StartProgram(program, m.state.Filename),
        "'" + LastPart(m.state.Filename) + "' opened in " + LastPart(program));
}

void OutsidePrograms::OpenButton_Click() {
    const std::string& folder = m.controls.FileListBox->Path();
    Say(m.desktop.StartProgram(m.state.OpenIn, folder),
        "'" + folder + "' opened in " + LastPart(m.state.OpenIn));
}

void OutsidePrograms::OpenButton2_Click() {
    OpenFileIn(m.state.OpenIn);
}

void OutsidePrograms::OpenImagesPlusButton_Click() {
    if (m.state.ImagesPlus.empty())
        m.shell.ShowMessage("ImagesPlus program not set, use Control menu to set program");
    else
        OpenFileIn(m.state.ImagesPlus);
}

void OutsidePrograms::PopupOpenButton_Click() {
    if (!HasFile()) return;
    Say(m.desktop.OpenAssociated(m.state.Filename),
        "'" + LastPart(m.state.Filename) + "' opened in its program");
}

void OutsidePrograms::EditButton2_Click() {
    const ProgramState& s = m.state;
    const bool isPicture = !s.VideoImage() && !s.WebImage() && s.FileType != ".TXT";
    if (isPicture && !s.ImagesPlusExp.empty())
        OpenFileIn(s.ImagesPlusExp);
    else
        PopupOpenButton_Click();
}

void OutsidePrograms::ChooseProgram(std::string& program, const char* title) {
    const std::string before = program.empty() ? "/usr/bin" : FolderOf(program);
    const std::string chosen = m.dialogs.OpenFile(title, before, {});
    if (chosen.empty()) return;
    program = chosen;
    ShowChosenPrograms();
    m.shell.ShowMessage(std::string(title).substr(4) + " set to '" + chosen + "'");
}

void OutsidePrograms::SetOpenButton_Click() {
    ChooseProgram(m.state.OpenIn, "Set Open in Program");
}

void OutsidePrograms::ClearOpenButton_Click() {
    m.state.OpenIn.clear();
    ShowChosenPrograms();
    m.shell.ShowMessage("Open in Program cleared");
}

} // namespace tarn
