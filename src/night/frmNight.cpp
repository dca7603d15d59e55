#include "night/frmNight.h"

#include "common/text.h"
#include "night/NightWords.h"
#include "platform/QtText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FileListBox.h"
#include "widgets/MeasureGraph.h"
#include "widgets/Named.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr QSize kDesign(1240, 660);
constexpr int kTable = 680; // logical pixels
constexpr int kLeastTable = 180;

bool HasStars(const NightFrame& frame) {
    return std::isfinite(frame.measures.hfr);
}

bool ShownAsDesigned(const NightColumn& column) {
    return column.isShown;
}

} // namespace

frmNight::frmNight(Context& context, NightFolder& folder)
    : m(context), m_folder(folder), m_place(*this, context.state.NightPlace) {
    setObjectName(QStringLiteral("frmNight"));
    setWindowTitle(QStringLiteral("Night"));
    setWindowFlags(Qt::Window);
    auto* all = new QVBoxLayout(this);
    m_parts = Named(new QSplitter(Qt::Horizontal), "NightParts");
    m_parts->addWidget(MakeTable());
    m_parts->addWidget(MakeGraph());
    for (const int part : {0, 1}) m_parts->setStretchFactor(part, 1);
    m_parts->setChildrenCollapsible(false);
    all->addLayout(MakeChoosers());
    all->addWidget(m_parts, 1);
    all->addLayout(MakeActs());
    for (QComboBox* box : {m_upper, m_lower, m_along})
        connect(box, &QComboBox::activated, this, [this] { MeasuresChosen(); });
    connect(m_parts, &QSplitter::splitterMoved, this,
            [this] { m.state.NightTableWidth = m_parts->sizes().value(0); });
    FillColumns();
    ShowTitles();
}

QWidget* frmNight::MakeTable() {
    m_view = Named(new QTableView(), "NightTable", "Measured frames");
    m_view->setModel(&m_table);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setTabKeyNavigation(false);
    m_view->setCornerButtonEnabled(false);
    if (auto* corner = m_view->findChild<QAbstractButton*>()) // never seen, yet found by readers
        Named(corner, "NightCornerButton", "Select all frames");
    m_view->setAlternatingRowColors(true);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_view->setMinimumWidth(kLeastTable);
    QHeaderView& header = *m_view->horizontalHeader();
    header.setObjectName(QStringLiteral("NightHeader"));
    header.setContextMenuPolicy(Qt::CustomContextMenu);
    header.setHighlightSections(false);
    header.setSortIndicator(int(NightColumnNamed("time")), Qt::AscendingOrder);
    m_view->setSortingEnabled(true);
    connect(&header, &QHeaderView::customContextMenuRequested, this,
            [this](QPoint at) { m_columns->popup(m_view->horizontalHeader()->mapToGlobal(at)); });
    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { RowShown(); });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_choosing) m_choiceSaid.clear(); // it is the user's own
        ChoiceChanged();
    });
    m_view->installEventFilter(this);
    return m_view;
}

QWidget* frmNight::MakeGraph() {
    m_graph = Named(new MeasureGraph(), "NightGraph", "Graph of the measures");
    m_graph->setAccessibleDescription(
        QStringLiteral("Left and Right walk from frame to frame, Up and Down move the line"));
    m_graph->tipOf = [this](int point) {
        return ToQt(TipOf(m_folder.Frames()[m_points[std::size_t(point)]]));
    };
    m_graph->onClick = [this](int point) { PointClicked(point); };
    m_graph->onLimit = [this](double limit) { LimitMoved(limit); };
    return m_graph;
}

QComboBox* frmNight::MeasureBox(const char* name, const char* spoken, const std::string& chosen) {
    auto* box = Named(new QComboBox(), name, spoken);
    for (const std::size_t column : NightGraphColumns())
        box->addItem(ToQt(NightColumns()[column].title), int(column));
    box->setCurrentIndex(std::max(0, box->findData(int(NightColumnNamed(chosen)))));
    return box;
}

QBoxLayout* frmNight::MakeChoosers() {
    auto* bar = new QHBoxLayout();
    auto* columns = Named(new QToolButton(), "NightColumnsButton", {}, "Columns of the table");
    columns->setText(QStringLiteral("C&olumns"));
    columns->setPopupMode(QToolButton::InstantPopup);
    columns->setFocusPolicy(Qt::StrongFocus);
    m_columns = Named(new QMenu(columns), "NightColumnsMenu");
    columns->setMenu(m_columns);
    bar->addWidget(columns);
    bar->addStretch();
    const auto add = [&](const char* caption, QComboBox* box) {
        auto* label = new QLabel(QString::fromUtf8(caption));
        label->setBuddy(box);
        bar->addWidget(label);
        bar->addWidget(box);
    };
    m_upper = MeasureBox("NightMeasureCombo", "Measure of the graph", m.state.NightMeasure);
    m_lower = MeasureBox("NightBelowCombo", "Second measure", m.state.NightBelow);
    m_along = Named(new QComboBox(), "NightAlongCombo", "Graph over time or order");
    m_along->addItems({QStringLiteral("Time"), QStringLiteral("Order")});
    m_along->setCurrentIndex(m.state.NightByOrder ? 1 : 0);
    add("&Graph", m_upper);
    add("&below", m_lower);
    add("o&ver", m_along);
    return bar;
}

QPushButton* frmNight::Act(QBoxLayout& bar, const char* name, const char* caption, const char* tip,
                           void (frmNight::*act)()) {
    auto* button = NamedButton(name, caption, tip);
    bar.addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, act] { (this->*act)(); });
    return button;
}

QBoxLayout* frmNight::MakeActs() {
    auto* rows = new QVBoxLayout();
    auto* acts = new QHBoxLayout();
    m_worst = Act(*acts, "NightWorstButton", "&Worst 10 %",
                  "Choose the worst tenth of each series by the graph's measure",
                  &frmNight::WorstButton_Click);
    m_sigma = Act(*acts, "NightSigmaButton", "Outside &3 Sigma",
                  "Choose what is worse than its series' median by 3 robust deviations",
                  &frmNight::SigmaButton_Click);
    m_fewStars = Act(*acts, "NightFewStarsButton", "Too &Few Stars",
                     "Choose frames that have too few stars to be judged, as under cloud",
                     &frmNight::FewStarsButton_Click);
    m_said = Named(new ElidedLabel(), "NightSaid");
    acts->addWidget(m_said, 1);
    m_reject = Act(*acts, "NightRejectButton", "&Reject",
                   "Mark the chosen frames as rejected; Ctrl+Z takes it back",
                   &frmNight::RejectButton_Click);
    m_compare = Act(*acts, "NightCompareButton", "Co&mpare with Best",
                    "The frame beside the best of its series, at one place and zoom",
                    &frmNight::CompareButton_Click);
    rows->addLayout(acts);
    auto* measuring = new QHBoxLayout();
    m_summary = Named(new ElidedLabel(), "NightSummary");
    measuring->addWidget(m_summary, 2);
    m_progress = Named(new QProgressBar(), "NightProgress", "Frames measured");
    m_progress->setFormat(QStringLiteral("%v of %m measured"));
    measuring->addWidget(m_progress, 1);
    m_cancel = Act(*measuring, "NightCancelButton", "&Cancel",
                   "Measure no more frames of this folder", &frmNight::CancelButton_Click);
    rows->addLayout(measuring);
    return rows;
}

void frmNight::FillColumns() {
    const std::vector<std::string> kept = Split(m.state.NightColumns, ',');
    int number = 0;
    for (const NightColumn& column : NightColumns()) {
        QAction* entry = m_columns->addAction(ToCaption(column.title));
        entry->setCheckable(true);
        entry->setObjectName(QStringLiteral("NightColumn_") + ToQt(column.name));
        entry->setChecked(m.state.NightColumns.empty()
                              ? ShownAsDesigned(column)
                              : std::find(kept.begin(), kept.end(), column.name) != kept.end());
        if (number++ == 0) { // a row without a name is nobody's
            entry->setChecked(true);
            entry->setEnabled(false);
        }
        connect(entry, &QAction::toggled, this, [this] { KeepColumns(); });
    }
    ShowColumns();
}

void frmNight::KeepColumns() {
    std::string names;
    const QList<QAction*> entries = m_columns->actions();
    for (std::size_t i = 0; i < NightColumns().size(); ++i)
        if (entries[qsizetype(i)]->isChecked())
            names += (names.empty() ? "" : ",") + std::string(NightColumns()[i].name);
    m.state.NightColumns = names;
    ShowColumns();
}

void frmNight::ShowColumns() {
    const QList<QAction*> entries = m_columns->actions();
    for (int i = 0; i < int(entries.size()); ++i)
        m_view->setColumnHidden(i, !entries[i]->isChecked());
}

void frmNight::Form_Load() {
    if (!isVisible()) {
        m_place.Restore(kDesign);
        const int table = m.state.NightTableWidth > 0 ? m.state.NightTableWidth : kTable;
        m_parts->setSizes({table, std::max(1, width() - table)});
    }
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    m_view->setFocus();
}

void frmNight::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    if (onClosed) onClosed();
}

void frmNight::done(int result) {
    QDialog::done(result);
    if (onClosed) onClosed();
}

const NightColumn& frmNight::Upper() const {
    return NightColumns()[std::size_t(m_upper->currentData().toInt())];
}

const NightColumn& frmNight::Lower() const {
    return NightColumns()[std::size_t(m_lower->currentData().toInt())];
}

// Frames that do not say when they were taken stand in their order.
bool frmNight::IsOverTime() const {
    const auto& frames = m_folder.Frames();
    return m_along->currentIndex() == 0 &&
           std::any_of(frames.begin(), frames.end(),
                       [](const NightFrame& frame) { return frame.taken.has_value(); });
}

void frmNight::MeasuresChosen() {
    m.state.NightMeasure = Upper().name;
    m.state.NightBelow = Lower().name;
    m.state.NightByOrder = m_along->currentIndex() == 1;
    m_graph->SetLimit({}); // a value of another measure
    FillGraph();
}

void frmNight::ShowTitles() {
    const auto title = [](const NightColumn& column) {
        return ToQt(column.title) + (column.better == Better::More
                                         ? QStringLiteral(" (high is good)")
                                         : QStringLiteral(" (low is good)"));
    };
    m_graph->SetTitles({{title(Upper()), title(Lower())},
                        IsOverTime() ? QStringLiteral("Time, by the camera's clock")
                                     : QStringLiteral("Order in the list"),
                        IsOverTime()});
}

void frmNight::FramesShown() {
    const std::set<std::string> chosen = m_chosenPaths;
    const QScopedValueRollback<bool> choosing(m_choosing, true);
    m_table.SetFrames(m_folder.Frames());
    m_graph->SetLimit({});
    m_isWaiting = true;
    FrameIndices again;
    for (const std::string& path : chosen)
        if (const int index = m_folder.IndexOf(path); index >= 0)
            again.push_back(std::size_t(index));
    Choose(again, m_choiceSaid);
    Refresh();
    FollowCurrent();
}

void frmNight::Refresh() {
    const QRect current = m_view->visualRect(m_view->currentIndex());
    const bool seen = m_view->viewport()->rect().intersects(current);
    m_table.FramesChanged();
    if (seen) m_view->scrollTo(m_view->currentIndex()); // wherever it was sorted to
    const bool any = std::any_of(m_folder.Frames().begin(), m_folder.Frames().end(),
                                 [](const NightFrame& frame) { return frame.isMeasured; });
    if (m_isWaiting && any) {
        m_isWaiting = false;
        m_view->resizeColumnsToContents();
    }
    FillGraph();
    ShowProgress();
    ShowActs();
}

void frmNight::FillGraph() {
    ShowTitles();
    const std::vector<NightFrame>& frames = m_folder.Frames();
    std::vector<GraphPoint> points;
    std::vector<QString> kinds;
    m_points.clear();
    const bool overTime = IsOverTime();
    const FrameIndices best = BestTenth(frames, Upper());
    const FrameIndices worst = WorstTenth(frames, Upper());
    const auto has = [](const FrameIndices& in, std::size_t i) {
        return std::binary_search(in.begin(), in.end(), i);
    };
    const bool anyStars = std::any_of(frames.begin(), frames.end(), HasStars);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        const NightFrame& frame = frames[i];
        if (!frame.isMeasured || (overTime && !frame.taken)) continue;
        if (anyStars && !HasStars(frame)) continue; // left out
        GraphPoint point;
        point.x = overTime ? double(*frame.taken) : frame.order + 1;
        point.y = {Upper().value(frame), Lower().value(frame)};
        if (!std::isfinite(point.y[0]) && !std::isfinite(point.y[1])) continue;
        const QString filter = ToQt(frame.filter);
        const auto known = std::find(kinds.begin(), kinds.end(), filter);
        point.kind = int(known - kinds.begin());
        if (known == kinds.end()) kinds.push_back(filter);
        point.accent = has(worst, i)  ? GraphPoint::Accent::Worst
                       : has(best, i) ? GraphPoint::Accent::Best
                                      : GraphPoint::Accent::None;
        point.kept = frame.mark.decision == Decision::Keep;
        point.rejected = frame.mark.decision == Decision::Reject;
        points.push_back(point);
        m_points.push_back(i);
    }
    m_graph->SetHint(frames.empty() ? QStringLiteral("This folder lists no pictures")
                     : m_folder.Progress().IsDone()
                         ? QStringLiteral("No picture here has this measure: the remarks in the "
                                          "table say why")
                         : QStringLiteral("Measuring; the first frames will appear here"));
    m_graph->SetPoints(std::move(points), std::move(kinds));
    ChoiceChanged();
}

void frmNight::ShowProgress() {
    const MeasuringProgress progress = m_folder.Progress();
    const bool runs = !progress.IsDone();
    m_progress->setVisible(runs);
    m_cancel->setVisible(runs);
    m_progress->setMaximum(std::max(1, int(progress.total)));
    m_progress->setValue(int(progress.done));
    m_cancel->setText(progress.cancelled ? QStringLiteral("&Continue") : QStringLiteral("&Cancel"));
    m_cancel->setToolTip(progress.cancelled ? QStringLiteral("Measure the frames that are left")
                                            : QStringLiteral("Measure no more frames"));
    const std::string summary =
        m_folder.Frames().empty() ? "This folder lists no pictures" : SummaryOf(m_folder.Frames());
    m_summary->SetText(summary);
}

void frmNight::CancelButton_Click() {
    if (m_folder.Progress().cancelled)
        m_folder.Resume();
    else
        m_folder.Cancel();
    ShowProgress();
}

// The current file is shown in the table, whoever chose it; a choice of several stays.
void frmNight::FollowCurrent() {
    const int frame = m_folder.IndexOf(m.state.Filename);
    const int row = frame < 0 ? -1 : m_table.RowOf(std::size_t(frame));
    if (row < 0 || m_view->currentIndex().row() == row) return ChoiceChanged();
    const QScopedValueRollback<bool> choosing(m_choosing, true);
    const bool several = Chosen().size() > 1;
    m_view->selectionModel()->setCurrentIndex(m_table.index(row, 0),
                                              several ? QItemSelectionModel::NoUpdate
                                                      : QItemSelectionModel::ClearAndSelect |
                                                            QItemSelectionModel::Rows);
    m_view->scrollTo(m_table.index(row, 0));
}

// The picture in the main window follows.
void frmNight::RowShown() {
    const auto frame = CurrentFrame();
    if (m_choosing || !frame || m.state.BatchRuns || m.state.SlideViewing) return;
    const NightFrame& shown = m_folder.Frames()[*frame];
    if (shown.path == m.state.Filename) return;
    const FileListBox& list = *m.controls.FileListBox;
    if (list.RowOf(shown.name) < 0) m.navigation.ShowWholeList();
    const int row = list.RowOf(shown.name);
    if (row < 0) return m.shell.ShowMessage("'" + shown.name + "' is not in the list");
    m.navigation.ClearMultiselect();
    m.navigation.SelectRow(row, KeepingKeyboard());
}

} // namespace tarn
