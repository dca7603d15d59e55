#include "display/frmBrightness.h"

#include "imaging/Pixels.h"
#include "widgets/Named.h"
#include "widgets/WindowPlaces.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr int kSmallStep = 1;
constexpr int kLargeStep = 5;

} // namespace

frmBrightness::frmBrightness(Context& context)
    : m(context), m_slider(new QSlider(Qt::Horizontal)), m_label(new QLabel()),
      m_place(*this, context.state.BrightnessPlace) {
    setObjectName(QStringLiteral("frmBrightness"));
    setWindowTitle(QStringLiteral("Bright"));
    KeepOnTop(*this);
    m_slider->setObjectName(QStringLiteral("BrightnessSlider"));
    m_slider->setAccessibleName(QStringLiteral("Brightness"));
    m_slider->setRange(-kMostBrightness, kMostBrightness);
    m_slider->setSingleStep(kSmallStep);
    m_slider->setPageStep(kLargeStep);
    m_label->setObjectName(QStringLiteral("BrightnessLabel"));
    m_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const int em = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_slider->setMinimumWidth(30 * em);
    m_label->setMinimumWidth(5 * em);
    auto* reset = NamedButton("ResetBButton", "Reset", "Reset brightness adjustment");
    auto* done = NamedButton("CloseBrightnessButton", "Done",
                             "Reset brightness adjustment and close brightness control");
    auto* line = new QHBoxLayout();
    line->addWidget(m_slider, 1);
    line->addWidget(m_label);
    auto* bar = new QHBoxLayout();
    bar->addWidget(reset);
    bar->addStretch();
    bar->addWidget(done);
    auto* all = new QVBoxLayout(this);
    all->addLayout(line);
    all->addLayout(bar);
    connect(m_slider, &QSlider::valueChanged, this,
            [this](int to) { m.display.SetBrightness(to); });
    connect(reset, &QPushButton::clicked, this, [this] { m.display.ResetBButton_Click(); });
    connect(done, &QPushButton::clicked, this, [this] { CloseBrightnessButton_Click(); });
}

void frmBrightness::Form_Load() {
    ShowValue(m.state.BrightnessValue);
    if (!isVisible()) m_place.Restore(sizeHint());
    show();
    raise();
    activateWindow();
    m_slider->setFocus();
}

void frmBrightness::ShowValue(int value) {
    const QSignalBlocker silent(m_slider);
    m_slider->setValue(value);
    m_label->setText(QString::number(value));
}

// The adjustment helps to look, it is no change to keep.
void frmBrightness::CloseBrightnessButton_Click() {
    m.display.ResetBButton_Click();
    close();
}

} // namespace tarn
