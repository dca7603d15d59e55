// NotesRoom: the keys of the note.
#include "notes/NotesRoom.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>

namespace tarn {

namespace {

constexpr char kNext[] = "saves the note and goes to the next picture";
constexpr char kPrevious[] = "saves the note and goes to the previous picture";

} // namespace

// clang-format off
const NotesRoom::KeyRow NotesRoom::kKeys[] = {
    {"Ctrl+S", "saves the note", [](NotesRoom& r) { r.PressSave(*r.m.controls.SaveNotesButton); }, false},
    {"Ctrl+Return", kNext, [](NotesRoom& r) { r.PressSave(*r.m.controls.SaveNotes2Button); }, false},
    {"Ctrl+Enter", kNext, [](NotesRoom& r) { r.PressSave(*r.m.controls.SaveNotes2Button); }, false},
    {"Ctrl+Shift+Return", kPrevious, [](NotesRoom& r) { r.PressSave(*r.m.controls.SaveNotes3Button); }, false},
    {"Ctrl+Shift+Enter", kPrevious, [](NotesRoom& r) { r.PressSave(*r.m.controls.SaveNotes3Button); }, false},
    {"Esc", "leaves the note for the picture", [](NotesRoom& r) { r.m.shell.FocusPane(); }, true},
};
// clang-format on

std::vector<keys::KeyLine> NotesRoom::KeyLines() {
    std::vector<keys::KeyLine> lines;
    for (const KeyRow& row : kKeys) keys::AddLine(lines, row.keys, row.says);
    return lines;
}

void NotesRoom::ConnectKeys() {
    QPlainTextEdit* box = m.controls.NotesBox;
    for (const KeyRow& row : kKeys) {
        auto* key = new QShortcut(QKeySequence(QString::fromLatin1(row.keys)),
                                  row.inBox ? static_cast<QWidget*>(box) : box->window());
        if (row.inBox) key->setContext(Qt::WidgetShortcut);
        key->setAutoRepeat(false); // a key held too long would write one note for many pictures
        QObject::connect(key, &QShortcut::activated, box, [this, act = row.act] { act(*this); });
    }
}

// A button that is off says by itself that it does nothing; a key has to be told why.
void NotesRoom::PressSave(QPushButton& button) {
    if (m.state.NotesFolder.empty()) SetNotesButton_Click();
    if (m.state.NotesFolder.empty())
        m.shell.ShowMessage("Notes folder has not been set");
    else if (button.isEnabled())
        button.click();
    else
        m.shell.ShowMessage(m.state.NoteText.empty() ? "There is no text to save"
                                                     : "No file is selected");
}

} // namespace tarn
