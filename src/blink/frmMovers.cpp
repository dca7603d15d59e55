#include "blink/frmMovers.h"

#include "blink/BlinkWords.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "imaging/fits/KeptCards.h"
#include "imaging/fits/SkyFile.h"
#include "platform/Clipboard.h"
#include "platform/QtText.h"
#include "sky/night/MeasuresFile.h"
#include "sky/series/FrameScale.h"
#include "sky/series/MoversOfFiles.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"
#include "widgets/Themes.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>
#include <QProgressBar>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QSize kDesign(1000, 560);
constexpr int kRowMargin = 6;
enum Column { kNumber, kSpeed, kOnSky, kDirection, kFrames, kSignal, kCuts };

// Cuts keep their light, also in the row that is selected.
class CutsDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->state &= ~QStyle::State_Selected;
    }
};

std::string Movers(std::size_t count) {
    return count == 1 ? "1 mover" : std::to_string(count) + " movers";
}

} // namespace

frmMovers::frmMovers(Context& context)
    : m(context), m_place(*this, context.state.MoversPlace), m_awaited(context) {
    setObjectName(QStringLiteral("frmMovers"));
    setWindowTitle(QStringLiteral("Find What Moves"));
    setWindowFlags(Qt::Window);
    auto* all = new QVBoxLayout(this);
    MakeTable();
    all->addWidget(m_table, 1);
    all->addLayout(MakeActs());
    m_awaited.onWaiting = [this](const std::string& said) { m_said->SetText(said); };
    m_awaited.onKnown = [this](AwaitedFrames::Known known) { Begin(std::move(known)); };
    m_work = std::make_unique<LateWork>([this] {
        QMetaObject::invokeMethod(
            this, [this] { m_work->Take(); }, Qt::QueuedConnection);
    });
    m_work->onThrown = [this](const std::string& fault) {
        m_search.reset();
        m_said->SetText("Nothing was looked for: " + fault);
        SetRunning(false);
    };
}

frmMovers::~frmMovers() = default;

void frmMovers::MakeTable() {
    m_table = Named(new QTableWidget(), "MoversTable", "What moves among the stars");
    m_table->setColumnCount(kCuts + 1);
    m_table->setHorizontalHeaderLabels({QStringLiteral("No."), QStringLiteral("Pixels an hour"),
                                        QStringLiteral("Arc seconds an hour"),
                                        QStringLiteral("Direction"), QStringLiteral("Frames"),
                                        QStringLiteral("Signal"), QStringLiteral("In its frames")});
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setTabKeyNavigation(false);
    m_table->setCornerButtonEnabled(false);
    if (auto* corner = m_table->findChild<QAbstractButton*>()) // never seen, yet found by readers
        Named(corner, "MoversCornerButton", "Select all movers");
    m_table->setItemDelegateForColumn(kCuts, new CutsDelegate(m_table));
    m_table->setShowGrid(false);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setObjectName(QStringLiteral("MoversHeader"));
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setHighlightSections(false);
    connect(m_table, &QTableWidget::cellClicked, this, [this] { BlinkCurrent(); });
    connect(m_table, &QTableWidget::currentCellChanged, this,
            [this] { SetRunning(m_search != nullptr); });
}

QBoxLayout* frmMovers::MakeActs() {
    auto* rows = new QVBoxLayout();
    auto* acts = new QHBoxLayout();
    const auto act = [&](const char* name, const char* caption, const char* tip,
                         void (frmMovers::*done)()) {
        auto* button = NamedButton(name, caption, tip);
        connect(button, &QPushButton::clicked, this, [this, done] { (this->*done)(); });
        return button;
    };
    m_blink = act("MoversBlinkButton", "&Blink There", "Its frames one after the other (Return)",
                  &frmMovers::BlinkCurrent);
    m_keep = act("MoversKeepButton", "&Keep Its Frames",
                 "Mark the frames in which it was seen to keep; Ctrl+Z takes it back",
                 &frmMovers::KeepCurrent);
    m_copy = act("MoversCopyButton", "C&opy Text", "All movers as text for a note",
                 &frmMovers::CopyTexts);
    for (QPushButton* button : {m_blink, m_keep, m_copy}) acts->addWidget(button);
    acts->addStretch(1);
    rows->addLayout(acts);
    auto* search = new QHBoxLayout();
    m_said = Named(new ElidedLabel(), "MoversSaid");
    search->addWidget(m_said, 2);
    m_progress = Named(new QProgressBar(), "MoversProgress", "Frames searched");
    m_progress->setFormat(QStringLiteral("%v of %m"));
    search->addWidget(m_progress, 1);
    m_cancel = act("MoversCancelButton", "&Cancel", "Search no more frames", &frmMovers::Cancel);
    search->addWidget(m_cancel);
    rows->addLayout(search);
    return rows;
}

void frmMovers::SetRunning(bool running) {
    if (!running) m_progress->hide(); // it comes when it is known of how many
    m_cancel->setVisible(running);
    m_blink->setEnabled(Current() != nullptr);
    m_keep->setEnabled(Current() != nullptr);
    m_copy->setEnabled(m_found && !m_found->result.movers.empty());
}

const Mover* frmMovers::Current() const {
    const int row = m_table->currentRow();
    const bool known = m_found && row >= 0 && std::size_t(row) < m_found->result.movers.size();
    return known ? &m_found->result.movers[std::size_t(row)] : nullptr;
}

void frmMovers::Find(std::vector<std::string> paths, std::vector<std::string> left) {
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    m_table->setFocus();
    BreakOff();
    m_left = std::move(left);
    m_search = std::make_shared<Search>();
    m_progress->hide();
    SetRunning(true);
    m_awaited.Begin(std::move(paths));
}

void frmMovers::FramesChanged() {
    m_awaited.FramesChanged();
}

void frmMovers::BreakOff() {
    m_awaited.GiveUp();
    m_work->GiveUp();
    m_search.reset();
    m_table->setRowCount(0);
    m_found.reset();
    m_said->SetText({});
}

void frmMovers::Cancel() {
    m_awaited.GiveUp();
    m_work->GiveUp();
    m_search.reset();
    m_said->SetText("Cancelled");
    SetRunning(false);
}

void frmMovers::Begin(AwaitedFrames::Known known) {
    for (std::size_t i = 0; i < m_left.size(); ++i)
        if (!m_left[i].empty()) known.left[i] = m_left[i];
    m_said->SetText("Laying the frames over each other");
    m_work->Begin([this, known = std::move(known), search = m_search](std::atomic<bool>& givenUp) {
        return Work(known, search, givenUp);
    });
}

LateWork::Answer frmMovers::Work(AwaitedFrames::Known known, const std::shared_ptr<Search>& search,
                                 std::atomic<bool>& givenUp) {
    auto found = std::make_shared<FoundMovers>();
    for (const JudgedFrame& frame : known.frames) {
        const std::size_t i = found->paths.size();
        found->paths.push_back(frame.path);
        if (known.left[i].empty() && IsSumOfFrames(frame.path))
            known.left[i] = "itself a sum of frames";
    }
    found->plan = PlanSeries(known.measures, known.left);
    search->total = found->plan.frames.size();
    SeriesWatch watch;
    watch.cancelled = &givenUp;
    watch.told = [this, search](std::size_t done, const PartialSum&) {
        search->done = done;
        QMetaObject::invokeMethod(
            this, [this] { ShowSearch(); }, Qt::QueuedConnection);
    };
    found->result =
        FindMoversInFiles({found->paths, known.measures, found->plan}, CacheFolder(), watch);
    if (!givenUp) CutStrips(*found, givenUp);
    if (found->plan.reference) {
        const std::string& reference = found->paths[*found->plan.reference];
        std::string error;
        const auto header = ReadSkyHeader(reference, error);
        found->scale = ScaleOf(CardsOfFrame(reference, header ? header->image : 0));
    }
    return [this, found] { End(found); };
}

void frmMovers::ShowSearch() {
    if (!m_search) return;
    const bool all = m_search->done >= m_search->total;
    m_progress->show();
    m_progress->setRange(0, int(m_search->total));
    m_progress->setValue(int(m_search->done));
    m_said->SetText(all ? "Looking for what moves" : "Laying the frames over each other");
}

void frmMovers::End(std::shared_ptr<const FoundMovers> found) {
    m_search.reset();
    m_found = std::move(found);
    const MoversResult& result = m_found->result;
    m_table->setRowCount(int(result.movers.size()));
    for (int row = 0; row < m_table->rowCount(); ++row) FillRow(row);
    m_table->setColumnHidden(kOnSky, !m_found->scale);
    m_table->resizeColumnsToContents();
    if (m_table->rowCount() > 0) m_table->setCurrentCell(0, 0);
    std::vector<std::string> reasons;
    for (const std::string& fault : result.faults)
        if (!fault.empty()) reasons.push_back(fault);
    const std::string out = LeftOutText(reasons);
    const std::string said = !result.fault.empty() ? "Nothing was looked for: " + result.fault
                             : result.movers.empty()
                                 ? "Nothing moves among the stars of these frames"
                                 : Movers(result.movers.size());
    m_said->SetText(said + (out.empty() ? "" : "; ") + out);
    SetRunning(false);
}

void frmMovers::FillRow(int row) {
    const auto at = std::size_t(row);
    const Mover& mover = m_found->result.movers[at];
    const auto put = [&](Column column, const std::string& text) {
        auto* item = new QTableWidgetItem(ToQt(text));
        item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_table->setItem(row, column, item);
    };
    put(kNumber, std::to_string(row + 1));
    put(kSpeed, FormatFixed(mover.speed, 1));
    put(kOnSky, m_found->scale ? FormatFixed(mover.speed * *m_found->scale, 1) : std::string());
    put(kDirection, FormatFixed(mover.angle, 0) + "\u00B0");
    put(kFrames, std::to_string(mover.sights.size()));
    put(kSignal, FormatFixed(mover.signal, 0));
    auto* cuts = new QTableWidgetItem();
    if (at < m_found->strips.size()) {
        const QPixmap strip =
            QPixmap::fromImage(Themed(m_found->strips[at].convertToFormat(QImage::Format_RGB32)));
        cuts->setData(Qt::DecorationRole, strip);
        m_table->setRowHeight(row, strip.height() + kRowMargin);
    }
    m_table->setItem(row, kCuts, cuts);
}

void frmMovers::BlinkCurrent() {
    const Mover* mover = Current();
    if (!mover || !onBlink) return;
    std::vector<std::string> used;
    for (const SeriesFrame& frame : m_found->plan.frames)
        used.push_back(m_found->paths[frame.number]);
    const MoverSight& middle = mover->sights[mover->sights.size() / 2];
    onBlink(used, {m_found->paths[middle.number], middle.x, middle.y});
}

void frmMovers::KeepCurrent() {
    const Mover* mover = Current();
    if (!mover) return;
    std::vector<MarkWish> wishes;
    for (const MoverSight& sight : mover->sights)
        wishes.push_back({m_found->paths[sight.number], Decide(Decision::Keep)});
    const std::string said = "Keep " + FramesText(wishes.size()) + " of a mover";
    m.marks.MarkFiles(said, wishes);
    m_said->SetText("Marked to keep - " + FramesText(wishes.size()) + "; Ctrl+Z takes it back");
}

void frmMovers::CopyTexts() {
    if (!m_found) return;
    std::string text;
    for (std::size_t i = 0; i < m_found->result.movers.size(); ++i) text += MoverText(*m_found, i);
    m.clipboard.SetText(text);
    m_said->SetText(Movers(m_found->result.movers.size()) + " copied as text");
}

void frmMovers::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Undo)) return m.controls.UndoButton->trigger();
    if (event->matches(QKeySequence::Copy)) return CopyTexts();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return BlinkCurrent();
    QDialog::keyPressEvent(event);
}

std::vector<keys::KeyLine> frmMovers::KeyLines() {
    return {{"Return", "blinks at the mover"},
            {"Ctrl+C", "copies all movers as text"},
            {"Ctrl+Z", "takes the last command back"},
            {"Esc", "closes the window"}};
}

void frmMovers::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    BreakOff();
}

void frmMovers::done(int result) {
    QDialog::done(result);
    BreakOff();
}

} // namespace tarn
