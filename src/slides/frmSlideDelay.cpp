#include "slides/frmSlideDelay.h"

#include "widgets/FileListBox.h"
#include "widgets/WindowPlaces.h"

#include <QAction>
#include <QGroupBox>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

namespace tarn {

namespace {

constexpr QPoint kFromMain(60, 80); // logical pixels from the main window's corner
constexpr int kLongest = 30;        // seconds

} // namespace

frmSlideDelay::frmSlideDelay(Context& context)
    : QDialog(context.controls.FileListBox->window()), m(context),
      m_frame(new QGroupBox(QStringLiteral("Auto Advance Off"))),
      m_slider(new QSlider(Qt::Horizontal)), m_caption(m_frame->title()) {
    setObjectName(QStringLiteral("frmSlideDelay"));
    setWindowTitle(QStringLiteral("Tarn_View - Set Slide Auto Advance"));
    MakeContents();
    connect(m_slider, &QSlider::valueChanged, this, &frmSlideDelay::DelaySlider_Change);
}

void frmSlideDelay::MakeContents() {
    m_frame->setObjectName(QStringLiteral("DelayFrame"));
    m_slider->setObjectName(QStringLiteral("DelaySlider"));
    m_slider->setAccessibleName(QStringLiteral("Seconds until the next picture"));
    m_slider->setRange(0, kLongest);
    m_slider->setPageStep(5);
    m_slider->setTickPosition(QSlider::TicksBelow);
    m_slider->setTickInterval(5);
    m_slider->setMinimumWidth(50 * fontMetrics().horizontalAdvance(QLatin1Char('0')));
    (new QVBoxLayout(m_frame))->addWidget(m_slider);
    auto* reset = new QPushButton(QStringLiteral("Set Auto Advance Off"));
    reset->setObjectName(QStringLiteral("DelayResetButton"));
    reset->setAutoDefault(false);
    auto* close = new QPushButton(QStringLiteral("Close"));
    close->setObjectName(QStringLiteral("DelayCloseButton"));
    close->setDefault(true);
    auto* bar = new QHBoxLayout();
    bar->addWidget(reset);
    bar->addStretch();
    bar->addWidget(close);
    auto* all = new QVBoxLayout(this);
    all->addWidget(m_frame);
    all->addLayout(bar);
    connect(reset, &QPushButton::clicked, this, &frmSlideDelay::DelayResetButton_Click);
    connect(close, &QPushButton::clicked, this, &QWidget::hide);
}

void frmSlideDelay::ShowDelay() {
    const QPoint corner = m.controls.FileListBox->window()->pos() + kFromMain;
    PlaceOnScreen(*this, QRect(corner, sizeHint()));
    m_slider->setFocus();
    exec();
}

void frmSlideDelay::DelaySlider_Change(int seconds) {
    if (seconds <= 0) {
        DelayResetButton_Click();
        return;
    }
    m.state.SlideDelay = seconds;
    const QString text = QStringLiteral("Auto Update seconds = %1").arg(seconds);
    m_frame->setTitle(text);
    m.controls.SlideButton->setToolTip(text);
    m.controls.ResetSlideShowAutoUpdateButton->setVisible(true);
}

void frmSlideDelay::DelayResetButton_Click() {
    m_slider->setValue(0); // which may come here anew, to the same end
    m.state.SlideDelay = 0;
    m_frame->setTitle(m_caption);
    m.controls.SlideButton->setToolTip({});
    m.controls.ResetSlideShowAutoUpdateButton->setVisible(false);
    hide();
}

} // namespace tarn
