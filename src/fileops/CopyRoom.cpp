#include "fileops/CopyRoom.h"

#include "common/paths.h"
#include "desk/batch/DroppedNote.h"
#include "fileops/MarksAlong.h"
#include "fileops/PicturePlan.h"
#include "fileops/frmCaption.h"
#include "history/Rehearsal.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "platform/Sound.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QPushButton>

namespace tarn {

CopyRoom::CopyRoom(Context& context) : m(context) {}

CopyRoom::~CopyRoom() = default;

void CopyRoom::ConnectControls() {
    MainControls& c = m.controls;
    Connect(c.SetImageCopyButton, [this] { SetImageCopyButton_Click(); });
    Connect(c.CopyImageButton3, [this] { m.shell.Tell(CopyImage()); });
    Connect(c.CJMButton, [this] { m.shell.Tell(CJMButton_Click()); });
    Connect(c.ConvertButton, [this] { m.shell.Tell(ConvertButton_Click()); });
    Connect(c.ConvertJpgSetText, [this] { ConvertJpgSetText_Click(); });
    ConnectClipboard();
    m.current.Follow([this] {
        if (m.state.Kind == FileKind::Picture && m_caption && m_caption->IsOpen())
            m_caption->ShowPicture();
    });
}

// In a show the file that is seen; the main window's may be another.
std::string CopyRoom::CopyName() const {
    return m.state.SlideViewing ? m.state.SlideNameOnly : m.state.FileNameOnly;
}

void CopyRoom::SetImageCopyButton_Click() {
    ProgramState& s = m.state;
    const std::string folder =
        m.dialogs.ChooseFolder("Set Folder were Images will be copied to", s.CopyImageFolder);
    if (folder.empty()) return;
    s.CopyImageFolder = WithoutTrailingSeparator(folder);
    ShowCopyFolder();
    m.shell.ShowMessage("Copy image folder set to '" + s.CopyImageFolder + "'");
}

void CopyRoom::ShowCopyFolder() {
    const std::string& folder = m.state.CopyImageFolder;
    const MainControls& c = m.controls;
    if (!folder.empty()) {
        c.CopyImageButton3->setToolTip(ToToolTip(folder));
        c.MoveToButton->setToolTip(ToToolTip(folder));
        c.CJMButton->setToolTip(ToToolTip("Convert to JPG then move to " + folder));
        c.GotoCopyFolderButton->setToolTip(ToToolTip("Display CopyTo folder " + folder));
    }
    if (m_caption) m_caption->ShowCopyFolder();
    // A move without a folder to go to would only throw the picture away.
    SetEnabled(c.MoveToButton, !folder.empty() && folder != c.FileListBox->Path());
}

void CopyRoom::FolderChanged() {
    ShowCopyFolder();
}

CopyOutcome CopyRoom::Refusal(std::string text, std::string fault) const {
    return {Outcome::Refused(std::move(text), std::move(fault)), m_copyOk};
}

namespace {

// False where the picture could not be copied; the first that could not is in `error`.
bool CopyWithSidecars(const NewNamePlan& plan, Changes& changes, std::string* error) {
    const auto copy = [&](const std::string& from, const std::string& to) {
        std::string why;
        const bool copied = changes.CopyTo(from, to, &why, Standing::ThrowAway);
        if (error->empty()) *error = why;
        return copied;
    };
    if (!copy(plan.from, plan.to)) return false;
    if (!plan.givesWay.empty()) changes.ThrowAway(plan.givesWay, error);
    for (const Along& each : plan.along) copy(each.from, each.to);
    return true;
}

} // namespace

CopyOutcome CopyRoom::CopyImage() {
    Changes changes(m.history, {});
    return Copy(changes, true);
}

CopyOutcome CopyRoom::CopyImageIn(Changes& changes) {
    return Copy(changes, false);
}

CopyOutcome CopyRoom::Copy(Changes& changes, bool isAll) {
    ProgramState& s = m.state;
    const std::string name = CopyName();
    if (s.CopyImageFolder.empty()) return Refusal("'Copy to' folder has not been set");
    if (m.controls.FileListBox->Path() == s.CopyImageFolder)
        return Refusal("'Copy to' folder is same as current folder");
    if (s.Filename.empty() || name.empty()) return Refusal({});
    const std::string target = JoinPath(s.CopyImageFolder, name);
    if (const Outcome written = m.marks.Flush(); !written) {
        m_copyOk = "COPY FAILED - " + written.text;
        return Refusal(written.text);
    }
    std::string error;
    m.shell.SetBusy(true);
    changes.SetWhat("Copy '" + name + "' to '" + s.CopyImageFolder + "'");
    Belongings belongings(m.files, {}); // the note serves both
    const NewNamePlan plan = PlanPlace(belongings, s.Filename, target);
    if (isAll) {
        Rehearsal rehearsal(m.files);
        std::string ignored;
        CopyWithSidecars(plan, rehearsal.Command(), &ignored);
        changes.PlanWhole(rehearsal.Steps());
    }
    const bool copied = CopyWithSidecars(plan, changes, &error);
    m.shell.SetBusy(false);
    if (!copied) {
        m_copyOk = "COPY FAILED - " + error;
        return Refusal("Image copy failed for '" + name + "'", error);
    }
    TakeMarksAlong(m.marks, changes);
    Outcome told = Copied("Copied", name);
    if (!error.empty()) told.text += ", its sidecar was not copied: " + error;
    return {std::move(told), m_copyOk};
}

Outcome CopyRoom::Copied(const std::string& verb, const std::string& name) {
    m_copyOk.clear();
    if (m.state.BeepCopyPicture) {
        if (m.state.SlideViewing)
            m.sound.PlayAndWait("picture_copy.wav");
        else
            m.sound.Play("picture_copy.wav");
    }
    m.shell.ShowError({});
    const bool advances = m.state.CopyAuto && !m.state.SlideViewing;
    const DroppedNote dropped(m);
    if (advances) m.navigation.NextButton_Click();
    const std::string said = verb + (advances ? "+ '" : " '") + name + "'";
    return Outcome::Did(said + (advances ? dropped.Word() : std::string()));
}

Outcome CopyRoom::CMImage() {
    const std::string name = CopyName();
    if (m.state.CopyImageFolder.empty())
        return Outcome::Refused("'Copy to' folder has must be set");
    m.shell.SetBusy(true);
    const Outcome converted = CJMButton_Click();
    m.shell.SetBusy(false);
    return converted ? Copied("CM", name) : converted;
}

} // namespace tarn
