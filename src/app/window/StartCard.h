// The first steps in the pane while it is empty, or at the very first start. It never takes the
// keyboard by itself.
#pragma once

#include "app/window/FirstSteps.h"

#include <QObject>
#include <QScrollArea>

#include <functional>
#include <string>

namespace tarn {

class StartCard : public QObject {
public:
    explicit StartCard(Context& context); // once the commands are connected

    // At the first start it stands over the first picture, until another comes or it is closed.
    void Welcome();

    void Follow(); // shows or hides it, as the pane now is

    std::function<void()> onAnswer; // as FirstSteps has it

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool IsPaneEmpty() const;
    void Place();

    Context& m;
    FirstSteps* m_steps;
    QScrollArea* m_card; // the window's; in a small pane it scrolls
    bool m_welcomes = false;
    std::string m_welcomeFile; // that stands below
};

} // namespace tarn
