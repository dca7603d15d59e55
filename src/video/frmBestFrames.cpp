#include "video/frmBestFrames.h"

#include "desk/batch/BatchRun.h"
#include "platform/Files.h"
#include "platform/QtText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/MeasureGraph.h"
#include "widgets/Named.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr QSize kDesign(860, 560);
constexpr std::size_t kMostPoints = 4000; // of the graph
constexpr int kMostNumber = 9'999'999;
constexpr int kBlink = 450;     // milliseconds a frame
constexpr qint64 kIdleRate = 6; // of the time that filling the graph takes

} // namespace

frmBestFrames::frmBestFrames(Context& context, ClipInPane pane)
    : m(context), m_pane(std::move(pane)), m_place(*this, context.state.BestFramesPlace) {
    setObjectName(QStringLiteral("frmBestFrames"));
    setWindowTitle(QStringLiteral("Best Frames"));
    setWindowFlags(Qt::Window);
    auto* all = new QVBoxLayout(this);
    all->addLayout(MakeChoosers());
    m_graph = Named(new MeasureGraph(), "BestGraph", "Graph of the sharpness");
    m_graph->setAccessibleDescription(
        QStringLiteral("Left and Right walk from frame to frame, Up and Down move the line"));
    m_graph->tipOf = [this](int point) {
        const auto utc = m_whole ? std::span(m_whole->utc) : std::span<const std::string>();
        return ToQt(TipOfFrame(m_shown[std::size_t(point)], m_frames, utc));
    };
    m_graph->onClick = [this](int point) { PointClicked(point); };
    m_graph->onLimit = [this](double limit) { LimitMoved(limit); };
    all->addWidget(m_graph, 1);
    m_said = Named(new ElidedLabel(), "BestSaid");
    all->addWidget(m_said);
    all->addLayout(MakeTaking());
    all->addLayout(MakeProgress());
    m_blinking.setInterval(kBlink);
    connect(&m_blinking, &QTimer::timeout, this, [this] { ShowBlink(); });
    m_rating = std::make_unique<LateRating>([this] {
        QMetaObject::invokeMethod(
            this, [this] { TakeNews(); }, Qt::QueuedConnection);
    });
    ShowWanted();
    FillGraph();
}

QCheckBox* frmBestFrames::Check(QBoxLayout& row, const char* name, const char* caption,
                                const char* tip, bool checked, std::function<void(bool)> changed) {
    auto* box = Named(new QCheckBox(QString::fromUtf8(caption)), name, {}, tip);
    box->setChecked(checked);
    connect(box, &QCheckBox::toggled, this, std::move(changed));
    row.addWidget(box);
    return box;
}

QBoxLayout* frmBestFrames::MakeChoosers() {
    auto* row = new QHBoxLayout();
    auto* label = new QLabel(QStringLiteral("Be&st"));
    m_number = Named(new QSpinBox(), "BestNumber", "How many of the best frames");
    m_number->setToolTip(QStringLiteral("So many are chosen; cut and doubtful ones never"));
    label->setBuddy(m_number);
    row->addWidget(label);
    row->addWidget(m_number);
    m_percent = Check(*row, "BestPercentCheck", "&% of all", "A share of the frames, not a number",
                      m.state.BestInPercent, [this](bool on) { InPercentChanged(on); });
    row->addStretch();
    m_sorted = Check(*row, "BestSortedCheck", "So&rted",
                     "The graph begins with the sharpest frame, not with the first", false,
                     [this](bool) { FillGraph(); });
    m_blink = NamedButton("BestBlinkButton", "&Blink",
                          "The two frames looked at last, or the best two, in turn at one place");
    m_blink->setCheckable(true);
    row->addWidget(m_blink);
    connect(m_blink, &QPushButton::clicked, this, [this] { BlinkButton_Click(); });
    connect(m_number, &QSpinBox::valueChanged, this, [this] { NumberChanged(); });
    return row;
}

QBoxLayout* frmBestFrames::MakeTaking() {
    auto* row = new QHBoxLayout();
    Check(*row, "BestAlignedCheck", "&Aligned",
          "The disc of each lies on that of the sharpest, by whole pixels", m.state.BestAligned,
          [this](bool on) { m.state.BestAligned = on; });
    Check(*row, "BestAsClipCheck", "As a new &clip",
          "One SER with the times of the frames, not a FITS file of each", m.state.BestAsClip,
          [this](bool on) {
              m.state.BestAsClip = on;
              ShowActs();
          });
    m_byTime = Check(*row, "BestByTimeCheck", "By &time",
                     "As the frames follow each other in the clip, not the sharpest first",
                     m.state.BestByTime, [this](bool on) { m.state.BestByTime = on; });
    row->addStretch();
    m_take = NamedButton("BestTakeButton", "Take &Out...",
                         "Write the chosen frames into a folder; Ctrl+Z takes it back");
    row->addWidget(m_take);
    connect(m_take, &QPushButton::clicked, this, [this] { TakeButton_Click(); });
    return row;
}

QBoxLayout* frmBestFrames::MakeProgress() {
    auto* row = new QHBoxLayout();
    Check(*row, "BestInListCheck", "Shown in the &list",
          "The list as pictures shows the sharpest frame of each SER clip, not its first",
          m.state.SharpestOfClips, [this](bool on) {
              m.state.SharpestOfClips = on;
              m.navigation.RefreshDirButton_Click();
          });
    m_summary = Named(new ElidedLabel(), "BestSummary");
    row->addWidget(m_summary, 2);
    m_progress = Named(new QProgressBar(), "BestProgress", "Frames rated");
    row->addWidget(m_progress, 1);
    m_cancel = NamedButton("BestCancelButton", "Ca&ncel", "Rate no more frames of this clip");
    row->addWidget(m_cancel);
    connect(m_cancel, &QPushButton::clicked, this, [this] { CancelButton_Click(); });
    return row;
}

std::vector<keys::KeyLine> frmBestFrames::KeyLines() {
    return {{"Left, Right", "in the graph: the frame before, the next one"},
            {"Up, Down", "in the graph: move the line"},
            {"Ctrl+Z", "takes the last command back"},
            {"Esc", "closes the window"}};
}

void frmBestFrames::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Undo)) {
        m.controls.UndoButton->trigger();
        return;
    }
    QDialog::keyPressEvent(event);
}

void frmBestFrames::Form_Load() {
    const bool opens = !isVisible();
    if (opens) m_place.Restore(kDesign);
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    m_graph->setFocus();
    if (opens) FollowCurrent();
}

void frmBestFrames::closeEvent(QCloseEvent* event) {
    if (CancelsBatch(m.state, *event)) return;
    QDialog::closeEvent(event);
    Begin({});
}

void frmBestFrames::done(int result) {
    if (m.state.BatchRuns) return;
    QDialog::done(result);
    Begin({});
}

void frmBestFrames::BreakOff() {
    Begin({});
    close();
}

void frmBestFrames::FollowCurrent() {
    if (!isVisible()) return;
    const std::string path = m.state.Kind == FileKind::Clip ? m.state.Filename : std::string();
    const auto look = path.empty() ? std::nullopt : m.files.Look(path);
    if (path == m_path && (!m_whole || (look && *look == m_whole->look))) return;
    Begin(path);
}

// What was rated of the clip before is left at once.
void frmBestFrames::Begin(const std::string& path) {
    EndBlink();
    m_path = path;
    m_frames.clear();
    m_whole.reset();
    m_limit.reset();
    m_looked.clear();
    m_chosen.clear();
    m_shown.clear();
    m_fillTook = 0;
    m_rating->Ask(path);
    m_graph->SetCurrent(-1);
    FillGraph();
}

void frmBestFrames::TakeNews() {
    const auto news = m_rating->Take();
    if (!news || news->path != m_path) return;
    m_frames.insert(m_frames.end(), news->frames.begin(), news->frames.end());
    if (news->whole) m_whole = news->whole;
    ShowSummary();
    // Long clips fill the graph now and then; the window answers in between.
    if (!m_whole && m_filled.isValid() && m_filled.elapsed() < kIdleRate * m_fillTook) return;
    if (m_limit)
        m_chosen = AsSharpAs(m_frames, *m_limit);
    else
        ChooseByNumber();
    FillGraph();
}

void frmBestFrames::FillGraph() {
    QElapsedTimer took;
    took.start();
    const bool sorted = m_sorted->isChecked();
    const std::size_t current =
        m_looked.empty() ? m_frames.size() : m_looked.back(); // none when nothing was looked at
    m_shown = ShownFrames(m_frames, sorted, kMostPoints);
    if (current < m_frames.size() &&
        std::find(m_shown.begin(), m_shown.end(), current) == m_shown.end())
        m_looked.pop_back();
    const FrameNumbers places = sorted ? PlacesBySharpness(m_frames) : FrameNumbers();
    std::vector<GraphPoint> points;
    bool anyCut = false;
    for (const std::size_t number : m_shown) {
        const RatedFrame& frame = m_frames[number];
        GraphPoint point;
        point.x = double(sorted ? places[number] : number);
        point.y = {frame.sharpness, 100 * frame.brightness};
        point.kind = frame.cut ? 1 : 0;
        anyCut |= frame.cut;
        points.push_back(point);
    }
    std::vector<QString> kinds{QStringLiteral("frame")};
    if (anyCut) kinds.push_back(QStringLiteral("cut off"));
    m_graph->SetTitles(
        {{QStringLiteral("Sharpness"), QStringLiteral("Brightness in %")},
         sorted ? QStringLiteral("Place by sharpness") : QStringLiteral("Frame of the clip"),
         false});
    m_graph->SetHint(m_path.empty() ? QStringLiteral("The file that is shown is no clip")
                     : !m_whole     ? QStringLiteral("Rating; the first frames will appear here")
                     : m_whole->fault.empty() ? QStringLiteral("No frame of this clip can be rated")
                                              : ToQt(m_whole->fault));
    m_graph->SetPoints(std::move(points), std::move(kinds));
    const auto at = std::find(m_shown.begin(), m_shown.end(), current);
    m_graph->SetCurrent(at == m_shown.end() ? -1 : int(at - m_shown.begin()));
    ShowChoice();
    m_fillTook = took.elapsed();
    m_filled.start();
}

// The line lies at the least sharp one.
void frmBestFrames::ShowChoice() {
    std::vector<bool> chosen(m_frames.size(), false);
    for (const std::size_t number : m_chosen) chosen[number] = true;
    std::vector<bool> marked;
    for (const std::size_t number : m_shown) marked.push_back(chosen[number]);
    m_graph->SetChosen(std::move(marked));
    if (m_limit)
        m_graph->SetLimit(m_limit);
    else if (!m_chosen.empty())
        m_graph->SetLimit(m_frames[m_chosen.back()].sharpness);
    else
        m_graph->SetLimit({});
    m_said->SetText(m_frames.empty() ? "" : ChoiceSaid(m_chosen, m_frames));
    ShowSummary();
    ShowActs();
}

void frmBestFrames::ShowSummary() {
    const int all = std::max(m_pane.frames(), int(m_frames.size()));
    const bool runs = !m_path.empty() && !m_whole;
    m_progress->setVisible(runs);
    m_cancel->setVisible(runs);
    m_progress->setMaximum(m_pane.frames() > 0 ? all : 0); // not known: it moves to and fro
    m_progress->setValue(int(m_frames.size()));
    m_progress->setFormat(QStringLiteral("%v of %m"));
    std::string said = SummaryOfFrames(m_frames);
    if (m_whole && !m_whole->fault.empty()) said += (said.empty() ? "" : "; ") + m_whole->fault;
    m_summary->SetText(said);
}

void frmBestFrames::ShowActs() {
    m_take->setEnabled(m_whole && !m_chosen.empty());
    m_blink->setEnabled(m_pane.frames() > 0 && std::max(m_looked.size(), m_chosen.size()) >= 2);
}

void frmBestFrames::ShowWanted() {
    const QSignalBlocker silent(m_number);
    m_number->setRange(1, m.state.BestInPercent ? 100 : kMostNumber);
    m_number->setValue(m.state.BestFrames);
}

void frmBestFrames::ChooseByNumber() {
    m_limit.reset();
    m_chosen = BestFrames(m_frames,
                          WantedCount(m_frames.size(), m.state.BestFrames, m.state.BestInPercent));
}

void frmBestFrames::NumberChanged() {
    m.state.BestFrames = m_number->value();
    ChooseByNumber();
    ShowChoice();
}

// As many as before, as far as whole shares say.
void frmBestFrames::InPercentChanged(bool inPercent) {
    m.state.BestInPercent = inPercent;
    if (!m_chosen.empty())
        m.state.BestFrames = inPercent
                                 ? std::clamp(int(std::lround(100.0 * double(m_chosen.size()) /
                                                              double(m_frames.size()))),
                                              1, 100)
                                 : int(m_chosen.size());
    ShowWanted();
    NumberChanged();
}

void frmBestFrames::LimitMoved(double limit) {
    m_limit = limit;
    m_chosen = AsSharpAs(m_frames, limit);
    ShowChoice();
}

void frmBestFrames::PointClicked(int point) {
    if (m.state.BatchRuns) return;
    EndBlink();
    const std::size_t number = m_shown[std::size_t(point)];
    std::erase(m_looked, number);
    m_looked.push_back(number);
    if (m_looked.size() > 2) m_looked.erase(m_looked.begin());
    m_graph->SetCurrent(point);
    ShowActs();
    if (m_pane.frames() > 0)
        m_pane.show(int(number));
    else
        m.shell.ShowMessage("Control, Play MP4, MOV and SER in the window shows the frames");
}

void frmBestFrames::BlinkButton_Click() {
    if (!m_blink->isChecked()) {
        StopBlink();
        return;
    }
    const FrameNumbers& from = m_looked.size() == 2 ? m_looked : m_chosen;
    if (from.size() < 2) return m_blink->setChecked(false);
    m_pair = {from[0], from[1]};
    m_turn = 0;
    m_blinking.start();
    ShowBlink();
}

void frmBestFrames::EndBlink() {
    m_blinking.stop();
    m_blink->setChecked(false);
}

void frmBestFrames::StopBlink() {
    if (!m_blinking.isActive()) return;
    EndBlink();
    if (m_pane.frames() > 0) m_pane.show(int(m_pair[1 - m_turn]));
}

// The disc of the second lies where that of the first does. A slow disk lets events in, which may
// end the blink.
void frmBestFrames::ShowBlink() {
    if (m.state.BatchRuns) return;
    const std::size_t number = m_pair[m_turn];
    const RatedFrame first = m_frames[m_pair[0]];
    const RatedFrame shown = m_frames[number];
    if (m_pane.frames() > 0) m_pane.show(int(number));
    if (!m_blinking.isActive()) return;
    if (m_pane.frames() == 0) { // the player has failed
        EndBlink();
        return ShowActs();
    }
    if (m_turn == 1 && std::isfinite(first.x) && std::isfinite(shown.x))
        m_pane.shiftBy({int(std::lround(first.x - shown.x)), int(std::lround(first.y - shown.y))});
    m_turn = 1 - m_turn;
}

void frmBestFrames::CancelButton_Click() {
    if (m.state.BatchRuns)
        m.state.BatchCancelled = true;
    else
        m_rating->Cancel();
}

} // namespace tarn
