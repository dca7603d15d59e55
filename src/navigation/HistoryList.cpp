#include "navigation/HistoryList.h"

#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QKeyEvent>
#include <QListWidget>
#include <QPushButton>

namespace tarn {

namespace {

constexpr char kFirstRow[] = "Double click here to clear history, next entries to view image.";
constexpr int kEntry = Qt::UserRole; // entry of the history in a row; 0 in the first

void AddRow(QListWidget& list, const std::string& text, int entry) {
    auto* row = new QListWidgetItem(ToQt(text), &list);
    row->setData(kEntry, entry);
}

} // namespace

const WindowKey<HistoryList> HistoryList::kKeys[] = {
    {Qt::Key_Return, "open the folder or picture", &HistoryList::List1_DblClick},
    {Qt::Key_Enter, "open the folder or picture", &HistoryList::List1_DblClick},
    {Qt::Key_X, "take the row out of the view", &HistoryList::TakeRowOut},
};

std::vector<keys::KeyLine> HistoryList::KeyLines() {
    return LinesOf(kKeys);
}

HistoryList::HistoryList(Context& context, std::function<void(int)> goTo)
    : m(context), m_goTo(std::move(goTo)) {}

void HistoryList::ConnectControls() {
    QListWidget* list = m.controls.List1;
    connect(list, &QListWidget::itemDoubleClicked, this, [this] { List1_DblClick(); });
    list->installEventFilter(this);
    Connect(m.controls.FileHistoryButton, [this] { FileHistoryButton_Click(); });
}

void HistoryList::FileHistoryButton_Click() {
    const ProgramState& s = m.state;
    QListWidget& list = *m.controls.List1;
    list.clear();
    AddRow(list, kFirstRow, 0);
    for (int entry = 1; entry <= s.HistHigh; ++entry) {
        const auto at = static_cast<std::size_t>(entry);
        AddRow(list, s.HistFolderPath[at] + "  ;" + std::to_string(s.HistFileIndex[at]), entry);
    }
    m.state.HistoryListed = true;
}

void HistoryList::List1_DblClick() {
    const QListWidgetItem* row = m.controls.List1->currentItem();
    if (!m.state.HistoryListed || !row) return;
    const int entry = row->data(kEntry).toInt();
    if (entry == 0)
        ClearHistory();
    else if (entry <= m.state.HistHigh)
        m_goTo(entry);
}

void HistoryList::ClearHistory() {
    ProgramState& s = m.state;
    const FileListBox& list = *m.controls.FileListBox;
    s.HistCur = s.HistHigh = list.Count() > 0 ? 1 : 0;
    if (s.HistHigh == 1) {
        s.HistFolderPath[1] = m.controls.FolderTreeview1->SelectedPath();
        s.HistFileIndex[1] = list.CurrentRow();
    }
    SetEnabled(m.controls.FolderBackButton, false);
    SetEnabled(m.controls.FolderFwdButton, false);
    m.shell.ShowMessage("File/Folder history cleared");
    GiveUp();
}

void HistoryList::GiveUp() {
    if (!m.state.HistoryListed) return;
    m.state.HistoryListed = false;
    m.controls.List1->clear();
}

void HistoryList::List1_KeyPress(int key) {
    if (m.state.HistoryListed) ActOnKey(*this, kKeys, key);
}

void HistoryList::TakeRowOut() {
    QListWidget& list = *m.controls.List1;
    delete list.takeItem(list.currentRow());
}

bool HistoryList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !m.state.HistoryListed)
        return QObject::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!(key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) &&
        ActOnKey(*this, kKeys, key.key()))
        return true;
    return QObject::eventFilter(watched, event);
}

} // namespace tarn
