// The first steps in a window of their own, from the help menu.
#pragma once

#include "app/window/FirstSteps.h"

#include <QDialog>

namespace tarn {

class frmFirstSteps : public QDialog {
public:
    explicit frmFirstSteps(Context& context);

    void ShowSteps();
    FirstSteps& steps() { return *m_steps; }

private:
    FirstSteps* m_steps;
};

} // namespace tarn
