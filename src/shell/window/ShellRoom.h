// The window as a whole: panes, pointer, message line, status bar, error text.
#pragma once

#include "shell/Context.h"

class QStatusBar;
class QWidget;

namespace tarn {

class ShellRoom : public ShellCommands {
public:
    ShellRoom(Context& context, QStatusBar& statusBar);
    ~ShellRoom() override;

    void ShowPane(Pane pane) override;
    void FocusPane() override;
    void SetBusy(bool busy) override;
    void ShowMessage(const std::string& text) override;
    void ShowStatus(const std::string& text) override;
    void ShowError(const std::string& text) override;
    void SetListCommands(bool enabled) override;

private:
    QWidget* PaneWidget(Pane pane) const;

    Context& m;
    class QLabel* m_status;
    int m_busy = 0; // busy times within one another
};

} // namespace tarn
