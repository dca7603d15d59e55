// The brightness control: a small window above the others. What it is set to lies on the desk and
// outlives it.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"

#include <QDialog>

class QLabel;
class QSlider;

namespace tarn {

class frmBrightness : public QDialog {
public:
    explicit frmBrightness(Context& context);

    // At its place, with the value in force.
    void Form_Load();

    // The value was changed elsewhere.
    void ShowValue(int value);

private:
    void CloseBrightnessButton_Click();

    Context& m;
    QSlider* m_slider;
    QLabel* m_label;
    KeptPlace m_place;
};

} // namespace tarn
