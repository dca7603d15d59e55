// Windows on a screen that is too small for them: what does not fit is scrolled to.
#pragma once

#include <QObject>

class QWidget;

namespace tarn {

// While it lives, every window of the program (their names begin with "frm") whose contents need
// more than the screen has gets scroll bars as it is first shown, and stands inside the screen.
class SmallScreens : public QObject {
public:
    SmallScreens();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void Fit(QWidget& window);
};

} // namespace tarn
