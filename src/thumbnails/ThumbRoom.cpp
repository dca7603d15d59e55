#include "thumbnails/ThumbRoom.h"

#include "common/paths.h"
#include "desk/batch/BatchRun.h"
#include "desk/batch/KeptNote.h"
#include "history/Changes.h"
#include "platform/EventPump.h"
#include "platform/QtText.h"
#include "thumbnails/ThumbFolder.h"
#include "thumbnails/ThumbNames.h"
#include "thumbnails/frmThumbFolder.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"

#include <QAction>
#include <QPushButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace tarn {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPumpEvery(40); // while one thumbnail takes long

// Pictures change on the screen this far apart, and for a small share of the time at most.
constexpr std::chrono::milliseconds kShowEvery(300);
constexpr int kShowShare = 20;

} // namespace

ThumbRoom::ThumbRoom(Context& context) : m(context), m_grid(context) {}

ThumbRoom::~ThumbRoom() = default;

void ThumbRoom::ConnectControls() {
    const MainControls& c = m.controls;
    m_grid.ConnectControls();
    Connect(c.GenerateThumbButton, [this] { GenerateThumbButton_Click(); });
    Connect(c.GenerateThumbCButton, [this] { GenerateThumbCButton_Click(); });
    Connect(c.ThumbFolderButton, [this] { ThumbFolderButton_Click(); });
    Connect(c.ThumbFolderDeleteButton, [this] { ThumbFolderDeleteButton_Click(); });
}

ThumbRequest ThumbRoom::Request() const {
    const ProgramState& s = m.state;
    ThumbRequest request;
    request.pictures = m.controls.FileListBox->Path();
    request.subFolder = s.ThumbSubFolder;
    request.width = s.ThumbSize;
    request.quality = s.ConvertJpgQuality;
    if (s.ThumbCreateNotes) request.notes = s.NotesFolder;
    request.noteOf = [this](const std::string& picture) { return m.notes.SavedNoteOf(picture); };
    return request;
}

std::string ThumbRoom::ThumbnailNameOf(const std::string& picture) {
    return ThumbnailName(m.state.ThumbSize, LastPart(picture));
}

std::string ThumbRoom::ThumbnailFolderPath() {
    return ThumbnailFolder(m.files, m.controls.FileListBox->Path(), m.state.ThumbSubFolder,
                           m.state.NotesFolder);
}

void ThumbRoom::ShowSettings() {
    QAction& entry = *m.controls.GenerateThumbButton;
    entry.setProperty("baseCaption", entry.text());
    ShowSubFolder();
}

void ThumbRoom::ShowSubFolder() {
    QAction& entry = *m.controls.GenerateThumbButton;
    entry.setText(entry.property("baseCaption").toString() + ToCaption(m.state.ThumbSubFolder));
}

void ThumbRoom::BreakOff() {
    if (m_list) m_list->PutBack();
}

void ThumbRoom::GenerateThumbButton_Click() {
    m.shell.Tell(GenerateThumbnails(false, {}, nullptr));
}

Outcome ThumbRoom::MayBegin() {
    if (m.state.BatchRuns || m.state.SlideViewing) return Outcome::Refused();
    if (!ThumbnailFolderPath().empty()) return Outcome::Did();
    return Outcome::Refused(m.controls.FileListBox->Path().empty() ? "No folder is shown"
                                                                   : kBadSubFolder);
}

Outcome ThumbRoom::GenerateThumbnails(bool updateOnly, const ThumbnailTold& told,
                                      QPushButton* ownCancel) {
    if (Outcome refused = MayBegin(); !refused) return refused;
    const QScopedValueRollback<bool> updating(m.state.ThumbUpdate, updateOnly);
    KeptNote kept(m);
    m.navigation.ShowWholeList();
    m_list.emplace(m);
    Outcome outcome = WholeRun(told, ownCancel);
    m_list->PutBack();
    if (!m.events.ProgramEnds()) m_list->SelectFormerRow();
    m_list.reset();
    m.notes.NoteFilesChanged();
    outcome.text += kept.Settle();
    return outcome;
}

// Why no thumbnails are made; empty when they can be. `remain` says what could not be cleared.
std::string ThumbRoom::MakeReady(const std::string& folder, std::string& remain, Changes& changes) {
    const ProgramState& s = m.state;
    std::string error;
    const auto names = m.files.FileNames(folder, &error);
    if (!names && m.files.IsFolder(folder))
        return "No thumbnails created, folder '" + s.ThumbSubFolder + "': " + error;
    if (!names || names->empty()) {
        MakeThumbnailFolder(changes, m.controls.FileListBox->Path(), s.ThumbSubFolder);
        return {};
    }
    if (!s.ThumbClear &&
        !m.dialogs.Confirm(Dialogs::Icon::Information, "Confirm Thumbnail Folder Overwrite",
                           "folder '" + s.ThumbSubFolder + "'\nWill be overwritten!")) {
        m_list->Leave();
        return s.FilterIsCustom ? "No thumbnails created"
                                : "No thumbnails created, the list shows pictures only";
    }
    // Another start of the program may have brought another folder meanwhile.
    if (ThumbnailFolderPath() != folder)
        return "No thumbnails created, another folder is shown by now";
    remain = ClearThumbnails(changes, folder).Text();
    return {};
}

std::vector<ThumbJob> ThumbRoom::Jobs(const ThumbRequest& request) const {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(list.Count()));
    for (int row = 0; row < list.Count(); ++row) names.push_back(list.Text(row));
    return PlanThumbnails(names, {m.state.VideoTypes, m.state.WebTypes}, request,
                          m.state.ThumbUpdate, m.files);
}

Outcome ThumbRoom::WholeRun(const ThumbnailTold& told, QPushButton* ownCancel) {
    std::string remain;
    Changes changes(m.history, "Thumbnails in '" + ThumbnailFolderPath() + "'");
    if (!m.state.ThumbUpdate) {
        std::string why = MakeReady(ThumbnailFolderPath(), remain, changes);
        if (!why.empty()) return Outcome::Refused(std::move(why));
    }
    const ThumbRequest request = Request();
    ThumbRun run(Jobs(request), request, changes);
    const bool whole = Make(run, told, ownCancel);
    return {whole, run.Report(!whole) + (remain.empty() ? "" : ", " + remain), {}, run.Faults()};
}

bool ThumbRoom::Make(ThumbRun& run, const ThumbnailTold& told, QPushButton* ownCancel) {
    const BatchRun batch(m, ownCancel);
    std::string said = "Generating thumbnails";
    m_nextShow = Clock::now() + kShowEvery;
    while (!run.Done()) {
        if (run.WaitForNext(kPumpEvery)) {
            const int row = run.Next().row;
            if (run.Step() && told) told(run.Progress());
            if (!run.Progress().empty()) said = run.Progress();
            if (!run.Done() && Clock::now() >= m_nextShow) ShowPicture(row, ownCancel);
        }
        if (!batch.Step(said)) return run.Done();
    }
    return true;
}

// The window follows the run, as in a show, without holding it up.
void ThumbRoom::ShowPicture(int row, QPushButton* ownCancel) {
    const auto begin = Clock::now();
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row, InPassing());
    (ownCancel ? ownCancel : m.controls.BatchCancelButton)->setFocus();
    const auto end = Clock::now();
    m_nextShow = end + std::max<Clock::duration>(kShowEvery, (end - begin) * kShowShare);
}

// From the file of the picture shown; list, folder and notes stay as they are.
void ThumbRoom::GenerateThumbCButton_Click() {
    if (const Outcome refused = MayBegin(); !refused) return m.shell.Tell(refused);
    if (m.state.FileNameOnly.empty()) return;
    if (!m.state.Filename.empty() &&
        FolderOf(m.state.Filename) != WithoutTrailingSeparator(m.controls.FileListBox->Path())) {
        m.shell.ShowMessage("The picture shown is not of this folder");
        return;
    }
    const std::string folder = ThumbnailFolderPath();
    const auto names = m.files.FileNames(folder);
    Changes changes(m.history, "Thumbnail of '" + m.state.FileNameOnly + "'");
    if (!names || names->empty())
        MakeThumbnailFolder(changes, m.controls.FileListBox->Path(), m.state.ThumbSubFolder);
    ThumbRequest request = Request();
    request.notes.clear();
    m.shell.SetBusy(true);
    ThumbRun run({{m.controls.FileListBox->CurrentRow(), m.state.FileNameOnly}}, request, changes);
    run.Step();
    m.shell.SetBusy(false);
    m.shell.ShowMessage(run.Report(false));
}

bool ThumbRoom::SetSubFolder(const std::string& name) {
    const std::string& shown = m.controls.FileListBox->Path();
    // Where the folder shown has a link of that name to elsewhere, it is refused, too.
    if (!IsSubFolderName(name) ||
        (!shown.empty() && ThumbnailFolder(m.files, shown, name, {}).empty()))
        return false;
    m.state.ThumbSubFolder = name;
    m.shell.ShowMessage("Thumbnail sub folder set to '" + ShownSubFolder(name) + "'");
    ShowSubFolder();
    return true;
}

void ThumbRoom::ThumbFolderButton_Click() {
    if (!m_window)
        m_window = std::make_unique<frmThumbFolder>(
            *m.controls.FileListBox->window(),
            [this](const std::string& name) { return SetSubFolder(name); });
    m_window->Ask(m.state.ThumbSubFolder);
}

void ThumbRoom::ThumbFolderDeleteButton_Click() {
    if (const Outcome refused = MayBegin(); !refused) return m.shell.Tell(refused);
    const std::string folder = ThumbnailFolderPath();
    const std::string pictures = m.controls.FileListBox->Path();
    ClearFaults faults;
    Changes changes(m.history, "Delete thumbnails '" + folder + "'");
    const auto names = m.files.FileNames(folder);
    if (names && !names->empty()) {
        if (!m.dialogs.Confirm(
                Dialogs::Icon::Exclamation, "Confirm Thumbnail Folder & HTML Delete",
                "Sub folder '" + m.state.ThumbSubFolder +
                    "'\nand 'Image*.html' files in current folder\nWill be deleted!"))
            return;
        faults = ClearThumbnails(changes, folder);
        const bool pages = !GalleryPages(m.files, pictures).empty();
        ThrowAwayPages(changes, pictures, faults);
        if (pages) m.navigation.RefreshAfterDelete();
    }
    std::string why;
    const int number = changes.RemoveFolder(folder, &why);
    if (number != 0)
        m.dialogs.Message(Dialogs::Icon::Exclamation, "RmDir error",
                          "Error deleting folder\n" + folder + "\n\nError " +
                              std::to_string(number) + ", " + why);
    std::string said =
        number == 0 ? "Deleted '" + folder + "'" : "ERROR - Cannot delete '" + folder + "'";
    if (faults.count > 0) said += ", " + faults.Text();
    m.shell.ShowMessage(said);
}

} // namespace tarn
