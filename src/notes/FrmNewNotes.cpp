#include "notes/FrmNewNotes.h"

#include "common/paths.h"
#include "history/Changes.h"
#include "notes/NoteWindows.h"
#include "notes/NotesRoom.h"
#include "notes/frmExpCalc.h"
#include "platform/ProgramFiles.h"
#include "platform/QtText.h"
#include "sky/night/KeptMeasures.h"
#include "widgets/ElidedLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include <ctime>
#include <utility>

namespace tarn {

namespace {

constexpr auto kFilter = static_cast<std::size_t>(NoteEntry::Filter);

// Where the desk keeps the chosen row of each list.
constexpr std::array<int NotesState::*, kNoteEntries> kChoices = {
    &NotesState::NewNotesTelescope, &NotesState::NewNotesGuideScope, &NotesState::NewNotesLens,
    &NotesState::NewNotesMount,     &NotesState::NewNotesCamera,     &NotesState::NewNotesFilter,
    &NotesState::NewNotesExposure,  &NotesState::NewNotesProcessing, &NotesState::NewNotesLocation,
    &NotesState::NewNotesDate};

// The row whose text stands in the box; -1 when something else was typed.
int ChosenRow(const QComboBox& combo) {
    const int row = combo.currentIndex();
    return row >= 0 && combo.itemText(row) == combo.currentText() ? row : -1;
}

} // namespace

void FrmNewNotes::OpenWindow() {
    show();
    FollowCurrent();
    raise();
    activateWindow();
}

void FrmNewNotes::EnableSave(bool enabled) {
    m_commandSave->setEnabled(enabled);
}

void FrmNewNotes::LoadNoteFormats() {
    KeepChoices(); // what was chosen outlives a load that fails
    m_path = JoinPath(m.state.NotesFolder, m.state.NFSfilename);
    Changes changes(m.history, "New note formats file");
    const auto bytes = ReadFormatFile(changes, m_path, ProgramFile(m.state.NFSfilename));
    m_fromFile = bytes.has_value();
    LoadFormats(m_lists, bytes, FromFileTime(std::time(nullptr)));
    for (std::size_t i = 0; i < kNoteEntries; ++i) ShowList(i, bytes.has_value());
    if (!bytes) {
        m_label1->setText(ToQt("Could not find file '" + m_path + "', using defaults"));
        m_label1->setToolTip(QStringLiteral("Defaults"));
        return;
    }
    if (!m_choicesApplied) ApplyStoredChoices();
    if (m_checkFirst->isChecked() && m_firstLines->Text().empty()) CommandSetLine_Click();
    m_label1->setText(ToQt("Settings loaded from '" + m_path + "'"));
    m_label1->setToolTip(ToToolTip(m_path));
}

// The filter's text stays whatever its list becomes.
void FrmNewNotes::ShowList(std::size_t entry, bool selectFirst) {
    QComboBox& combo = *m_entries[entry].combo;
    const QString text = entry == kFilter ? combo.currentText() : QString();
    QStringList items;
    for (const std::string& each : m_lists[entry]) items << ToQt(each);
    combo.clear();
    combo.addItems(items);
    combo.setCurrentIndex(entry != kFilter && selectFirst ? 0 : -1);
    if (combo.currentIndex() < 0) combo.setEditText(text);
    m_entries[entry].source->SetText({});
    m_entries[entry].isFilled = false;
}

void FrmNewNotes::ApplyStoredChoices() {
    m_choicesApplied = true;
    for (std::size_t i = 0; i < kNoteEntries; ++i) {
        const int row = m.state.*kChoices[i];
        if (row >= 0 && row < m_entries[i].combo->count()) m_entries[i].combo->setCurrentIndex(row);
    }
}

void FrmNewNotes::KeepValues() {
    TakePlace(*this, m.state.NewNotesPlace);
    if (m_calculator) TakePlace(*m_calculator, m.state.ExpCalcPlace);
    KeepChoices();
}

// Lists without a file stand on no row of their own.
void FrmNewNotes::KeepChoices() {
    if (!m_fromFile) return;
    for (std::size_t i = 0; i < kNoteEntries; ++i)
        m.state.*kChoices[i] = ChosenRow(*m_entries[i].combo);
}

void FrmNewNotes::SetExposure(const std::string& text) {
    constexpr auto kExposure = static_cast<std::size_t>(NoteEntry::Exposure);
    m_entries[kExposure].combo->setEditText(ToQt(text));
    MakeOwn(kExposure);
}

EntryTicks FrmNewNotes::Ticks() const {
    EntryTicks ticks{};
    for (std::size_t i = 0; i < kNoteEntries; ++i) ticks[i] = m_entries[i].check->isChecked();
    return ticks;
}

void FrmNewNotes::CommandSet_Click() {
    NoteComposition note;
    if (m_checkFirst->isChecked()) note.firstLines = m_firstLines->Text();
    const EntryTicks ticks = Ticks();
    for (std::size_t i = 0; i < kNoteEntries; ++i)
        if (ticks[i]) note.entries[i] = FromQt(m_entries[i].combo->currentText());
    m_room.ReplaceText(ComposeNote(note));
}

void FrmNewNotes::CommandAdd_Click() {
    for (const auto& [entry, value] : ReadBack(m_firstLines->Text(), Ticks())) {
        const auto at = static_cast<std::size_t>(entry);
        m_lists[at].insert(m_lists[at].begin(), value);
        m_entries[at].combo->insertItem(0, ToQt(value));
        m_entries[at].combo->setCurrentIndex(0);
        m_entries[at].combo->setEditText(ToQt(value)); // also where row 0 was current before
        MakeOwn(at);
    }
}

void FrmNewNotes::CommandSetLine_Click() {
    m_firstLines->Replace(m.state.NoteText);
}

void FrmNewNotes::CommandSetLine1_Click() {
    m_firstLines->Replace(FirstLines(m.state.NoteText, m_textFirstLines->text().toInt()));
}

void FrmNewNotes::CommandClear_Click() {
    m_firstLines->Replace({});
}

void FrmNewNotes::CommandToggle_Click() {
    for (const EntryControls& each : m_entries) each.check->setChecked(m_allOff);
    m_allOff = !m_allOff;
    m_commandToggle->setText(m_allOff ? QStringLiteral("On") : QStringLiteral("Of f"));
}

void FrmNewNotes::CommandCalcExposure_Click() {
    if (!m_calculator) m_calculator = std::make_unique<frmExpCalc>(m.state, *this);
    m_calculator->show();
    m_calculator->raise();
    m_calculator->activateWindow();
}

void FrmNewNotes::CommandCancel_Click() {
    hide();
    if (m_calculator) m_calculator->hide();
}

void FrmNewNotes::CommandPrev_Click() {
    m.navigation.PrevButton_Click();
}

void FrmNewNotes::CommandNext_Click() {
    m.navigation.NextButton_Click();
}

void FrmNewNotes::CommandSave_Click() {
    m.shell.Tell(m.notes.SaveNote());
}

void FrmNewNotes::CommandRestore_Click() {
    m_room.ReloadNote();
}

void FrmNewNotes::CommandEdit_Click() {
    m_room.EditFormatFile(m_path);
}

// What is typed or chosen is the user's.
void FrmNewNotes::MakeOwn(std::size_t entry) {
    m_entries[entry].isOwn = true;
    m_entries[entry].isFilled = false;
    m_entries[entry].source->SetText({});
}

// All of it, but what is typed until the answer is there.
void FrmNewNotes::CommandFill_Click() {
    m_fills = true;
    m_filledOf = m.state.Filename;
    for (EntryControls& entry : m_entries) entry.isOwn = false;
    AskForFacts();
}

// What was filled in is of the picture before; the user goes on with it, or has it filled anew.
void FrmNewNotes::FollowCurrent() {
    if (m_filledOf == m.state.Filename) return;
    m_filledOf = m.state.Filename;
    m_fills = false;
    const bool anew = m_fillEach->isChecked() && isVisible();
    for (EntryControls& entry : m_entries) {
        entry.source->SetText({});
        if (anew && entry.isFilled) entry.combo->setEditText({});
        if (anew) entry.isFilled = false;
    }
    if (anew)
        AskForFacts();
    else if (m_facts)
        m_facts->Ask({});
}

// A slow disk is nothing that the window waits for.
void FrmNewNotes::AskForFacts() {
    if (!m_facts)
        m_facts = std::make_unique<Late<std::pair<std::string, FactLists>, PictureFacts>>(
            [](const std::pair<std::string, FactLists>& wish) {
                const FrameHeader header = ReadFrameHeader(wish.first, wish.second.ZoneMinutes());
                const auto hfr = KeptMeasures().HfrOf(wish.first);
                return PictureFacts{wish.first, FactsOf(header, wish.second.Sources(hfr)),
                                    header.fault};
            },
            [this] {
                QMetaObject::invokeMethod(
                    this, [this] { TakeFacts(); }, Qt::QueuedConnection);
            });
    std::string fault;
    auto lists = m_room.Lists(fault);
    if (!lists) return m.shell.ShowMessage("ERROR - " + fault);
    constexpr auto kDate = static_cast<std::size_t>(NoteEntry::Date);
    // The date in the form that is chosen: the last six of its list.
    const int forms = int(DateEntries({}).size());
    const int form =
        m_entries[kDate].combo->currentIndex() - m_entries[kDate].combo->count() + forms;
    lists->dateForm = std::size_t(std::max(0, form));
    m_facts->Ask(std::pair(m.state.Filename, std::move(*lists)));
}

void FrmNewNotes::TakeFacts() {
    const auto facts = m_facts->Take();
    if (!facts || facts->path != m.state.Filename) return; // another picture is shown by now
    int filled = 0;
    for (std::size_t i = 0; i < kNoteEntries; ++i) {
        EntryControls& entry = m_entries[i];
        const auto& fact = facts->facts[i];
        if (!entry.check->isChecked() || entry.isOwn) continue;
        entry.source->SetText(fact ? fact->source : std::string());
        // What was filled in of another picture is none of this one's.
        if (fact || entry.isFilled) entry.combo->setEditText(fact ? ToQt(fact->value) : QString());
        entry.isFilled = fact.has_value();
        filled += fact ? 1 : 0;
    }
    if (std::exchange(m_fills, false) && filled == 0)
        m.shell.ShowMessage("Nothing to fill in from '" + LastPart(facts->path) + "'" +
                            (facts->fault.empty() ? "" : " - " + facts->fault));
}

// One digit: what is typed on is cut, and what is no digit makes it 1.
void FrmNewNotes::TextFirstLines_KeyUp(int key) {
    const bool counts = (key >= Qt::Key_1 && key <= Qt::Key_9) || key == Qt::Key_Backspace;
    QString text = counts ? m_textFirstLines->text().left(1) : QStringLiteral("1");
    if (!text.isEmpty() && (text[0] < QLatin1Char('1') || text[0] > QLatin1Char('9')))
        text = QStringLiteral("1");
    // The same text set again would take a selection away.
    if (text != m_textFirstLines->text()) m_textFirstLines->setText(text);
}

bool FrmNewNotes::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_textFirstLines) return QDialog::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        m_pressedInFirstLines = static_cast<QKeyEvent*>(event)->key();
    else if (event->type() == QEvent::KeyRelease &&
             static_cast<QKeyEvent*>(event)->key() == m_pressedInFirstLines)
        TextFirstLines_KeyUp(m_pressedInFirstLines);
    else if (event->type() == QEvent::FocusOut && m_textFirstLines->text().isEmpty())
        m_textFirstLines->setText(QStringLiteral("1"));
    return QDialog::eventFilter(watched, event);
}

} // namespace tarn
