#include "blink/frmBlink.h"

#include "blink/BlinkWords.h"
#include "blink/SeenPane.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "imaging/fits/KeptCards.h"
#include "platform/QtText.h"
#include "sky/planes/FramesOfFiles.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include <unistd.h>

namespace tarn {

namespace {

constexpr QSize kDesign(1100, 820);
constexpr int kViewRests = 60; // milliseconds
constexpr int kFastest = 25;   // frames a second

std::size_t MemoryOf(const ProgramState& s) {
    constexpr std::size_t kMegabyte = std::size_t(1) << 20U;
    constexpr std::size_t kLeast = 64;
    constexpr std::size_t kPart = 6;
    if (s.BlinkMemory > 0) return std::max(kLeast, std::size_t(s.BlinkMemory)) * kMegabyte;
    return std::size_t(::sysconf(_SC_PHYS_PAGES)) * std::size_t(::sysconf(_SC_PAGE_SIZE)) / kPart;
}

// Of a file, as the plane in which its stars are measured.
BlinkReader ReaderOf(std::vector<std::string> paths) {
    return [paths = std::move(paths)](std::size_t number,
                                      std::string& error) -> std::optional<ReadFrame> {
        auto plane = ReadFramePlane(paths[number], error);
        if (!plane) return std::nullopt;
        return ReadFrame{std::move(plane->samples), plane->cell, plane->bottomUp};
    };
}

} // namespace

frmBlink::frmBlink(Context& context)
    : m(context), m_place(*this, context.state.BlinkPlace),
      m_pane(Named(new SeenPane(), "BlinkPane", "The frame shown")), m_awaited(context) {
    setObjectName(QStringLiteral("frmBlink"));
    setWindowTitle(QStringLiteral("Blink"));
    setWindowFlags(Qt::Window);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_pane, 1);
    all->addLayout(MakePlayer());
    all->addLayout(MakeChoices());
    m_pane->onView = [this] { ShowView(); };
    m_pane->onWheel = [this](int notches) { Step(-notches); };
    m_awaited.onWaiting = [this](const std::string& said) { m_pane->SetHint(ToQt(said)); };
    m_awaited.onKnown = [this](AwaitedFrames::Known known) { Plan(std::move(known)); };
    m_tick.setTimerType(Qt::PreciseTimer);
    m_tick.setSingleShot(true);
    connect(&m_tick, &QTimer::timeout, this, [this] { Tick(); });
    m_rest.setSingleShot(true);
    m_rest.setInterval(kViewRests);
    connect(&m_rest, &QTimer::timeout, this, [this] {
        m_maker->SetView(m_pane->View());
        ShowProgress();
    });
    const auto late = [this](void (frmBlink::*done)()) {
        return [this, done] {
            QMetaObject::invokeMethod(
                this, [this, done] { (this->*done)(); }, Qt::QueuedConnection);
        };
    };
    m_maker = std::make_unique<FrameMaker>(late(&frmBlink::MakerTold));
    m_planning = std::make_unique<LateWork>([this] {
        QMetaObject::invokeMethod(
            this, [this] { m_planning->Take(); }, Qt::QueuedConnection);
    });
    m_planning->onThrown = [this](const std::string& fault) {
        m_pane->SetHint(ToQt("The frames cannot be laid over each other: " + fault));
    };
}

frmBlink::~frmBlink() = default;

QToolButton* frmBlink::WayButton(QBoxLayout& bar, const char* name, const char* caption,
                                 const char* tip, BlinkWay way) {
    auto* button = Named(new QToolButton(), name, tip, tip);
    button->setText(QString::fromUtf8(caption));
    button->setCheckable(true);
    button->setFocusPolicy(Qt::TabFocus);
    bar.addWidget(button);
    connect(button, &QToolButton::clicked, this, [this, way] { SetWay(way); });
    m_ways[std::size_t(way)] = button;
    return button;
}

QBoxLayout* frmBlink::MakePlayer() {
    auto* bar = new QHBoxLayout();
    m_play = NamedButton("BlinkPlayButton", "Pause", "Stop on this frame, and go on (Space)");
    m_play->setFocusPolicy(Qt::TabFocus);
    m_play->setEnabled(false);
    connect(m_play, &QPushButton::clicked, this, [this] { SetPlaying(!m_plays); });
    bar->addWidget(m_play);
    auto* ways = new QButtonGroup(this);
    ways->addButton(WayButton(*bar, "BlinkBackButton", "\u25C0", "Play back", BlinkWay::Back));
    ways->addButton(WayButton(*bar, "BlinkToAndFroButton", "\u25C0\u25B6", "Play to and fro",
                              BlinkWay::ToAndFro));
    ways->addButton(
        WayButton(*bar, "BlinkForwardButton", "\u25B6", "Play forward", BlinkWay::Forward));
    m_ways[std::size_t(BlinkWay::Forward)]->setChecked(true);
    bar->addSpacing(12);
    m_rate = Named(new QSlider(Qt::Horizontal), "BlinkRateSlider", "Frames a second",
                   "Frames a second (Up, Down)");
    m_rate->setRange(1, kFastest);
    m_rate->setFocusPolicy(Qt::TabFocus);
    m_rate->setMinimumWidth(120);
    m_rateSaid = Named(new QLabel(), "BlinkRateLabel");
    m_rateSaid->setMinimumWidth(m_rateSaid->fontMetrics().horizontalAdvance("25 a second  "));
    bar->addWidget(m_rate, 1);
    bar->addWidget(m_rateSaid);
    connect(m_rate, &QSlider::valueChanged, this, [this](int rate) { SetRate(rate); });
    m_rate->setValue(std::clamp(m.state.BlinkRate, 1, kFastest));
    SetRate(m_rate->value());
    bar->addStretch(1);
    m_zoomSaid = Named(new QLabel(), "BlinkZoomLabel");
    bar->addWidget(m_zoomSaid);
    return bar;
}

QBoxLayout* frmBlink::MakeChoices() {
    auto* bar = new QHBoxLayout();
    const auto box = [&](const char* name, const char* caption, const char* tip, bool checked) {
        auto* made = Named(new QCheckBox(QString::fromUtf8(caption)), name, {}, tip);
        made->setFocusPolicy(Qt::TabFocus);
        made->setChecked(checked);
        bar->addWidget(made);
        return made;
    };
    m_byScore =
        box("BlinkByScoreCheck", "Best &First", "By score in place of time", m.state.BlinkByScore);
    m_skips = box("BlinkSkipCheck", "Skip Re&jected", "Pass over frames that are rejected",
                  m.state.BlinkSkipRejected);
    m_differs = box("BlinkDifferenceCheck", "&Difference",
                    "Beside the frame what it has that the others have not (D)", false);
    connect(m_byScore, &QCheckBox::toggled, this, [this](bool on) {
        m.state.BlinkByScore = on;
        Arrange();
    });
    connect(m_skips, &QCheckBox::toggled, this, [this](bool on) {
        m.state.BlinkSkipRejected = on;
        Arrange();
    });
    connect(m_differs, &QCheckBox::toggled, this, [this](bool on) { SetDifference(on); });
    m_said = Named(new ElidedLabel(), "BlinkSaid");
    m_said->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    bar->addWidget(m_said, 1);
    return bar;
}

void frmBlink::Blink(std::vector<std::string> paths, std::optional<BlinkPlace> at) {
    const bool again = isVisible() && paths == m_awaited.Paths() && !m_frames.empty() &&
                       m_maker->Progress().fault.empty();
    m_goTo = at;
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    m_pane->setFocus();
    if (again) return TakeGround();
    BreakOff();
    m_awaited.Begin(std::move(paths));
}

void frmBlink::BreakOff() {
    SetPlaying(false);
    m_awaited.GiveUp();
    m_planning->GiveUp();
    m_maker->Show(nullptr);
    m_frames.clear();
    m_leftOut.clear();
    m_order = {};
    m_pane->SetGround(nullptr);
    m_pane->SetCorner({}, {});
    m_said->SetText({});
    m_play->setEnabled(false);
}

void frmBlink::FramesChanged() {
    m_awaited.FramesChanged();
}

void frmBlink::Plan(AwaitedFrames::Known known) {
    m_pane->SetHint(known.frames.empty() ? QStringLiteral("No pictures are listed here")
                                         : QStringLiteral("Laying the frames over each other"));
    if (known.frames.empty()) return;
    m_planning->Begin(
        [this, known = std::move(known)](std::atomic<bool>&) mutable -> LateWork::Answer {
            for (std::size_t i = 0; i < known.frames.size(); ++i)
                if (known.left[i].empty() && IsSumOfFrames(known.frames[i].path))
                    known.left[i] = "itself a sum of frames";
            return [this, frames = known.frames, plan = PlanSeries(known.measures, known.left)] {
                Planned(plan, frames);
            };
        });
}

void frmBlink::Planned(const SeriesPlan& plan, const std::vector<JudgedFrame>& known) {
    m_leftOut.clear();
    for (const std::string& fault : plan.faults)
        if (!fault.empty()) m_leftOut.push_back(fault);
    m_frames.clear();
    m_maps.clear();
    auto series = std::make_shared<BlinkSeries>();
    std::vector<std::string> paths;
    for (const SeriesFrame& frame : plan.frames) {
        const JudgedFrame& judged = known[frame.number];
        if (frame.number == plan.reference) series->reference = m_frames.size();
        BlinkFrame shown{judged.path,         LastPart(judged.path),     judged.taken,
                         judged.measures.hfr, plan.scores[frame.number], {}};
        m_frames.push_back(std::move(shown));
        series->frames.push_back(frame);
        m_maps.push_back(frame.map);
        paths.push_back(judged.path);
    }
    ShowProgress();
    if (m_frames.empty()) return m_pane->SetHint(QStringLiteral("No frames with stars here"));
    series->read = ReaderOf(std::move(paths));
    m_pane->SetHint(QStringLiteral("Reading the sharpest frame"));
    m_maker->SetMemory(MemoryOf(m.state));
    m_maker->Show(std::move(series));
    m_order = {};
    MarksChanged();
    SetWay(BlinkWay::Forward);
    m_play->setEnabled(m_frames.size() > 1);
    SetPlaying(m_frames.size() > 1);
}

void frmBlink::MakerTold() {
    if (m_frames.empty()) return;
    const bool first = m_pane->View().IsEmpty();
    if (const auto ground = m_maker->Ground(); ground && first) {
        m_pane->SetGround(ground);
        TakeGround();
        ShowView();
        m_maker->SetView(m_pane->View());
    }
    bool arranges = false;
    for (const auto& [number, fault] : m_maker->Faults())
        arranges = !std::exchange(m_frames[number].isUnread, true) || arranges;
    if (arranges) return Arrange();
    ShowCurrent();
    ShowProgress();
}

void frmBlink::TakeGround() {
    const auto ground = m_maker->Ground();
    if (!ground || !m_goTo) return;
    const BlinkPlace place = *std::exchange(m_goTo, {});
    const auto frame = std::find_if(m_frames.begin(), m_frames.end(), [&](const BlinkFrame& each) {
        return each.path == place.path;
    });
    if (frame == m_frames.end()) return;
    const auto [x, y] = m_maps[std::size_t(frame - m_frames.begin())](place.x, place.y);
    const int cell = ground->grid.cell;
    constexpr int kTimes = 2;
    m_pane->GoTo(x / cell, y / cell, kTimes);
}

void frmBlink::ShowView() {
    m_zoomSaid->setText(m_pane->Scale() > 0 ? ToQt(FormatFixed(100 * m_pane->Scale(), 0) + " %")
                                            : QString());
    m_rest.start();
}

void frmBlink::ShowProgress() {
    const MakingProgress progress = m_maker->Progress();
    if (!progress.fault.empty()) {
        SetPlaying(false);
        m_pane->SetHint(ToQt("The sharpest frame cannot be read: " + progress.fault));
    }
    std::vector<std::string> left = m_leftOut;
    for (const auto& [number, fault] : m_maker->Faults()) left.push_back(fault);
    std::string said = progress.made < progress.total ? std::to_string(progress.made) + " of " +
                                                            std::to_string(progress.total) + " made"
                                                      : FramesText(progress.total);
    if (m_frames.empty()) said.clear();
    const std::string out = LeftOutText(left);
    m_said->SetText(said + (said.empty() || out.empty() ? "" : "; ") + out);
}

void frmBlink::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    BreakOff();
}

void frmBlink::done(int result) {
    QDialog::done(result);
    BreakOff();
}

} // namespace tarn
