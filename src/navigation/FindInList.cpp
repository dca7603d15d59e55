#include "navigation/FindInList.h"

#include "common/paths.h"
#include "common/text.h"
#include "navigation/CurrentRow.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/PictureBox.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace tarn {

const WindowKey<FindInList> FindInList::kKeys[] = {
    {Qt::Key_Down, "next file found", &FindInList::StepOn},
    {Qt::Key_Up, "file found before", &FindInList::StepBack},
    {Qt::Key_Return, "stay on the file found", &FindInList::StayOnFound},
    {Qt::Key_Enter, "stay on the file found", &FindInList::StayOnFound},
    {Qt::Key_Escape, "the whole list again", &FindInList::Close},
};

std::vector<keys::KeyLine> FindInList::KeyLines() {
    return LinesOf(kKeys);
}

void FindInList::ConnectControls() {
    const MainControls& c = m.controls;
    c.FindLine->setPlaceholderText(QStringLiteral("Find in names and notes"));
    c.FindLine->setClearButtonEnabled(true);
    Connect(c.FindButton, [this] { Open(); });
    QObject::connect(c.FindLine, &QLineEdit::textChanged, this, [this] { Narrow(); });
    for (QWidget* watched : std::initializer_list<QWidget*>{c.FindLine, c.FileListBox, c.Picture1,
                                                            c.Picture2, c.LogText})
        watched->installEventFilter(this);
}

bool FindInList::IsOpen() const {
    return !m.controls.FindLine->isHidden();
}

void FindInList::Open() {
    if (!IsOpen()) ReadTexts();
    m.controls.FindLine->show();
    m.controls.FindLine->setFocus(Qt::ShortcutFocusReason);
    m.controls.FindLine->selectAll();
}

// Once, so that a letter reads no file.
void FindInList::ReadTexts() {
    const FileListBox& list = *m.controls.FileListBox;
    m_texts.clear();
    for (int row = 0; row < list.Count(); ++row) {
        const std::string& name = list.Text(row);
        m_texts[name] = FoldCase(name + "\n" + m.notes.SavedNoteOf(JoinPath(list.Path(), name)));
    }
}

void FindInList::Narrow() {
    FileListBox& list = *m.controls.FileListBox;
    const std::string wanted = FoldCase(FromQt(m.controls.FindLine->text()));
    if (wanted.empty())
        list.Narrow({});
    else
        list.Narrow([this, wanted](const std::string& name) {
            const auto known = m_texts.find(name); // a new file has its name alone
            return Contains(known == m_texts.end() ? FoldCase(name) : known->second, wanted);
        });
    TakeCurrentRow(m);
    if (list.Count() < 1)
        m.shell.ShowMessage("No name or note has '" + FromQt(m.controls.FindLine->text()) + "'");
}

void FindInList::Close() {
    if (!IsOpen()) return;
    {
        const QSignalBlocker silent(m.controls.FindLine);
        m.controls.FindLine->clear();
    }
    const bool hadKeyboard = m.controls.FindLine->hasFocus();
    m_texts.clear();
    m.controls.FileListBox->Narrow({});
    TakeCurrentRow(m);
    if (hadKeyboard) m.shell.FocusPane();
    m.controls.FindLine->hide();
}

void FindInList::Step(int by) {
    const FileListBox& list = *m.controls.FileListBox;
    if (list.Count() < 1) return;
    const int row = list.CurrentRow();
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row < 0 ? 0 : std::clamp(row + by, 0, list.Count() - 1),
                           KeepingKeyboard());
}

void FindInList::StayOnFound() {
    if (m.controls.FileListBox->Count() < 1) return; // there is none; the line stays
    if (m.controls.FileListBox->CurrentRow() < 0) Step(0);
    Close();
}

bool FindInList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !IsOpen()) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched != m.controls.FindLine && key != Qt::Key_Escape) return false;
    return ActOnKey(*this, kKeys, key);
}

} // namespace tarn
