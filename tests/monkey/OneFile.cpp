#include "OneFile.h"

#include "common/codepage.h"
#include "common/mark_text.h"
#include "common/paths.h"
#include "notes/NoteNames.h"
#include "notes/NoteText.h"
#include "platform/QtText.h"

#include <QImageReader>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace tarn::testing {

namespace {

std::string Differ(const char* what, const std::string& is, const std::string& expected) {
    return std::string(what) + " is '" + is + "' instead of '" + expected + "'; ";
}

// With the line ends of the box, which takes every kind.
std::string Lines(const std::string& text) {
    return FromQt(ToQt(text).replace("\r\n", "\n").replace('\r', '\n'));
}

bool IsClose(const QColor& a, const QColor& b) {
    constexpr int kClose = 14; // what a JPEG and a scaling change
    return std::abs(a.red() - b.red()) <= kClose && std::abs(a.green() - b.green()) <= kClose &&
           std::abs(a.blue() - b.blue()) <= kClose;
}

QColor Centre(const QImage& picture) {
    return picture.pixelColor(picture.width() / 2, picture.height() / 2);
}

} // namespace

OneFile::Look1 OneFile::LookAt(const std::string& path) {
    const std::string bytes = BytesOf(path);
    const bool jpeg = bytes.starts_with("\xFF\xD8");
    if (jpeg && !bytes.ends_with("\xFF\xD9")) return {};
    if (!jpeg && !bytes.starts_with("\x89PNG")) return {};
    if (bytes.find("ICC_PROFILE") != std::string::npos) return {};
    const QImage picture = QImage::fromData(QByteArray::fromStdString(bytes));
    if (picture.isNull()) return {};
    return {true, picture.size(), Centre(picture)};
}

void OneFile::Look() {
    constexpr std::size_t kKept = 3;
    std::error_code none;
    for (const std::string& folder : m.PictureFolders())
        for (const auto& entry : std::filesystem::directory_iterator(folder, none)) {
            const std::string path = entry.path().string();
            Pictures& known = m_pictures[path];
            const std::string stamp = StampOf(path);
            if (stamp == known.stamp) continue;
            known.stamp = stamp;
            known.looks.push_back(LookAt(path));
            if (known.looks.size() > kKept) known.looks.erase(known.looks.begin());
        }
}

std::string OneFile::Names() const {
    const ProgramState& s = m.house().state;
    const FileListBox& list = *m.house().controls.FileListBox;
    const int row = list.CurrentRow();
    std::string faults;
    if (row >= 0) {
        const std::string path = JoinPath(list.Path(), list.Text(row));
        if (s.Filename != path) faults += Differ("Filename", s.Filename, path);
        if (s.FileIndex != row)
            faults += Differ("FileIndex", std::to_string(s.FileIndex), std::to_string(row));
        const std::string count = std::to_string(row + 1) + " of " + std::to_string(list.Count());
        if (s.TextNumOf != count) faults += Differ("TextNumOf", s.TextNumOf, count);
    }
    const bool named = !s.FileNameOnly.empty();
    if (named && s.FileNameOnly != LastPart(s.Filename))
        faults += Differ("FileNameOnly", s.FileNameOnly, LastPart(s.Filename));
    const auto* status =
        m.house().window.statusBar()->findChild<QLabel*>(QStringLiteral("StatusBar1_Text"));
    const std::string said = status ? FromQt(status->text()) : "";
    // A folder that cannot be entered leaves the list as it is, and this is said of it.
    const bool refused = said == "Nothing to display in current folder.";
    if (row >= 0 && !refused && !said.starts_with(s.Filename))
        faults += Differ("the status line", said, s.Filename);
    return faults;
}

std::string OneFile::Panel() const {
    const ProgramState& s = m.house().state;
    const QListWidget& rows = *m.house().controls.List1;
    if (s.HistoryListed || rows.count() == 0) return {};
    const std::string first = FromQt(rows.item(0)->text());
    if (s.PanelRows.empty() || s.PanelRows[0] != first)
        return Differ("the panel", first, s.PanelRows.empty() ? "nothing" : s.PanelRows[0]);
    const bool fault = s.VideoImage() && first == " "; // of a clip, which has no more to say
    if (!fault && first.find(LastPart(s.Filename)) == std::string::npos)
        return Differ("the panel", first, LastPart(s.Filename));
    return {};
}

std::string OneFile::NotePath() const {
    const ProgramState& s = m.house().state;
    if (s.NotesFolder.empty()) return {};
    return MakeFiles()
        ->FindAnyCase(tarn::NotePath(s.NotesFolder, LastPart(s.Filename)))
        .value_or(std::string());
}

bool OneFile::NoteIsShown() const {
    constexpr std::size_t kRead = 8000;
    const std::string path = NotePath();
    const std::string bytes = path.empty() ? "" : BytesOf(path).substr(0, kRead);
    const std::string& text = m.house().state.NoteText;
    return Lines(text) == Lines(FromCodePage(WithoutOldMarks(bytes)));
}

std::string OneFile::Note(bool carries) const {
    const ProgramState& s = m.house().state;
    std::string faults;
    if (s.NoteText.empty() != m.house().controls.NotesBox->toPlainText().isEmpty())
        faults += "the note box is not NoteText; ";
    const std::string caption = FromQt(m.house().controls.NotesFrame->text());
    if (caption.starts_with("Notes for: ") && caption != "Notes for: " + LastPart(s.Filename))
        faults += Differ("the note's caption", caption, LastPart(s.Filename));
    const bool renamed = s.NoteText == m_textBefore && !std::filesystem::exists(m_before);
    if (s.Filename != m_before && !carries && !renamed && !NoteIsShown() &&
        !(s.WebImage() && s.NoteText.empty()))
        faults += Differ("the note", s.NoteText.substr(0, 40), "that of " + s.Filename);
    return faults;
}

std::string OneFile::Pixels() const {
    const House& house = m.house();
    const ProgramState& s = house.state;
    const auto known = m_pictures.find(s.Filename);
    if (s.Kind != FileKind::Picture || !s.ImageLoaded || known == m_pictures.end()) return {};
    const QImage shown = house.controls.Picture1->Picture();
    if (shown.isNull()) return "a picture is loaded and none is shown; ";
    std::string is;
    for (const Look1& look : known->second.looks) {
        if (!look.known) return {};
        const QSize size(s.ImageWidth, s.ImageHeight);
        const bool fits = size == look.size || size == look.size.transposed();
        if (fits && (s.BrightnessValue != 0 || IsClose(Centre(shown), look.color))) return {};
        is = FromQt(look.color.name()) + " " + std::to_string(look.size.width());
    }
    return Differ("the picture", FromQt(Centre(shown).name()) + " " + std::to_string(s.ImageWidth),
                  is + " of " + s.Filename);
}

std::string OneFile::Titles() const {
    const std::string& file = m.house().state.Filename;
    std::string faults;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (!window->isVisible()) continue;
        const std::string title = FromQt(window->windowTitle());
        const bool picture =
            window->objectName() == "FrmPic" || window->objectName() == "frmOnetoOne";
        if (picture && m.house().state.ImageLoaded &&
            title.find(LastPart(file)) == std::string::npos)
            faults += Differ("a title", title, file);
    }
    return faults;
}

// Marks come in behind the files, and are shown with the next events.
std::string OneFile::Mark() const {
    const House& house = m.house();
    const std::string& file = house.state.Filename;
    std::string is;
    std::string shown;
    const bool same = QTest::qWaitFor(
        [&] {
            const auto mark = m.house().marks.MarkOf(file);
            is = mark ? MarkText(*mark) : "";
            if (!is.empty() && m.house().marks.KeptAside(file)) is += " !";
            const QLabel& label = *house.controls.MarkLabel;
            shown = label.isHidden() ? "" : FromQt(label.text());
            return shown == is;
        },
        1000);
    return same ? std::string() : Differ("the mark", shown, is + " of " + file);
}

// What was being written when another file came: in the restore buffer, in a note, or kept aside.
std::string OneFile::Unsaved() const {
    const ProgramState& s = m.house().state;
    const std::string& text = m_unsavedBefore;
    if (text.empty() || s.Filename == m_before || text == s.NoteText || text == s.NotesSave)
        return {};
    for (const char* folder : {"home", "notes"})
        for (const auto& [name, bytes] : ReadTree(m.Folder(folder)))
            if (bytes.find(text) != std::string::npos ||
                FromCodePage(bytes).find(text) != std::string::npos)
                return {};
    return "lost: the unsaved text '" + text.substr(0, 40) + "'; ";
}

std::string OneFile::Check(bool carries) {
    Look();
    const ProgramState& s = m.house().state;
    std::string faults;
    if (!s.Filename.empty() && m.house().controls.FileListBox->Count() > 0)
        faults = Names() + Panel() + Note(carries) + Unsaved() + Pixels() + Titles() + Mark();
    m_before = s.Filename;
    m_textBefore = s.NoteText;
    m_unsavedBefore = m.house().notes.UnsavedText();
    return faults;
}

} // namespace tarn::testing
