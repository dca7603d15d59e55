#include "web/frmHtmlThumb.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/patterns.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/KeptFiles.h"
#include "history/Changes.h"
#include "platform/Desktop.h"
#include "platform/EventPump.h"
#include "platform/Files.h"
#include "platform/ProgramFiles.h"
#include "web/FileEntries.h"
#include "web/FormParts.h"
#include "web/GalleryMiniature.h"
#include "web/PageText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QEvent>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

namespace tarn {

namespace {

constexpr QSize kDesign(900, 700); // logical pixels

} // namespace

void frmHtmlThumb::ShowForm(const std::string& path) {
    m_path = path;
    m_folder = m.controls.FileListBox->Path();
    m_fields.Load(m.state);
    setWindowTitle(QStringLiteral("Tarn View - Create Html Thumbnails Linked to Images"));
    m_view->setEnabled(m.files.Exists(path));
    m_error->clear();
    Say("");
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    activateWindow();
    Form_Activate();
}

// The lists as the folder shown has them now.
void frmHtmlThumb::Form_Activate() {
    if (m.state.BatchRuns) return;
    m_size->setCurrentIndex(m.state.ThumbSizeIndex - 1);
    m_thumbs->clear();
    m_linked->clear();
    m_brokenLinks = 0;
    for (const GalleryItem& item : Items()) {
        m_thumbs->addItem(ToQt(item.thumbnail));
        m_linked->addItem(ToQt(item.picture));
        if (!BreaksItsLink(item.picture)) continue;
        ++m_brokenLinks;
        m_brokenName = ToQt(item.picture);
    }
    m_missing = static_cast<int>(Pictures().size()) - m_thumbs->count();
    ShowMiniature();
}

void frmHtmlThumb::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && isVisible())
        Form_Activate();
}

void frmHtmlThumb::ShowMiniature() {
    GallerySettings settings = m.state;
    m_fields.Store(settings);
    m_miniature->ShowGallery(settings, m_thumbs->count());
    ShowWarnings(settings);
}

void frmHtmlThumb::ShowWarnings(const GallerySettings& settings) {
    QStringList warnings;
    if (!m.files.IsSameFile(FolderOf(m_path), m.controls.FileListBox->Path()))
        warnings += QStringLiteral("The gallery is in another folder than the pictures: its links "
                                   "will not find them.");
    if (m_topLine->isChecked() && m_notesTop->isChecked())
        warnings += QStringLiteral(
            "Beginning... option with 'Notes Positon' set to 'Top' is not recommended.");
    if (LimitHidesPictures(settings))
        warnings += QStringLiteral("The limit of the pictures is no number above 0: nothing of "
                                   "them will be seen.");
    if (m_missing > 0)
        warnings +=
            QStringLiteral("%1 pictures have no thumbnail and get no cell: use Create or Update")
                .arg(m_missing);
    if (m_brokenLinks > 0)
        warnings += QStringLiteral("Browsers cannot open %1 of the pictures, because of their "
                                   "names: %2")
                        .arg(m_brokenLinks)
                        .arg(m_brokenName);
    m_error->setText(warnings.join(QLatin1Char('\n')));
}

void frmHtmlThumb::Say(const std::string& text) {
    m_info->setText(ToQt(text));
}

std::vector<std::string> frmHtmlThumb::Pictures() const {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> names;
    for (int row = 0; row < list.Count(); ++row) {
        const std::string name = list.Text(row);
        if (m_keptOnly->isChecked() && !IsKept(m, JoinPath(list.Path(), name))) continue;
        const std::string type = FileTypeOf(name);
        if (!IsListedType(m.state.VideoTypes, type) && !IsListedType(m.state.WebTypes, type) &&
            type != ".TXT")
            names.push_back(name);
    }
    return names;
}

GalleryPlan frmHtmlThumb::Plan(bool frames) const {
    const ProgramState& s = m.state;
    GalleryPlan plan;
    plan.settings = s;
    plan.frames = frames;
    plan.indexPath = m_path;
    plan.pictureFolder = m.controls.FileListBox->Path();
    plan.subFolder = s.ThumbSubFolder;
    plan.thumbnailSize = s.ThumbSize;
    plan.version = s.Version;
    plan.now = NowText();
    plan.script = ProgramFile(kZoomScript);
    plan.items = Items();
    return plan;
}

std::vector<GalleryItem> frmHtmlThumb::Items() const {
    const ProgramState& s = m.state;
    // A custom filter names pictures; in front of it stands the size, without a leading zero.
    const NamePatterns pattern(
        s.FilterIsCustom ? "T" + std::to_string(s.ThumbSize) + "_" + s.FileTypes : s.FileTypes);
    std::vector<std::string> thumbnails;
    const std::string folder = m.thumbnails.ThumbnailFolderPath();
    if (!folder.empty())
        for (std::string& name : m.files.FileNames(folder).value_or(std::vector<std::string>()))
            if (pattern.Matches(name)) thumbnails.push_back(std::move(name));
    return PairThumbnails(InListOrder(std::move(thumbnails)), Pictures(), s.ThumbSize);
}

void frmHtmlThumb::MakeGallery(bool frames) {
    if (m.state.BatchRuns || m.state.SlideViewing) return;
    if (m.controls.FileListBox->Path() != m_folder) {
        Say("The list shows another folder than '" + m_folder + "', for which the file was chosen");
        return;
    }
    m.navigation.ShowWholeList();
    m_fields.Store(m.state);
    if (m_keptOnly->isChecked() && !AwaitMarks(m)) return Say("Cancelled");
    GalleryPlan plan = Plan(frames);
    if (plan.items.empty()) {
        Say(std::string("No gallery was made: ") + kNoThumbnails);
        return;
    }
    if (m.state.CheckOrder != 0) std::reverse(plan.items.begin(), plan.items.end());
    Run(std::move(plan));
}

void frmHtmlThumb::SetBusy(bool busy) {
    for (QPushButton* command : m_commands) command->setEnabled(!busy);
}

void frmHtmlThumb::Run(GalleryPlan plan) {
    const bool frames = plan.frames;
    DiskFacts disk;
    Changes changes(m.history, "Gallery '" + LastPart(m_path) + "'");
    GalleryRun run(changes, std::move(plan), SourcesOf(disk, [this](const std::string& path) {
                       return m.notes.NoteBytesOf(path);
                   }));
    bool goesOn = true;
    SetBusy(true);
    {
        const BatchRun batch(m, m_cancel);
        while (goesOn && run.Step()) {
            const std::string text =
                "Writing page " + std::to_string(run.Done()) + " of " + std::to_string(run.Count());
            Say(text);
            goesOn = batch.Step(text);
        }
    }
    SetBusy(false);
    if (m.events.ProgramEnds()) return;
    std::string report = "Gallery cancelled, nothing was written";
    std::vector<FileFault> faults;
    if (goesOn && run.Finish()) {
        const std::string what = frames ? "Created Html files '" : "Created Html file '";
        report = what + LastPart(m_path) + "' with " + std::to_string(run.Count()) + " pictures" +
                 (frames ? " & image_*.html frames" : "");
        if (!disk.Unread().empty())
            report += ", " + std::to_string(disk.Unread().size()) +
                      " of them cannot be read: " + LastPart(*disk.Unread().begin());
        for (const std::string& path : disk.Unread()) faults.push_back({path, "cannot be read"});
        m_view->setEnabled(true);
    } else if (run.Fault()) {
        report = "No gallery was written";
        m.dialogs.Message(Dialogs::Icon::Exclamation, run.Fault()->title, run.Fault()->text);
    }
    Say(report);
    m.shell.Tell({true, report, {}, std::move(faults)});
}

void frmHtmlThumb::GenThumbButton_Click(bool updateOnly) {
    SetBusy(true);
    const Outcome made = m.thumbnails.GenerateThumbnails(
        updateOnly, [this](const std::string& text) { Say(text); }, m_cancel);
    m.shell.Tell(made);
    if (!made.text.empty()) Say(made.text);
    SetBusy(false);
    if (!m.events.ProgramEnds()) Form_Activate();
}

void frmHtmlThumb::HtmlViewButton_Click() {
    const std::string fault = m.desktop.OpenAssociated(m_path);
    if (!fault.empty()) Say("ERROR - " + fault);
}

void frmHtmlThumb::Form_Unload() {
    m_fields.Store(m.state);
}

void frmHtmlThumb::closeEvent(QCloseEvent* event) {
    if (CancelsBatch(m.state, *event)) return;
    Form_Unload();
    event->accept(); // the dialog's own would come back here through reject
}

} // namespace tarn
