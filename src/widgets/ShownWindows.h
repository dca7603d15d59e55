// What is done for every window of the program (their names begin with "frm") as it is shown.
#pragma once

#include <QObject>
#include <QPointer>

#include <vector>

class QWidget;

namespace tarn {

// While it lives: contents that need more than the screen has get scroll bars, and the window
// stands inside the screen; parts that the toolkit makes by itself get names for screen readers.
class ShownWindows : public QObject {
public:
    ShownWindows();
    void HideAll(); // those that were ever shown, the main window last

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void Fit(QWidget& window);
    static void NameParts(const QWidget& window);

    std::vector<QPointer<QWidget>> m_windows; // in the order in which they were first shown
};

} // namespace tarn
