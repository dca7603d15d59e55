// The controls of the window for many renames, and where they stand.
#include "fileops/frmRenameFiles.h"

#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"
#include "widgets/Named.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QStringListModel>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr int kErrorRows = 4; // of the list of failures, at least

QLabel* PlainLabel(const char* name, const char* text) {
    auto* label = Named(new QLabel(QString::fromLatin1(text)), name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

// Names alone, rows of one height, so that ten thousand come up at once.
QListView* NameList(const char* name, const char* spoken, QStringListModel* model) {
    auto* list = Named(new QListView(), name, spoken);
    list->setModel(model);
    list->setUniformItemSizes(true);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    return list;
}

QGroupBox* Framed(const char* title, QWidget* inside) {
    auto* box = new QGroupBox(QString::fromLatin1(title));
    (new QVBoxLayout(box))->addWidget(inside);
    return box;
}

void ScrollTogether(const QListView& one, const QListView& other) {
    QObject::connect(one.verticalScrollBar(), &QScrollBar::valueChanged, other.verticalScrollBar(),
                     &QScrollBar::setValue);
    QObject::connect(other.verticalScrollBar(), &QScrollBar::valueChanged, one.verticalScrollBar(),
                     &QScrollBar::setValue);
}

} // namespace

frmRenameFiles::frmRenameFiles(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_place(*this, context.state.RenamePlace) {
    setObjectName(QStringLiteral("frmRenameFiles"));
    setWindowTitle(QStringLiteral("Tarn View - Rename Pictures in Folder"));
    setModal(true);
    auto* all = new QVBoxLayout(this);
    auto* sides = new QHBoxLayout();
    auto* right = new QVBoxLayout();
    sides->addLayout(MakeFolderSide(), 2);
    right->addLayout(MakeTexts());
    right->addLayout(MakeLists(), 3);
    right->addLayout(MakeResults(), 1);
    sides->addLayout(right, 3);
    all->addLayout(sides, 1);
    all->addLayout(MakeMessage());
    all->addLayout(MakeCommands());
    setTabOrder(m_from, m_to);
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_place.Restore(QSize(130 * em, 40 * fontMetrics().height()));
}

QLayout* frmRenameFiles::MakeFolderSide() {
    auto* side = new QVBoxLayout();
    m_tree = Named(new FolderTreeview(m.files), "FolderTreeview1", "Folders");
    m_tree->onSelection = [this](const std::string& path, bool& cancel) {
        FolderTreeview1_Selection(path, cancel);
    };
    m_list = Named(new FileListBox(m.files), "RenameFile", "Files of the folder");
    m_list->SetPattern(m.state.PictureTypes);
    m_list->onDoubleClick = [this] { RenameFile_DblClick(); };
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { BuildRenameLists(); });
    m_all = Named(new QCheckBox(QStringLiteral("Select all files")), "CheckAll");
    connect(m_all, &QCheckBox::toggled, this, [this] { BuildRenameLists(); });
    m_showAll = Named(new QCheckBox(QStringLiteral("Show all files in folder")), "CheckShowAll");
    connect(m_showAll, &QCheckBox::toggled, this, [this] { SetPattern(); });
    m_keptOnly = Named(new QCheckBox(QStringLiteral("Kept only")), "CheckKeptOnly");
    m_keptOnly->setToolTip(QStringLiteral(
        "Only files that are marked to keep, of the folder that the main window shows"));
    connect(m_keptOnly, &QCheckBox::toggled, this, [this] { NarrowToKept(); });
    side->addWidget(Framed("Folders", m_tree), 2);
    side->addWidget(m_list, 3);
    side->addWidget(m_all);
    side->addWidget(m_showAll);
    side->addWidget(m_keptOnly);
    return side;
}

QLayout* frmRenameFiles::MakeTexts() {
    auto* grid = new QGridLayout();
    const auto row = [&](int at, const char* caption, const char* name, QPushButton* paste) {
        auto* box = Named(new QLineEdit(), name);
        auto* label = new QLabel(QString::fromLatin1(caption));
        label->setBuddy(box);
        grid->addWidget(label, at, 0);
        grid->addWidget(box, at, 1);
        grid->addWidget(paste, at, 2);
        connect(box, &QLineEdit::textChanged, this, [this] { BuildRenameLists(); });
        return box;
    };
    m_from = row(0, "From:", "RenameInputFilter",
                 Button("CommandPastFrom", "Paste to From", "Paste selected filename to From",
                        [this] { PasteSelectedName(*m_from); }));
    m_to = row(1, "To:", "RenameFilter",
               Button("CommandPasteTo", "Paste to To", "Paste seleted filename to To",
                      [this] { PasteSelectedName(*m_to); }));
    return grid;
}

QLayout* frmRenameFiles::MakeLists() {
    auto* side = new QVBoxLayout();
    auto* lists = new QHBoxLayout();
    m_inputs = new QStringListModel(this);
    m_outputs = new QStringListModel(this);
    QListView* inputs = NameList("RenameInputList", "Input files to rename", m_inputs);
    QListView* outputs = NameList("RenameOutputList", "Renamed files", m_outputs);
    ScrollTogether(*inputs, *outputs);
    connect(inputs->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& now) { RenameInputList_Click(now.row()); });
    lists->addWidget(Framed("Input Files to Rename", inputs));
    lists->addWidget(Framed("Renamed Files", outputs));
    auto* below = new QHBoxLayout();
    below->addWidget(new QLabel(QStringLiteral("Files to rename:")));
    below->addWidget(m_count = PlainLabel("InCountLabel", "0"));
    below->addStretch();
    below->addWidget(m_date = PlainLabel("FileDateLabel", ""));
    side->addLayout(lists, 1);
    side->addLayout(below);
    return side;
}

QLayout* frmRenameFiles::MakeResults() {
    auto* side = new QVBoxLayout();
    m_errors = Named(new QListWidget(), "RenameErrorList", "Files not renamed");
    m_errors->setUniformItemSizes(true);
    m_errors->setMinimumHeight(kErrorRows * m_errors->fontMetrics().lineSpacing());
    connect(m_errors, &QListWidget::currentItemChanged, this, [this](const QListWidgetItem* now) {
        if (now) m_say->setText(now->data(Qt::UserRole).toString());
    });
    m_errorFrame = Named(Framed("Files not Renamed", m_errors), "RenameErrorFrame");
    side->addWidget(m_errorFrame);
    return side;
}

QPushButton* frmRenameFiles::Button(const char* name, const char* caption, const char* tip,
                                    std::function<void()> act) {
    auto* button = NamedButton(name, caption, tip);
    connect(button, &QPushButton::clicked, this, std::move(act));
    return button;
}

// The cancel button keeps its place, so that nothing moves when a run begins.
QLayout* frmRenameFiles::MakeMessage() {
    auto* row = new QHBoxLayout();
    row->addWidget(m_say = PlainLabel("RenameMessage", ""), 1);
    m_say->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // a name may be long
    m_cancel = Button("CancelCommand", "Cancel", "Stop after the file in hand",
                      [this] { m.state.BatchCancelled = true; });
    QSizePolicy place = m_cancel->sizePolicy();
    place.setRetainSizeWhenHidden(true);
    m_cancel->setSizePolicy(place);
    row->addWidget(m_cancel);
    m_cancel->hide();
    return row;
}

QLayout* frmRenameFiles::MakeCommands() {
    auto* grid = new QGridLayout();
    m_moveNotes =
        Named(new QCheckBox(QStringLiteral("Rename picture notes if found")), "RenameNotesCheck");
    m_moveNotes->setChecked(true); // a picture and its note stay together
    m_copyNotes =
        Named(new QCheckBox(QStringLiteral("Copy picture notes if found")), "CopyNotesCheck");
    grid->addWidget(m_moveNotes, 0, 0);
    grid->addWidget(m_copyNotes, 1, 0);
    grid->addWidget(m_done = PlainLabel("RenameLabel", "0 renamed"), 0, 1);
    grid->addWidget(m_notesDone = PlainLabel("NotesRenameLabel", "0 notes renamed"), 1, 1);
    grid->setColumnStretch(1, 1);
    QPushButton* rename =
        Button("RenameCommand", "Rename (F2)", "", [this] { RenameCommand_Click(); });
    connect(new QShortcut(Qt::Key_F2, this), &QShortcut::activated, rename, &QPushButton::click);
    auto* buttons = new QHBoxLayout();
    buttons->addWidget(rename);
    buttons->addWidget(Button("CommandView", "View",
                              "View 1st selected picture in main window if found",
                              [this] { CommandView_Click(); }));
    buttons->addWidget(Button("CommandDir", "Refresh", "Refresh main window files",
                              [this] { CommandDir_Click(); }));
    buttons->addWidget(Button("CloseCommand", "Close", "", [this] { reject(); }));
    grid->addLayout(buttons, 0, 2, 2, 1);
    return grid;
}

} // namespace tarn
