#include "navigation/ListArrangement.h"

#include "common/paths.h"
#include "navigation/CurrentRow.h"
#include "widgets/FileListBox.h"

#include <QAbstractItemView>
#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QMenu>
#include <QStyle>

#include <algorithm>

namespace tarn {

namespace {

constexpr int kNoteChoices = 3; // ahead of the marks in their box
constexpr int kLater = 300;     // milliseconds

void ShowWholeRows(QComboBox& box) {
    QAbstractItemView& rows = *box.view();
    const int bar = rows.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    rows.setMinimumWidth(rows.sizeHintForColumn(0) + bar);
}

} // namespace

ListArrangement::ListArrangement(Context& context)
    : m(context), m_facts(context.files, [this] {
          QMetaObject::invokeMethod(
              &m_here, [this] { Rearrange(); }, Qt::QueuedConnection);
      }) {
    m_later.setSingleShot(true);
    m_later.setInterval(kLater);
    QObject::connect(&m_later, &QTimer::timeout, &m_here, [this] { Rearrange(); });
}

void ListArrangement::ConnectControls() {
    const MainControls& c = m.controls;
    for (const MarkChoiceRow& row : MarkChoices())
        c.NoteFilterCombo->addItem(QString::fromLatin1(row.caption));
    QObject::connect(c.NoteFilterCombo, &QComboBox::activated, &m_here,
                     [this](int index) { NoteFilterCombo_Click(index); });
    auto* group = new QActionGroup(c.SortMenu);
    for (std::size_t i = 0; i < SortKinds().size(); ++i) {
        const QString caption = QString::fromLatin1(SortKinds()[i].caption);
        QAction* entry = group->addAction(caption);
        entry->setObjectName(QStringLiteral("SortButton_%1").arg(i));
        entry->setCheckable(true);
        c.SortMenu->insertAction(c.SortNaturalButton, entry);
        m_entries.push_back(entry);
        Connect(entry, [this, i] { SetOrder({static_cast<int>(i), m_order.natural}); });
        entry->setEnabled(true);
        c.SortCombo->addItem(QString(caption).remove(QLatin1Char('&')));
    }
    c.SortMenu->insertSeparator(c.SortNaturalButton);
    for (QComboBox* box : {c.NoteFilterCombo, c.SortCombo}) ShowWholeRows(*box);
    Connect(c.SortNaturalButton, [this] {
        SetOrder({m_order.kind, m.controls.SortNaturalButton->isChecked()});
    });
    QObject::connect(c.SortCombo, &QComboBox::activated, &m_here, [this](int kind) {
        SetOrder({kind, m_order.natural});
    });
    c.FileListBox->SetArrange([this](const std::string& folder, std::vector<std::string> names) {
        return Arranged(folder, std::move(names));
    });
    QObject::connect(c.FileListBox, &FileListBox::folderRead, &m_here, [this] { FolderRead(); });
    m.marks.Follow([this] { MarksCame(); });
    m.night.FollowFrames([this] { MeasuresCame(); });
    ShowOrder();
}

const SortKind& ListArrangement::Kind() const {
    return SortKinds()[static_cast<std::size_t>(m_order.kind)];
}

// Asked while a folder is being read, ahead of FolderRead. While marks come in, the file that is
// shown stays, whatever becomes of its mark.
std::vector<std::string> ListArrangement::Arranged(const std::string& folder,
                                                   std::vector<std::string> names) {
    m_order = OrderOfFolder(m.state.SortOfFolders, folder);
    const auto markOf = [&](const std::string& name) {
        return m.marks.MarkOf(JoinPath(folder, name)).value_or(Mark());
    };
    if (m_choice >= 0) {
        const auto takes = MarkChoices()[static_cast<std::size_t>(m_choice)].takes;
        const std::string shown =
            m_marksAwaited && m.controls.FileListBox->RowOf(m.state.FileNameOnly) >= 0
                ? m.state.FileNameOnly
                : std::string();
        std::erase_if(
            names, [&](const std::string& name) { return name != shown && !takes(markOf(name)); });
    }
    if (Needs() == SortNeeds::Measures)
        return Sorted(std::move(names), m_order, [&](const std::string& name) {
            const JudgedFrame* frame = m.night.FrameOf(JoinPath(folder, name));
            return frame ? SortKeyOf(*frame, *Kind().number) : std::nullopt;
        });
    if (Needs() == SortNeeds::Mark)
        return Sorted(std::move(names), m_order,
                      [&](const std::string& name) { return SortKeyOf(markOf(name)); });
    return Sorted(std::move(names), m_order, [&](const std::string& name) {
        return m_facts.KeyOf(folder, name, m_order.kind);
    });
}

void ListArrangement::FolderRead() {
    const FileListBox& list = *m.controls.FileListBox;
    m_marksAwaited = true;
    ShowOrder();
    AwaitMeasures();
    m_measuresAwaited = Needs() == SortNeeds::Measures; // those that are known are of before
    if (Needs() == SortNeeds::Look || Needs() == SortNeeds::CaptureTime)
        m_facts.Read(list.Path(), list.Listed(), m_order.kind);
}

// Rows that moved while they come in would be a list that nobody can use: they move once.
void ListArrangement::AwaitMeasures() {
    const bool isByMeasures = Needs() == SortNeeds::Measures;
    m.night.WantFrames(this, isByMeasures);
    m_measuresAwaited = isByMeasures && !m.night.AllMeasured();
    if (!m_measuresAwaited) return;
    const std::string said = m.night.MeasuringSaid();
    m.shell.ShowIfNoMessage("The list is sorted once all is measured" +
                            (said.empty() ? said : " - " + said));
}

void ListArrangement::MeasuresCame() {
    if (!m_measuresAwaited || !m.night.AllMeasured()) return;
    m_measuresAwaited = false;
    Rearrange();
}

// As they come in, and once more when all are there; later ones of the user's move no row.
void ListArrangement::MarksCame() {
    if (!m_marksAwaited || (m_choice < 0 && Needs() != SortNeeds::Mark)) return;
    Rearrange();
    if (m.marks.AllRead()) m_marksAwaited = false;
}

void ListArrangement::NoteFilterCombo_Click(int index) {
    const int choice = std::max(-1, index - kNoteChoices);
    if (choice == m_choice) return;
    m_choice = choice;
    m_marksAwaited = false; // the file shown stays only where it is chosen
    Rearrange();
    m_marksAwaited = !m.marks.AllRead();
}

void ListArrangement::ListAllMarks() {
    if (m_choice < 0) return;
    m.controls.NoteFilterCombo->setCurrentIndex(0);
    NoteFilterCombo_Click(0);
}

void ListArrangement::SetOrder(const ListOrder& order) {
    const FileListBox& list = *m.controls.FileListBox;
    if (order == m_order || list.Path().empty()) return ShowOrder();
    m.state.SortOfFolders = WithOrder(m.state.SortOfFolders, list.Path(), order);
    m_order = order;
    ShowOrder();
    AwaitMeasures();
    if (Needs() == SortNeeds::Look || Needs() == SortNeeds::CaptureTime)
        m_facts.Read(list.Path(), list.Listed(), m_order.kind); // which rearranges
    else if (!m_measuresAwaited)
        Rearrange();
}

void ListArrangement::ShowOrder() {
    const MainControls& c = m.controls;
    c.SortCombo->setCurrentIndex(m_order.kind);
    m_entries[static_cast<std::size_t>(m_order.kind)]->setChecked(true);
    c.SortNaturalButton->setChecked(m_order.natural);
}

// Shows and batches go by the rows as they are.
void ListArrangement::Rearrange() {
    if (m.state.SlideViewing || m.state.BatchRuns) return m_later.start();
    FileListBox& list = *m.controls.FileListBox;
    const bool wasEmpty = list.Count() == 0;
    if (!list.Rearrange()) return;
    TakeCurrentRow(m);
    // What is found in the list hides no picture that is shown.
    if ((list.CurrentRow() < 0 || wasEmpty) && !list.IsNarrowed())
        m.navigation.EnableListCommands();
}

} // namespace tarn
