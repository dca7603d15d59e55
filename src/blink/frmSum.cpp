#include "blink/frmSum.h"

#include "blink/BlinkWords.h"
#include "blink/SeenPane.h"
#include "common/paths.h"
#include "platform/QtText.h"
#include "sky/series/SumCards.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Named.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr QSize kDesign(1000, 800);
constexpr int kViewRests = 60; // milliseconds
constexpr int kLeftOutRows = 4;
constexpr double kMostSigmas = 10;

} // namespace

frmSum::frmSum(Context& context)
    : m(context), m_place(*this, context.state.SumPlace),
      m_pane(Named(new SeenPane(), "SumPane", "The sum of the frames")), m_awaited(context) {
    setObjectName(QStringLiteral("frmSum"));
    setWindowTitle(QStringLiteral("Sum of Frames"));
    setWindowFlags(Qt::Window);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_pane, 1);
    all->addLayout(MakeChoices());
    all->addLayout(MakeProgress());
    m_leftOut = Named(new QListWidget(), "SumLeftOutList", "Frames left out");
    m_leftOut->setMaximumHeight(kLeftOutRows * (fontMetrics().height() + 4));
    m_leftOut->hide();
    all->addWidget(m_leftOut);
    m_awaited.onWaiting = [this](const std::string& said) {
        m_pane->SetHint(ToQt(said));
        Say(said);
    };
    m_awaited.onKnown = [this](AwaitedFrames::Known known) {
        m_known = std::move(known);
        for (std::size_t i = 0; i < m_left.size(); ++i)
            if (!m_left[i].empty()) m_known.left[i] = m_left[i];
        Begin();
    };
    m_rest.setSingleShot(true);
    m_rest.setInterval(kViewRests);
    m_pane->onView = [this] { m_rest.start(); };
    connect(&m_rest, &QTimer::timeout, this, [this] { m_maker->SetView(m_pane->View()); });
    m_maker = std::make_unique<FrameMaker>(
        [this] {
            QMetaObject::invokeMethod(
                this,
                [this] {
                    const auto ground = m_maker->Ground();
                    if (!ground) return;
                    if (m_pane->Ground() != ground) {
                        m_pane->SetGround(ground);
                        m_maker->SetView(m_pane->View());
                    }
                    if (const auto frame = m_maker->Frame(0)) m_pane->SetFrame(frame);
                },
                Qt::QueuedConnection);
        },
        1);
    m_work = std::make_unique<LateWork>([this] {
        QMetaObject::invokeMethod(
            this, [this] { m_work->Take(); }, Qt::QueuedConnection);
    });
    m_work->onThrown = [this](const std::string& fault) {
        TellNotSaved();
        m_growing.reset();
        SetRunning(false);
        m_pane->SetHint(ToQt("No sum: " + fault));
        Say("No sum: " + fault);
    };
}

frmSum::~frmSum() = default;

QBoxLayout* frmSum::MakeChoices() {
    auto* bar = new QHBoxLayout();
    m_byScore = Named(new QCheckBox(QStringLiteral("Weigh by S&core")), "SumByScoreCheck", {},
                      "Sharp and clear frames count more; else only their noise counts");
    m_byScore->setChecked(m.state.SumByScore);
    bar->addWidget(m_byScore);
    auto* label = new QLabel(QStringLiteral("&Leave out beyond"));
    m_sigma =
        Named(new QDoubleSpinBox(), "SumSigmaBox", "Deviations beyond which a sample is left out",
              "Hits, trails and what moves are left out of the mean; 0 leaves all in it");
    m_sigma->setRange(0, kMostSigmas);
    m_sigma->setDecimals(1);
    m_sigma->setSingleStep(0.5);
    m_sigma->setSuffix(QStringLiteral(" sigma"));
    m_sigma->setValue(m.state.SumSigma / 10.0);
    label->setBuddy(m_sigma);
    bar->addWidget(label);
    bar->addWidget(m_sigma);
    m_again = NamedButton("SumAgainButton", "Sum &Again", "With these choices");
    bar->addWidget(m_again);
    bar->addStretch(1);
    m_save = NamedButton("SumSaveButton", "Save &As...",
                         "As a FITS file of 32-bit values, whose header lists the frames");
    bar->addWidget(m_save);
    connect(m_byScore, &QCheckBox::toggled, this, [this](bool on) { m.state.SumByScore = on; });
    connect(m_sigma, &QDoubleSpinBox::valueChanged, this,
            [this](double sigma) { m.state.SumSigma = int(std::lround(10 * sigma)); });
    connect(m_again, &QPushButton::clicked, this, [this] { Begin(); });
    connect(m_save, &QPushButton::clicked, this, [this] { SaveButton_Click(); });
    return bar;
}

QBoxLayout* frmSum::MakeProgress() {
    auto* bar = new QHBoxLayout();
    m_said = Named(new ElidedLabel(), "SumSaid");
    bar->addWidget(m_said, 2);
    m_progress = Named(new QProgressBar(), "SumProgress", "Frames summed");
    m_progress->setFormat(QStringLiteral("%v of %m"));
    bar->addWidget(m_progress, 1);
    m_cancel = NamedButton("SumCancelButton", "&Cancel", "Sum no more frames");
    connect(m_cancel, &QPushButton::clicked, this, [this] { Cancel(); });
    bar->addWidget(m_cancel);
    return bar;
}

void frmSum::Say(const std::string& text) {
    m_said->SetText(text);
}

void frmSum::SetRunning(bool running) {
    m_progress->hide(); // until it is known of how many
    m_cancel->setVisible(running);
    m_again->setEnabled(!running && !m_known.frames.empty());
    m_save->setEnabled(!running && m_finished != nullptr);
}

void frmSum::Sum(std::vector<std::string> paths, std::vector<std::string> left, bool isSelected) {
    m_isSelected = isSelected;
    if (!isVisible()) m_place.Restore(kDesign);
    show();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    m_pane->setFocus();
    BreakOff();
    m_left = std::move(left);
    SetRunning(true);
    m_awaited.Begin(std::move(paths));
}

void frmSum::FramesChanged() {
    m_awaited.FramesChanged();
}

void frmSum::TellNotSaved() {
    if (m_saves.empty()) return;
    m.shell.ShowMessage("'" + LastPart(m_saves) + "' NOT saved: it was broken off");
    m_saves.clear();
}

void frmSum::BreakOff() {
    TellNotSaved();
    m_awaited.GiveUp();
    m_work->GiveUp();
    m_maker->Show(nullptr);
    m_growing.reset();
    m_finished.reset();
    m_known = {};
    m_leftOut->clear();
    m_leftOut->hide();
    m_pane->SetGround(nullptr);
    Say({});
}

void frmSum::Begin() {
    if (m_known.frames.empty()) {
        m_pane->SetHint(QStringLiteral("No pictures are listed here"));
        return SetRunning(false);
    }
    m_pane->SetHint(QStringLiteral("Laying the frames over each other"));
    Say("Laying the frames over each other");
    SetRunning(true);
    StackOrder order;
    order.sigmas = m.state.SumSigma / 10.0;
    if (order.sigmas > 0) order.sigmas = std::max(1.0, order.sigmas);
    order.weights = m.state.SumByScore ? FrameWeights::Score : FrameWeights::Noise;
    m_growing = std::make_shared<Growing>();
    m_work->Begin([this, known = m_known, order, growing = m_growing](std::atomic<bool>& givenUp) {
        StackOrder watched = order;
        watched.watch.cancelled = &givenUp;
        return Work(known, watched, growing);
    });
}

// The sum before stands, and can be saved.
void frmSum::Cancel() {
    TellNotSaved();
    m_awaited.GiveUp();
    m_work->GiveUp();
    m_growing.reset();
    SetRunning(false);
    m_pane->SetHint(QStringLiteral("Cancelled"));
    Say("Cancelled");
}

// Another one of the same size stays as it is seen.
void frmSum::Show(FrameSamples samples, int cell, bool bottomUp) {
    auto series = std::make_shared<BlinkSeries>();
    series->frames.push_back({});
    series->read = [read = ReadFrame{std::move(samples), cell, bottomUp}](
                       std::size_t, std::string&) { return std::optional(read); };
    m_maker->Show(std::move(series));
    m_maker->Prefer({0});
}

void frmSum::Grown() {
    if (!m_growing) return;
    std::shared_ptr<const PartialSum> sum;
    int shrink = 1;
    bool bottomUp = false;
    {
        const std::lock_guard lock(m_growing->mutex);
        sum = std::exchange(m_growing->sum, nullptr);
        shrink = m_growing->shrink;
        bottomUp = m_growing->bottomUp;
        m_progress->show();
        m_progress->setRange(0, int(m_growing->total));
        m_progress->setValue(int(m_growing->done));
        Say(m_growing->done < m_growing->total ? "Laying the frames over each other"
                                               : "Averaging, without what stands out");
    }
    if (!sum) return;
    FrameSamples samples;
    samples.width = sum->width;
    samples.height = sum->height;
    samples.planes = sum->colours;
    samples.floats = sum->values.data();
    samples.kept = sum;
    Show(std::move(samples), shrink, bottomUp);
}

void frmSum::TellLeftOut(const Finished& finished) {
    m_leftOut->clear();
    for (std::size_t i = 0; i < finished.paths.size(); ++i) {
        const std::string& fault = i < finished.result.frames.size()
                                       ? finished.result.frames[i].fault
                                       : finished.plan.faults[i];
        if (!fault.empty()) m_leftOut->addItem(ToQt(LastPart(finished.paths[i]) + ": " + fault));
    }
    m_leftOut->setVisible(m_leftOut->count() > 0);
}

void frmSum::End(std::shared_ptr<const Finished> finished) {
    TellLeftOut(*finished);
    m_growing.reset();
    const std::string& fault = finished->result.fault;
    if (!finished->plan.reference || !fault.empty()) {
        m_finished.reset();
        SetRunning(false);
        m_pane->SetHint(fault.empty() ? QStringLiteral("No frames with stars here")
                                      : ToQt("No sum: " + fault));
        return Say(fault.empty() ? "No frames with stars here" : "No sum: " + fault);
    }
    m_finished = std::move(finished);
    SetRunning(false);
    Say("Mean of " + FramesText(CountOfSum(m_finished->result)) +
        (m_leftOut->count() > 0 ? ", " + std::to_string(m_leftOut->count()) + " left out" : ""));
    Show(m_finished->pixels->Samples(), 1, m_finished->bottomUp);
}

void frmSum::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Plus:
        return m_pane->Zoom(1);
    case Qt::Key_Minus:
        return m_pane->Zoom(-1);
    case Qt::Key_9:
        return m_pane->Fit();
    case Qt::Key_1:
        return m_pane->FullSize();
    default:
        break;
    }
    if (event->matches(QKeySequence::Save)) return m_save->click();
    QDialog::keyPressEvent(event);
}

std::vector<keys::KeyLine> frmSum::KeyLines() {
    return {{"+, -", "closer, farther (also Ctrl and the wheel)"},
            {"9", "the whole sum"},
            {"1", "full size"},
            {"Ctrl+S", "saves it"},
            {"Esc", "closes the window"}};
}

void frmSum::closeEvent(QCloseEvent* event) {
    QDialog::closeEvent(event);
    BreakOff();
}

void frmSum::done(int result) {
    QDialog::done(result);
    BreakOff();
}

} // namespace tarn
