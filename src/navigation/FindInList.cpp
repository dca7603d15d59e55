#include "navigation/FindInList.h"

#include "common/paths.h"
#include "common/text.h"
#include "navigation/CurrentRow.h"
#include "navigation/FindTerms.h"
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

namespace {

constexpr int kMeasuresGather = 1000; // milliseconds

} // namespace

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
    c.FindLine->setToolTip(QStringLiteral(
        "Also by marks and measures: keep, reject, rating>=3, hfr>3, stars<200, filter:Ha"));
    m.night.FollowFrames([this] { ComesMore(); });
    m.marks.Follow([this] {
        if (m_marksAwaited) ComesMore();
        m_marksAwaited = !m.marks.AllRead();
    });
    QObject::connect(c.FileListBox, &FileListBox::folderRead, this, [this] {
        m_marksAwaited = true;
        ComesMore();
    });
    m_later.setSingleShot(true);
    m_later.setInterval(kMeasuresGather);
    QObject::connect(&m_later, &QTimer::timeout, this, [this] { LookAgain(); });
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
    const FindTerms wanted(FromQt(m.controls.FindLine->text()));
    m_hasTerms = wanted.HasTerms();
    // Once they are wanted they stay so until the line closes: each letter is no new beginning.
    m_needsMeasures = m_needsMeasures || wanted.NeedsMeasures();
    if (m_needsMeasures) m.night.WantFrames(this, true);
    if (wanted.IsEmpty())
        list.Narrow({});
    else
        list.Narrow([this, wanted](const std::string& name) {
            const auto known = m_texts.find(name); // a new file has its name alone
            const std::string text = known == m_texts.end() ? FoldCase(name) : known->second;
            const std::string path = JoinPath(m.controls.FileListBox->Path(), name);
            return wanted.Takes(
                {text, m.night.FrameOf(path), m.marks.MarkOf(path).value_or(Mark())});
        });
    TakeCurrentRow(m);
    const std::string measuring = wanted.NeedsMeasures() ? m.night.MeasuringSaid() : "";
    if (!measuring.empty())
        m.shell.ShowMessage("Found so far - " + measuring);
    else if (list.Count() < 1)
        m.shell.ShowMessage(
            (wanted.HasTerms() ? "No file is found by '" : "No name or note has '") +
            FromQt(m.controls.FindLine->text()) + "'");
    else if (wanted.NeedsMeasures())
        m.shell.ShowMessage(std::to_string(list.Count()) + " found");
}

// Of the folder that is read again, or as marks and measures come in. Shows and batches go by the
// rows as they are; what is selected stays so.
void FindInList::LookAgain() {
    if (!IsOpen() || !m_hasTerms) return;
    if (m.state.SlideViewing || m.state.BatchRuns) return m_later.start();
    if (m.controls.FileListBox->Rearrange()) TakeCurrentRow(m);
    if (m_needsMeasures && m.night.MeasuringSaid().empty())
        m.shell.ShowMessage(std::to_string(m.controls.FileListBox->Count()) + " found");
}

void FindInList::ComesMore() {
    if (m_hasTerms && !m_later.isActive()) m_later.start();
}

void FindInList::Close() {
    if (!IsOpen()) return;
    {
        const QSignalBlocker silent(m.controls.FindLine);
        m.controls.FindLine->clear();
    }
    const bool hadKeyboard = m.controls.FindLine->hasFocus();
    m_texts.clear();
    m_hasTerms = false;
    m_needsMeasures = false;
    m_later.stop();
    m.night.WantFrames(this, false);
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
