// Sets the seconds after which a show goes on by itself. The value holds for this run.
#pragma once

#include "desk/Context.h"

#include <QDialog>

class QGroupBox;
class QSlider;

namespace tarn {

class frmSlideDelay : public QDialog {
public:
    explicit frmSlideDelay(Context& context);

    // Beside the main window's corner; returns when it is closed.
    void ShowDelay();

    void DelaySlider_Change(int seconds);
    void DelayResetButton_Click();

private:
    void MakeContents();

    Context& m;
    QGroupBox* m_frame; // DelayFrame
    QSlider* m_slider;  // DelaySlider
    QString m_caption;  // of DelayFrame without a delay
};

} // namespace tarn
