#include "display/frmStretch.h"

#include "display/Histogram.h"
#include "imaging/Pixels.h"
#include "widgets/Named.h"
#include "widgets/WindowPlaces.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

static_assert(Histogram::kColumns == FitsPixels::kBins);

constexpr int kSteps = 4000; // of a slider
constexpr int kPage = 40;
constexpr int kRest = 100;   // milliseconds
constexpr int kSettle = 200; // milliseconds
constexpr int kMidtoneDigits = 4;
constexpr std::size_t kShadows = 0;
constexpr std::size_t kMidtones = 1;
constexpr std::size_t kHighlights = 2;

int StepOf(double value) {
    return int(std::lround(PlaceOf(value) * kSteps));
}

double ValueOf(const ValueRange& range, double part) {
    return range.low + part * (range.high - range.low);
}

// Whole numbers for a camera's counts, digits for fractions.
QString ValueText(const ValueRange& range, double part) {
    const int digits = range.high - range.low > kPage ? 0 : kMidtoneDigits;
    return QString::number(ValueOf(range, part), 'f', digits);
}

QCheckBox* AddCheck(QHBoxLayout& bar, const char* name, const char* caption, const char* tooltip) {
    auto* check = new QCheckBox(QString::fromUtf8(caption));
    check->setObjectName(QString::fromUtf8(name));
    check->setToolTip(QString::fromUtf8(tooltip));
    bar.addWidget(check);
    return check;
}

} // namespace

frmStretch::frmStretch(Context& context)
    : m(context), m_histogram(new Histogram()),
      m_reset(NamedButton("ResetStretchButton", "&Reset", "Stretch the picture automatically")),
      m_place(*this, context.state.StretchPlace) {
    setObjectName(QStringLiteral("frmStretch"));
    setWindowTitle(QStringLiteral("Stretch"));
    KeepOnTop(*this);
    auto* all = new QVBoxLayout(this);
    auto* grid = new QGridLayout();
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(0, 1);
    grid->addWidget(m_histogram, 0, 1);
    m_sliders[kShadows] = AddSlider(*grid, 1, "ShadowsSlider", "&Shadows");
    m_sliders[kMidtones] = AddSlider(*grid, 2, "MidtonesSlider", "&Midtones");
    m_sliders[kHighlights] = AddSlider(*grid, 3, "HighlightsSlider", "&Highlights");
    all->addLayout(grid, 1);
    auto* bar = new QHBoxLayout();
    m_lock = AddCheck(*bar, "LockStretchCheck", "&Lock for the series",
                      "Show the pictures that follow with the same values");
    m_linear = AddCheck(*bar, "LinearCheck", "L&inear", "Show all pictures as they are stored");
    bar->addStretch();
    bar->addWidget(m_reset);
    auto* done = NamedButton("CloseStretchButton", "&Done", "Close; what is set stays in force");
    bar->addWidget(done);
    all->addLayout(bar);
    m_rest.setSingleShot(true);
    m_settle.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, [this] { ReadPicture(); });
    connect(&m_settle, &QTimer::timeout, this, [this] { Choose(); });
    connect(m_reset, &QPushButton::clicked, this, [this] { ResetButton_Click(); });
    connect(m_lock, &QCheckBox::clicked, this, [this] { LockCheck_Click(); });
    connect(m_linear, &QCheckBox::clicked, this, [this] { LinearCheck_Click(); });
    connect(done, &QPushButton::clicked, this, [this] { close(); });
}

QSlider* frmStretch::AddSlider(QGridLayout& grid, int row, const char* name, const char* caption) {
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName(QString::fromUtf8(name));
    slider->setRange(0, kSteps);
    slider->setPageStep(kPage);
    auto* label = new QLabel(QString::fromUtf8(caption));
    label->setBuddy(slider);
    auto* value = new QLabel();
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("0.000000")));
    m_values[std::size_t(row - 1)] = value;
    grid.addWidget(label, row, 0);
    grid.addWidget(slider, row, 1);
    grid.addWidget(value, row, 2);
    connect(slider, &QSlider::valueChanged, this, [this] { SliderMoved(); });
    return slider;
}

void frmStretch::Form_Load() {
    if (!isVisible()) m_place.Restore(sizeHint());
    show();
    raise();
    activateWindow();
    ReadPicture();
    m_sliders[kMidtones]->setFocus();
}

void frmStretch::Follow() {
    if (m_settle.isActive()) Choose();
    m_pixels.reset();
    m_rest.start(kRest);
}

void frmStretch::ReadPicture() {
    m_rest.stop();
    const ProgramState& s = m.state;
    if (!isVisible() || s.SlideViewing || s.BatchRuns) return;
    m_pixels.reset();
    const auto facts = s.ImgXfull.Facts();
    if (s.ImageLoaded && facts && facts->header.fits) {
        std::string error; // was told when the picture was shown
        const QSize least = LeastFor(facts->header.size, wanted());
        auto pixels = FitsPixels::Read(s.Filename, least.width(), least.height(), error);
        if (pixels) m_pixels = std::make_unique<FitsPixels>(std::move(*pixels));
    }
    if (!m_pixels) {
        m_histogram->SetCounts({});
        m_histogram->SetMarks({});
        SetSliders(false);
        return;
    }
    m_file = {facts->look.device, facts->look.inode, m_pixels->Bits(), m_pixels->Channels()};
    const StretchChoice choice = CurrentStretchChoice();
    m_automatic = !choice.IsFixedFor(m_file);
    m_stretch = m_automatic ? m_pixels->Automatic() : *choice.fixed;
    m_lock->setChecked(choice.locked);
    m_linear->setChecked(choice.linear);
    SetSliders(true);
    m_histogram->SetCounts(m_pixels->Histogram());
    ShowStretch();
}

void frmStretch::SetSliders(bool enabled) {
    const bool moves = enabled && !m_linear->isChecked();
    for (QSlider* slider : m_sliders) slider->setEnabled(moves);
    m_reset->setEnabled(enabled);
    m_lock->setEnabled(enabled);
    m_linear->setEnabled(enabled);
}

void frmStretch::ShowStretch() {
    const std::array<double, 3> values{m_stretch.shadows, m_stretch.midtones, m_stretch.highlights};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QSignalBlocker silent(m_sliders[i]);
        m_sliders[i]->setValue(StepOf(values[i]));
    }
    ShowMarks();
}

// The midtones stand between the two others.
void frmStretch::ShowMarks() {
    const double width = m_stretch.highlights - m_stretch.shadows;
    const std::array<double, 3> parts{
        m_stretch.shadows, m_stretch.shadows + m_stretch.midtones * width, m_stretch.highlights};
    const ValueRange& range = m_pixels->Range();
    std::array<double, 3> places{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const double value = ValueOf(m_stretch.range, parts[i]);
        places[i] = PlaceOf(std::clamp((value - range.low) / (range.high - range.low), 0.0, 1.0));
    }
    m_histogram->SetMarks(places);
    m_values[kShadows]->setText(ValueText(m_stretch.range, m_stretch.shadows));
    m_values[kMidtones]->setText(QString::number(m_stretch.midtones, 'f', kMidtoneDigits));
    m_values[kHighlights]->setText(ValueText(m_stretch.range, m_stretch.highlights));
}

// The one that moves pushes the other before it.
void frmStretch::SliderMoved() {
    if (!m_pixels) return;
    QSlider* shadows = m_sliders[kShadows];
    QSlider* highlights = m_sliders[kHighlights];
    if (shadows->value() >= highlights->value()) {
        const bool up = sender() == shadows;
        const QSignalBlocker silent(up ? highlights : shadows);
        if (up)
            highlights->setValue(shadows->value() + 1);
        else
            shadows->setValue(highlights->value() - 1);
    }
    const auto take = [&](std::size_t i, double& value) {
        const int step = m_sliders[i]->value();
        if (step != StepOf(value)) value = ValueAt(double(step) / kSteps); // else it is finer
    };
    take(kShadows, m_stretch.shadows);
    take(kMidtones, m_stretch.midtones);
    take(kHighlights, m_stretch.highlights);
    m_automatic = false;
    ShowMarks();
    QImage picture(m_pixels->Width(), m_pixels->Height(), QImage::Format_RGB32);
    if (picture.isNull()) return;
    m_pixels->ToRgb(m_stretch, reinterpret_cast<std::uint32_t*>(picture.bits()),
                    std::size_t(picture.bytesPerLine()) / sizeof(std::uint32_t));
    onMoved(picture);
    m_settle.start(kSettle);
}

void frmStretch::Choose() {
    m_settle.stop();
    StretchChoice choice;
    choice.linear = m_linear->isChecked();
    choice.locked = m_lock->isChecked();
    if (!m_automatic || choice.locked) choice.fixed = m_stretch;
    choice.of = m_file;
    SetStretchChoice(choice);
    onChosen();
}

// Who clicks does not wait for the rest.
bool frmStretch::HasPicture() {
    if (m_rest.isActive()) ReadPicture();
    return m_pixels != nullptr;
}

void frmStretch::ResetButton_Click() {
    if (!HasPicture()) return;
    m_stretch = m_pixels->Automatic();
    m_automatic = true;
    m_linear->setChecked(false);
    SetSliders(true);
    ShowStretch();
    Choose();
}

void frmStretch::LockCheck_Click() {
    const bool locked = m_lock->isChecked();
    if (!HasPicture()) return;
    m_lock->setChecked(locked);
    Choose();
}

void frmStretch::LinearCheck_Click() {
    const bool linear = m_linear->isChecked();
    if (!HasPicture()) return;
    m_linear->setChecked(linear);
    SetSliders(true);
    Choose();
}

} // namespace tarn
