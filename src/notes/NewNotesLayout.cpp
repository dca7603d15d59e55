// The composer's controls and where they stand.
#include "notes/FrmNewNotes.h"
#include "notes/NoteWindows.h"
#include "notes/frmExpCalc.h"
#include "widgets/ElidedLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>

namespace tarn {

namespace {

constexpr int kSourceWidth = 22; // characters

} // namespace

FrmNewNotes::FrmNewNotes(Context& context, NotesRoom& room) : m(context), m_room(room) {
    setObjectName(QStringLiteral("FrmNewNotes"));
    setWindowTitle(QStringLiteral("Tarn View - Create or modify new formatted note"));
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    all->addLayout(MakeFirstLines());
    all->addLayout(MakeEntries(), 1);
    m_label1 = Named(new QLabel(QStringLiteral("Notes setting file or defaults")), "Label1");
    m_label1->setTextFormat(Qt::PlainText);
    m_label1->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    all->addWidget(m_label1);
    all->addLayout(MakeCommands());
    const auto* save = new QShortcut(QKeySequence::Save, this);
    connect(save, &QShortcut::activated, this, [this] { m_commandSave->click(); });
    LoadNoteFormats();
    PutAtPlace(*this, m.state.NewNotesPlace);
}

FrmNewNotes::~FrmNewNotes() = default;

QPushButton* FrmNewNotes::Command(QLayout& to, const char* name, const char* caption,
                                  const char* tooltip, void (FrmNewNotes::*command)()) {
    QPushButton* button = NamedButton(name, caption, tooltip);
    connect(button, &QPushButton::clicked, this, [this, command] { (this->*command)(); });
    to.addWidget(button);
    return button;
}

QLayout* FrmNewNotes::MakeFirstLines() {
    auto* whole = new QVBoxLayout();
    auto* head = new QHBoxLayout();
    m_checkFirst = Named(new QCheckBox(), "CheckFirst", "Take the 1st lines");
    m_checkFirst->setChecked(true);
    head->addWidget(m_checkFirst);
    head->addWidget(Named(new QLabel(QStringLiteral("1st lines of note")), "Label10"));
    head->addStretch();
    whole->addLayout(head);

    m_textLine1 =
        Named(new QPlainTextEdit(), "TextLine1", "1st lines of note", "1st lines of note");
    m_textLine1->setTabChangesFocus(true);
    m_textLine1->setMinimumHeight(fontMetrics().height() * 5);
    m_firstLines = std::make_unique<NoteBox>(*m_textLine1);
    whole->addWidget(m_textLine1, 1);

    auto* bar = new QHBoxLayout();
    Command(*bar, "CommandSetLine", "Get all lines", "Set from current notes",
            &FrmNewNotes::CommandSetLine_Click);
    Command(*bar, "CommandSetLine1", "Get lines 1 to", "Set from current notes 1st line",
            &FrmNewNotes::CommandSetLine1_Click);
    m_textFirstLines = Named(new QLineEdit(QStringLiteral("1")), "TextFirstLines",
                             "Number of lines to get", "Number of lines beginning at 1 to get");
    m_textFirstLines->setFixedWidth(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 4);
    m_textFirstLines->installEventFilter(this);
    bar->addWidget(m_textFirstLines);
    Command(*bar, "CommandAdd", "Add", "Add 1st lines of note text to format entires",
            &FrmNewNotes::CommandAdd_Click);
    Command(*bar, "CommandClear", "Clear", "clear 1st lines of text",
            &FrmNewNotes::CommandClear_Click);
    bar->addStretch();
    whole->addLayout(bar);
    return whole;
}

QLayout* FrmNewNotes::MakeEntries() {
    auto* grid = new QGridLayout();
    for (std::size_t i = 0; i < kNoteEntries; ++i) MakeEntry(*grid, static_cast<int>(i));
    grid->setColumnStretch(2, 1);
    grid->setColumnMinimumWidth(3, fontMetrics().averageCharWidth() * kSourceWidth);
    return grid;
}

void FrmNewNotes::MakeEntry(QGridLayout& grid, int row) {
    EntryControls& entry = m_entries[static_cast<std::size_t>(row)];
    const NoteEntryRow& facts = NoteEntryRows()[static_cast<std::size_t>(row)];
    const QString caption = QString::fromLatin1(facts.caption);
    const QString name = QString::fromLatin1(facts.controlName);
    entry.check = Named(new QCheckBox(), "Check" + name, "Take " + caption);
    entry.check->setChecked(true);
    entry.combo = Named(new QComboBox(), "Combo" + name, caption);
    entry.combo->setEditable(true);
    entry.combo->lineEdit()->setAccessibleName(caption);
    entry.combo->setInsertPolicy(QComboBox::NoInsert);
    entry.combo->setCompleter(nullptr); // what is typed stays what it is
    entry.combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    entry.combo->setMinimumContentsLength(36);
    grid.addWidget(entry.check, row, 0);
    auto* label = Named(new QLabel(caption), "Label" + name, {}, facts.tooltip);
    label->setBuddy(entry.combo);
    grid.addWidget(label, row, 1);
    grid.addWidget(entry.combo, row, 2);
    entry.source = new ElidedLabel();
    entry.source->setObjectName("Source" + name);
    entry.source->setEnabled(false); // it stands back behind the value
    grid.addWidget(entry.source, row, 3);
    const auto at = static_cast<std::size_t>(row);
    connect(entry.combo, &QComboBox::activated, this, [this, at] { MakeOwn(at); });
    connect(entry.combo->lineEdit(), &QLineEdit::textEdited, this, [this, at] { MakeOwn(at); });
}

QLayout* FrmNewNotes::MakeCommands() {
    auto* rows = new QVBoxLayout();
    auto* lists = new QHBoxLayout();
    m_commandToggle =
        Command(*lists, "CommandToggle", "Of f", "Uncheck / check all  pre-formated entries",
                &FrmNewNotes::CommandToggle_Click);
    Command(*lists, "CommandReload", "Reload", "Reload note format file",
            &FrmNewNotes::LoadNoteFormats);
    Command(*lists, "CommandEdit", "Edit", "Edit or create 'Note_Formats.txt'",
            &FrmNewNotes::CommandEdit_Click);
    Command(*lists, "CommandCalcExposure", "Exposure", "Calculate exposures window...",
            &FrmNewNotes::CommandCalcExposure_Click);
    Command(*lists, "CommandFill", "Fill", "Fill from the picture shown: its header, the kit list",
            &FrmNewNotes::CommandFill_Click);
    m_fillEach = Named(new QCheckBox(QStringLiteral("each picture")), "CheckFillEach", {},
                       "Fill anew when another picture is shown; what you have chosen stays");
    lists->addWidget(m_fillEach);
    lists->addStretch();
    rows->addLayout(lists);

    auto* note = new QHBoxLayout();
    // No default button: Return in a list finishes the value and must not replace the note.
    Command(*note, "CommandSet", "Set", "Set note to data entered", &FrmNewNotes::CommandSet_Click);
    m_commandSave =
        Command(*note, "CommandSave", "Save", "Save note", &FrmNewNotes::CommandSave_Click);
    Command(*note, "CommandRestore", "Restore", "Restore current image note from file",
            &FrmNewNotes::CommandRestore_Click);
    Command(*note, "CommandPrev", "Prev.", "Previous image", &FrmNewNotes::CommandPrev_Click);
    Command(*note, "CommandNext", "Next", "Next image", &FrmNewNotes::CommandNext_Click);
    note->addStretch();
    Command(*note, "CommandCancel", "Close", "", &FrmNewNotes::CommandCancel_Click);
    rows->addLayout(note);
    return rows;
}

} // namespace tarn
