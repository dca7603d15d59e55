// The notes manager's controls and where they stand.
#include "notes/NoteWindows.h"
#include "notes/frmNotesFolder.h"
#include "widgets/FileListBox.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>

namespace tarn {

frmNotesFolder::frmNotesFolder(Context& context, NotesRoom& room)
    : m(context), m_room(room), m_folder(context.files, context.state.NFSfilename) {
    setObjectName(QStringLiteral("frmNotesFolder"));
    setWindowTitle(QStringLiteral("Tarn View - Notes Folder"));
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    auto* sides = new QHBoxLayout();
    sides->addLayout(MakeListSide(), 2);
    sides->addLayout(MakeNoteSide(), 3);
    all->addLayout(sides, 1);
    all->addLayout(MakeCommands());
    const auto* save = new QShortcut(QKeySequence::Save, this);
    connect(save, &QShortcut::activated, this, [this] { m_update->click(); });
    PutAtPlace(*this, m.state.NotesFolderPlace);
}

QLayout* frmNotesFolder::MakeListSide() {
    auto* side = new QVBoxLayout();
    m_folderText = Named(new QLineEdit(), "NotesFolderText", "Notes folder", "Notes folder");
    m_folderText->setReadOnly(true);
    m_list = Named(new FileListBox(m.files), "NotesFileListBox", "Note files");
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->SetPattern("*.enf;*.txt");
    m_list->onClick = [this] { NotesFileListBox_Click(); };
    m_list->installEventFilter(this);
    side->addWidget(m_list, 1);
    side->addWidget(m_folderText);
    return side;
}

QLayout* frmNotesFolder::MakeNoteSide() {
    auto* side = new QVBoxLayout();
    m_label = Named(new QLabel(QStringLiteral("Notefile.txt")), "NoteFileLabel");
    m_edit = Named(new QPlainTextEdit(), "NotesFolderNoteBox", "Text of the note");
    m_edit->setTabChangesFocus(true);
    m_edit->setMinimumSize(fontMetrics().horizontalAdvance(QLatin1Char('0')) * 48,
                           fontMetrics().height() * 16);
    m_box = std::make_unique<NoteBox>(*m_edit);
    connect(m_edit, &QPlainTextEdit::textChanged, this, [this] { NotesFolderNoteBox_Change(); });
    m_updateText = Named(new QLabel(), "NoteUpdateText", {}, "Update message");
    for (QLabel* label : {m_label, m_updateText}) {
        label->setTextFormat(Qt::PlainText);
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }
    side->addWidget(m_label);
    side->addWidget(m_edit, 1);
    side->addWidget(m_updateText);
    return side;
}

QLayout* frmNotesFolder::MakeCommands() {
    auto* bar = new QHBoxLayout();
    const auto add = [&](const char* name, const char* caption, const char* tooltip,
                         void (frmNotesFolder::*command)()) {
        QPushButton* button = NamedButton(name, caption, tooltip);
        connect(button, &QPushButton::clicked, this, [this, command] { (this->*command)(); });
        bar->addWidget(button);
        return button;
    };
    m_update = add("UpdateButton", "Update", "", &frmNotesFolder::UpdateButton_Click);
    m_delete = add("DeleteButton", "Delete", "", &frmNotesFolder::DeleteButton_Click);
    bar->addStretch();
    add("FixQButton", "Fix", "Fix quote marks, F key", &frmNotesFolder::FixQButton_Click);
    add("FixQallButton", "All", "Fix quote marks for all notes",
        &frmNotesFolder::FixQallButton_Click);
    add("CommandNew", "Convert", "Convert all notes from .txt to .enf file type",
        &frmNotesFolder::CommandNew_Click);
    bar->addStretch();
    add("CloseButton", "Close", "", &frmNotesFolder::hide)->setDefault(true);
    return bar;
}

} // namespace tarn
