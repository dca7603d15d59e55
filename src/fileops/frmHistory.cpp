#include "fileops/frmHistory.h"

#include "common/paths.h"
#include "history/Changes.h"
#include "history/CommandText.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/Dialogs.h"
#include "widgets/FileListBox.h"
#include "widgets/Named.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr std::size_t kMostSteps = 2000; // listed
const std::vector<std::string> kForget{"Forget", "Keep"};

QSpinBox* Limit(const char* name, const char* spoken, int most, const char* unit) {
    auto* box = Named(new QSpinBox(), name, spoken);
    box->setRange(1, most);
    box->setSuffix(QLatin1String(unit));
    return box;
}

} // namespace

frmHistory::frmHistory(Context& context)
    : m(context), m_table(context.history),
      m_list(Named(new QTreeView(), "HistoryList", "Commands")),
      m_steps(Named(new QListWidget(), "HistorySteps", "Steps of the command")),
      m_find(Named(new QLineEdit(), "HistoryFind", "Find")),
      m_say(Named(new QLabel(), "HistoryLabel")),
      m_undo(NamedButton("HistoryUndoButton", "&Undo This", "Takes the chosen command back")),
      m_redo(NamedButton("HistoryRedoButton", "&Redo This", "Does the chosen command again")),
      m_show(NamedButton("HistoryShowButton", "&Show File",
                         "Goes to the file of the chosen step in the main window")),
      m_days(Limit("HistoryDays", "Days that commands are kept", 3650, " days")),
      m_size(Limit("HistorySize", "Size that the history may have", 32000, " MB")),
      m_place(*this, context.state.HistoryPlace) {
    setObjectName(QStringLiteral("frmHistory"));
    setWindowTitle(QStringLiteral("Tarn_View - History"));
    MakeContents();
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_place.Restore(QSize(100 * em, 32 * fontMetrics().height()));
}

QWidget* frmHistory::MakeFilter() {
    m_find->setPlaceholderText(QStringLiteral("Find in commands and folders"));
    m_find->setClearButtonEnabled(true);
    connect(m_find, &QLineEdit::textChanged, this, [this] { ReadAgain(); });
    return m_find;
}

QWidget* frmHistory::MakeLimits() {
    auto* limits = new QWidget();
    auto* row = new QHBoxLayout(limits);
    row->setContentsMargins(0, 0, 0, 0);
    auto* forget = NamedButton("HistoryForgetButton", "&Forget History...",
                               "Nothing that was done can be taken back any more");
    row->addWidget(new QLabel(QStringLiteral("Kept for")));
    row->addWidget(m_days);
    row->addWidget(new QLabel(QStringLiteral("and up to")));
    row->addWidget(m_size);
    row->addStretch(1);
    row->addWidget(forget);
    m_days->setValue(m.state.HistoryDays);
    m_size->setValue(m.state.HistoryMegabytes);
    for (QSpinBox* box : {m_days, m_size})
        connect(box, &QSpinBox::valueChanged, this, [this] { KeepLimits(); });
    connect(forget, &QPushButton::clicked, this, [this] { Forget(); });
    return limits;
}

QWidget* frmHistory::MakeCommands() {
    auto* commands = new QWidget();
    auto* row = new QHBoxLayout(commands);
    row->setContentsMargins(0, 0, 0, 0);
    auto* save = NamedButton("HistoryExportButton", "&Export as CSV...");
    auto* close = NamedButton("HistoryCloseButton", "&Close");
    for (QPushButton* button : {m_undo, m_redo, m_show, save}) row->addWidget(button);
    row->addStretch(1);
    row->addWidget(close);
    connect(m_undo, &QPushButton::clicked, this, [this] {
        if (const CommandRow* row = Chosen()) onUndo(CommandRow(*row));
    });
    connect(m_redo, &QPushButton::clicked, this, [this] {
        if (const CommandRow* row = Chosen()) onRedo(CommandRow(*row));
    });
    connect(m_show, &QPushButton::clicked, this, [this] { onShowFile(ChosenFile()); });
    connect(save, &QPushButton::clicked, this, [this] { Export(); });
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    return commands;
}

void frmHistory::MakeContents() {
    m_list->setModel(&m_table);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int widths[] = {25 * em, 44 * em, 8 * em};
    for (int column = 0; column < 3; ++column) m_list->setColumnWidth(column, widths[column]);
    m_steps->setUniformItemSizes(true);
    m_say->setTextFormat(Qt::PlainText);
    m_say->setWordWrap(true);
    auto* halves = new QSplitter(Qt::Vertical);
    halves->addWidget(m_list);
    halves->addWidget(m_steps);
    halves->setStretchFactor(0, 2);
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* all = new QVBoxLayout(this);
    all->addWidget(MakeFilter());
    all->addWidget(halves, 1);
    all->addWidget(m_say);
    all->addWidget(MakeCommands());
    all->addWidget(MakeLimits());
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowSteps(); });
    connect(m_steps, &QListWidget::currentRowChanged, this, [this] { SetCommands(); });
}

void frmHistory::ShowHistory() {
    ReadAgain();
    show();
    raise();
    activateWindow();
    m_list->setFocus();
}

void frmHistory::ReadAgain() {
    const CommandRow* chosen = Chosen();
    const std::int64_t id = chosen ? chosen->id : 0;
    m_table.Show(FromQt(m_find->text()));
    const int row = std::max(0, m_table.RowOf(id));
    if (m_table.RowAt(row)) m_list->setCurrentIndex(m_table.index(row, 0));
    ShowSteps();
}

const CommandRow* frmHistory::Chosen() const {
    return m_table.RowAt(m_list->currentIndex().row());
}

void frmHistory::ShowSteps() {
    const CommandRow* row = Chosen();
    m_steps->clear();
    m_files.clear();
    const std::vector<Step> steps = row ? m.history.StepsOf(*row) : std::vector<Step>();
    for (const Step& step : steps) {
        if (m_files.size() == kMostSteps) break;
        m_steps->addItem(ToQt(StepText(step)));
        const bool moved = step.kind == StepKind::Renamed || step.kind == StepKind::Made;
        m_files.push_back(moved && step.state == StepState::Done ? step.to : step.from);
    }
    if (steps.size() > kMostSteps)
        m_steps->addItem(ToQt("and " + std::to_string(steps.size() - kMostSteps) + " more"));
    std::string said = row ? row->what + (row->folder.empty() ? "" : " in " + row->folder)
                       : m_find->text().isEmpty() ? "Nothing was done to files yet."
                                                  : "Nothing found.";
    m_say->setText(ToQt(said));
    SetCommands();
}

std::string frmHistory::ChosenFile() const {
    const int row = std::max(0, m_steps->currentRow());
    return std::size_t(row) < m_files.size() ? m_files[std::size_t(row)] : std::string();
}

void frmHistory::SetCommands() {
    const CommandRow* row = Chosen();
    const bool broken = row && row->isBrokenOff;
    m_undo->setEnabled(broken || (row && row->state == CommandState::Done));
    m_redo->setEnabled((broken && m.history.MayFinish(*row)) ||
                       (row && row->state == CommandState::Undone));
    m_undo->setText(broken ? QStringLiteral("Take &Back") : QStringLiteral("&Undo This"));
    m_redo->setText(broken ? QStringLiteral("F&inish") : QStringLiteral("&Redo This"));
    m_show->setEnabled(!ChosenFile().empty());
}

void frmHistory::Export() {
    const std::string path =
        m.dialogs.SaveFile("Export history", JoinPath(m.files.HomeFolder(), "history.csv"),
                           "Tables (*.csv);;All files (*)");
    if (path.empty()) return;
    constexpr std::int64_t kAll = 1'000'000'000;
    const auto rows = m.history.List({kAll, 0, FromQt(m_find->text())});
    std::string error;
    Changes changes(m.history, "History as '" + LastPart(path) + "'");
    const bool written = changes.Write(path, CommandsAsCsv(rows), &error);
    m_say->setText(ToQt(written ? std::to_string(rows.size()) + " commands written to " + path
                                : "'" + LastPart(path) + "' was not written: " + error));
}

void frmHistory::Forget() {
    if (m.dialogs.Choose(Dialogs::Icon::Exclamation, "Forget history",
                         "Forget all commands? What they did stays, and can not be taken back any "
                         "more.",
                         kForget) != 0)
        return;
    const bool forgotten = m.history.Forget();
    onForgotten();
    if (!forgotten) m_say->setText(QStringLiteral("The history cannot be written just now"));
}

void frmHistory::KeepLimits() {
    m.state.HistoryDays = m_days->value();
    m.state.HistoryMegabytes = m_size->value();
}

void frmHistory::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return void(close());
    QWidget::keyPressEvent(event);
}

} // namespace tarn
