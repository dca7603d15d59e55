#include "web/frmHtmlLayout.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/patterns.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/KeptFiles.h"
#include "desk/batch/KeptNote.h"
#include "desk/batch/PassingPictures.h"
#include "imaging/ImgX.h"
#include "imaging/Placeholder.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/ProgramFiles.h"
#include "platform/WholeFile.h"
#include "web/FileEntries.h"
#include "web/FormParts.h"
#include "web/PageHead.h"
#include "web/PageText.h"
#include "web/SavedValues.h"
#include "web/SystemError.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QRadioButton>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace tarn {

namespace {

constexpr char kMp4[] = ".MP4";
constexpr char kNoVideo[] = "Cannot add video to html file";
constexpr char kNoWeb[] = "Cannot add web to html file";

std::string SizeText(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

} // namespace

std::string frmHtmlLayout::AskForPage(const char* title) {
    const std::string& folder = m.controls.FileListBox->Path();
    const bool lastHere = !m_chosen.empty() && FolderOf(m_chosen) == folder;
    return m.dialogs.ChooseTarget(title, lastHere ? m_chosen : folder, kPageFilter, "html");
}

void frmHtmlLayout::ReadSavedSettings(const std::string& path) {
    if (!m_appendOption->isChecked()) return;
    std::string error;
    const auto page = ReadWhole(m.files, path, kLargestPage, &error);
    if (!page)
        m.shell.ShowMessage("'" + LastPart(path) + "' - its settings are not read: " + error);
    if (page && ReadSavedValues(*page, static_cast<HtmlSettings&>(m.state))) m_fields.Load(m.state);
}

void frmHtmlLayout::CreateButton_Click() {
    if (m_page.IsOpen()) HtmlCloseButton_Click();
    const std::string path = AskForPage("Create new or overwrite Html file");
    if (path.empty()) return;
    if (m.files.Exists(path)) {
        ReadSavedSettings(path);
        if (m.state.HtmlOverwriteWarning &&
            !m.dialogs.Confirm(Dialogs::Icon::Exclamation, "Confirm Html Overwrite",
                               path + "\nWill be overwritten!"))
            return;
    }
    Choose(path);
    Opened();
}

void frmHtmlLayout::AppendButton_Click() {
    if (m_page.IsOpen()) HtmlCloseButton_Click();
    const std::string path = AskForPage("Append to existing Html file");
    if (path.empty()) return;
    ReadSavedSettings(path);
    Choose(path);
    if (!m_page.Append(Write(), NowText())) {
        Failed();
        return;
    }
    Opened();
    Show(Flow::Writing);
}

void frmHtmlLayout::Choose(const std::string& path) {
    m_chosen = path;
    m_page.Choose(path, m.controls.FileListBox->Path());
}

void frmHtmlLayout::Opened() {
    m.state.HtmlPath = m_chosen;
    m_fields.Load(m.state);
    ShowLinkRule();
    ShowSizeRule();
    m_lastFile->clear();
    m_brokenLinks = 0;
    Show(Flow::Opened);
}

// What no page carries; the other options are taken when a header is written, and only then.
void frmHtmlLayout::KeepChecks() {
    m.state.HtmlAppendOption = m_appendOption->isChecked() ? 1 : 0;
    m.state.HtmlAuto = m_advance->isChecked() ? 1 : 0;
    m.state.HtmlExifInfo = m_exifInfo->isChecked() ? 1 : 0;
}

void frmHtmlLayout::CommandOk_Click() {
    m_fields.Store(m.state);
    if (!m_page.Begin(Write(), m.state, NowText(), ProgramFile(kZoomScript))) {
        Failed();
        return;
    }
    Show(Flow::Writing);
}

Changes& frmHtmlLayout::Write() {
    if (!m_writing) m_writing.emplace(m.history, "Page '" + LastPart(m_chosen) + "'");
    return *m_writing;
}

bool frmHtmlLayout::ClosePage() {
    const bool closed = m_page.Close(Write());
    m_writing.reset();
    return closed;
}

void frmHtmlLayout::Failed() {
    m_writing.reset();
    Show(Flow::Closed);
    m.dialogs.Message(Dialogs::Icon::Exclamation, m_page.Fault().title, m_page.Fault().text);
}

void frmHtmlLayout::HtmlCloseButton_Click() {
    KeepChecks();
    const bool wasOpen = m_page.IsOpen();
    if (wasOpen && !ClosePage()) {
        Failed();
        return;
    }
    if (wasOpen) m.shell.ShowMessage("Closed Html file " + LastPart(m_chosen));
    m_lastFile->clear();
    if (!m_chosen.empty()) Show(Flow::Closed);
}

void frmHtmlLayout::HtmlCloseViewButton_Click() {
    KeepChecks();
    const bool wasOpen = m_page.IsOpen();
    if (wasOpen && !ClosePage()) {
        Failed();
        return;
    }
    m_lastFile->clear();
    Show(Flow::Closed);
    if (wasOpen) View(m_chosen);
}

void frmHtmlLayout::FailedView(const char* what, const std::string& path,
                               const std::string& error) {
    m.dialogs.Message(Dialogs::Icon::Exclamation, std::string(what) + " html file error",
                      ErrorBoxText("Error opening html file", path, error));
}

void frmHtmlLayout::View(const std::string& path) {
    if (!m.files.Exists(path)) {
        FailedView("View", path, std::strerror(ENOENT));
        return;
    }
    if (m_inForm->isChecked()) {
        ShowInPane(path);
        return;
    }
    const std::string fault = m.desktop.OpenAssociated(path);
    if (!fault.empty()) FailedView("View", path, fault);
}

// In the main window's own pane, in the place of the selected file; the next selection ends it.
void frmHtmlLayout::ShowInPane(const std::string& path) {
    m.video.CloseVideoClip();
    m.current.Choose(path);
    m.video.Load_web();
}

void frmHtmlLayout::ViewLast() {
    if (!m_chosen.empty()) View(m_chosen);
}

void frmHtmlLayout::EditLast() {
    if (m_chosen.empty()) return;
    const std::string& editor = m.state.HtmlEditor;
    const std::string fault = !m.files.Exists(m_chosen) ? std::strerror(ENOENT)
                              : editor.empty()          ? m.desktop.EditText(m_chosen)
                                                        : m.desktop.StartProgram(editor, m_chosen);
    if (!fault.empty()) FailedView("Edit", m_chosen, fault);
}

void frmHtmlLayout::CommandHomePage_Click() {
    const std::string home = m.dialogs.OpenFile("Lookup html file for Home page",
                                                m.controls.FileListBox->Path(), kPageFilter);
    if (home.empty()) return;
    std::string link;
    const bool above = HomeLink(m_chosen, home, link);
    m_home->setText(ToQt(link));
    m_error->setText(above ? QString() : QStringLiteral("Invalid Home URL"));
}

// The companion that stands in for a clip; one of the user's own under that name stays.
void frmHtmlLayout::CopyVideoPicture() {
    const std::string target = JoinPath(FolderOf(m.state.Filename), kVideoPicture);
    if (m.files.Exists(target)) return;
    std::string error;
    const auto bytes = ReadWhole(m.files, ProgramFile(kVideoPicture), kLargestScript, &error);
    if (bytes && Write().Write(target, *bytes, &error)) return;
    if (std::exchange(m_videoFaultTold, true)) return; // once a run
    m.dialogs.Message(Dialogs::Icon::Exclamation, "Copy mp4 image jpg file error",
                      ErrorBoxText("Error creating MP4.jpg", target, error));
}

// Why the current file gets no entry; empty when it does.
std::string frmHtmlLayout::RefusalOfCurrent() const {
    const ProgramState& s = m.state;
    std::string gone;
    if (s.VideoImage() && s.FileType != kMp4) return kNoVideo;
    if (s.WebImage() || (!IsTextEntry(s.FileType) && IsListedType(s.WebTypes, s.FileType)))
        return kNoWeb;
    if (s.Filename.empty() || m.controls.FileListBox->Count() == 0) return "No file is selected";
    if (!m.files.ModifiedTime(s.Filename, &gone)) return gone + " - " + s.FileNameOnly;
    return {};
}

// As it is shown, whatever the file has.
EntryFacts frmHtmlLayout::FactsOfCurrent() {
    const ProgramState& s = m.state;
    DiskFacts disk;
    EntryFacts facts = EntryOf(disk, m.files, s.Filename, s.PreviewWidth, s.PreviewHeight);
    if (s.FileType != kMp4 && !IsTextEntry(s.FileType) && s.ImageWidth > 0) {
        SetEntrySize(facts, s.ImageWidth, s.ImageHeight, s.PreviewWidth, s.PreviewHeight);
        facts.sizeText = s.SizeText;
    }
    facts.panel.clear();
    for (const std::string& row : s.PanelRows) facts.panel.push_back(ToPageBytes(row));
    facts.note = ToPageBytes(s.NoteText);
    FindCompanions(m.files, s, s.Filename, facts);
    return facts;
}

// As it would be shown, without showing it.
EntryFacts frmHtmlLayout::FactsOfPicture(DiskFacts& disk, const std::string& path,
                                         const std::string& note) {
    const ProgramState& s = m.state;
    EntryFacts facts = EntryOf(disk, m.files, path, s.PreviewWidth, s.PreviewHeight);
    if (facts.width == 0) {
        const Placeholder placeholder = PlaceholderFor(facts.type);
        const QSize size = ImgX::ReadFileInfo(ProgramFile(std::string(placeholder.picture)));
        SetEntrySize(facts, size.width(), size.height(), s.PreviewWidth, s.PreviewHeight);
        facts.sizeText.clear();
        facts.panel.clear();
    } else if (s.TwoX) {
        facts.sizeText = SizeText(facts.width * 2, facts.height * 2);
    }
    facts.note = ToPageBytes(note);
    FindCompanions(m.files, s, path, facts);
    return facts;
}

// A picture with a label is named between apostrophes in the page's script, too.
void frmHtmlLayout::WarnOfName(const std::string& name, const EntryFacts& facts) {
    const bool breaks = BreaksItsLink(name) ||
                        (facts.hasLabel && name.find('\'') != std::string::npos) ||
                        (facts.hasLabel && BreaksItsLink(LabelNameOf(m.state, name))) ||
                        (facts.hasVideo && BreaksItsLink(VideoNameOf(m.state, name)));
    if (!breaks) return;
    ++m_brokenLinks;
    m_error->setText(QStringLiteral("Browsers cannot open %1 of the entries, because of their "
                                    "names: %2")
                         .arg(m_brokenLinks)
                         .arg(ToQt(name)));
}

// Done: it has its entry. Else the text says why not; of a label's picture nothing is said. After a
// fault the page is not open any more.
Outcome frmHtmlLayout::AddEntry(const std::string& name, const EntryFacts& facts) {
    const ProgramState& s = m.state;
    m_lastFile->setText(ToQt(name));
    if (IsLabelPicture(s, name) || !m_page.Add(Write(), s, m_exifInfo->isChecked(), facts))
        return Outcome::Refused();
    WarnOfName(name, facts);
    return Outcome::Did("Copied Html data for " + name);
}

Outcome frmHtmlLayout::AddCurrent() {
    std::string refusal = RefusalOfCurrent();
    if (!refusal.empty()) return Outcome::Refused(std::move(refusal));
    if (m.state.FileType == kMp4) CopyVideoPicture();
    return AddEntry(m.state.FileNameOnly, FactsOfCurrent());
}

// Pictures without selecting them. Of clips and texts only the window that shows them knows what it
// says of them.
Outcome frmHtmlLayout::AddFile(DiskFacts& disk, const std::string& path, KeptNote& notes) {
    const ProgramState& s = m.state;
    const std::string name = LastPart(path);
    const std::string type = FileTypeOf(path);
    std::string note = notes.NoteOf(path);
    if (type != kMp4 && IsListedType(s.VideoTypes, type)) return Outcome::Refused(kNoVideo);
    if (type == kMp4 || IsTextEntry(type)) {
        m.navigation.SelectRow(m.controls.FileListBox->RowOf(name), InPassing());
        return AddCurrent();
    }
    if (IsListedType(s.WebTypes, type)) return Outcome::Refused(kNoWeb);
    std::string gone;
    if (!m.files.ModifiedTime(path, &gone)) return Outcome::Refused(gone + " - " + name);
    return AddEntry(name, FactsOfPicture(disk, path, note));
}

void frmHtmlLayout::HtmlAddButton_Click() {
    m_videoFaultTold = false;
    const Outcome added = AddCurrent();
    if (!m_page.IsOpen()) {
        Failed();
    } else if (added && m_advance->isChecked()) {
        m.shell.ShowMessage({});
        m.navigation.NextButton_Click();
        m.shell.ShowIfNoMessage(added.text);
    } else {
        m.shell.Tell(added);
    }
    activateWindow();
}

// False when the run did not come to its end.
bool frmHtmlLayout::AddAll(const std::vector<std::string>& paths, KeptNote& notes) {
    const BatchRun batch(m, m_cancel);
    PassingPictures pictures(m, paths);
    DiskFacts disk;
    std::string said;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const Outcome added = AddFile(disk, paths[i], notes);
        if (!added.text.empty()) said = added.text;
        if (!m_page.IsOpen()) return false;
        if (added) pictures.ShowNowAndThen(i);
        if (!batch.Step(said)) return false;
    }
    return true;
}

void frmHtmlLayout::HtmlAddAll(bool reverse) {
    ProgramState& s = m.state;
    if (s.BatchRuns || s.SlideViewing) return;
    m.navigation.ShowWholeList();
    if (m_keptOnly->isChecked() && !AwaitMarks(m)) return m.shell.ShowMessage("Cancelled");
    const int count = m.controls.FileListBox->Count();
    m_videoFaultTold = false;
    const int back = std::clamp(s.FileIndex, 0, std::max(0, count - 1));
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> paths; // the list may change while events come in
    for (int row = 0; row < count; ++row) {
        std::string path = JoinPath(list.Path(), list.Text(row));
        if (!m_keptOnly->isChecked() || IsKept(m, path)) paths.push_back(std::move(path));
    }
    if (reverse) std::reverse(paths.begin(), paths.end());
    KeptNote kept(m);
    m.navigation.ClearMultiselect();
    const bool done = AddAll(paths, kept);
    if (m.events.ProgramEnds()) return;
    m.navigation.ClearMultiselect();
    if (count > 0) m.navigation.SelectRow(back);
    const std::string report = std::to_string(m_page.Count()) + " images added to html file" +
                               (reverse ? ", reverse order" : "") +
                               (done              ? ""
                                : m_page.IsOpen() ? ", cancelled"
                                                  : ", stopped") +
                               kept.Settle();
    m.shell.ShowMessage(report);
    if (!m_page.IsOpen()) Failed();
    activateWindow();
}

void frmHtmlLayout::Form_Unload() {
    HtmlCloseButton_Click();
}

void frmHtmlLayout::closeEvent(QCloseEvent* event) {
    if (CancelsBatch(m.state, *event)) return;
    Form_Unload();
    event->accept(); // the dialog's own would come back here through reject
}

} // namespace tarn
