// The window as a whole: panes, pointer, message line, status bar, error text.
#pragma once

#include "desk/Context.h"

#include <QCursor>
#include <QPixmap>

#include <memory>
#include <vector>

class QMainWindow;
class QWidget;

namespace tarn {

class FaultList;
class frmHelp;

class ShellRoom : public ShellCommands {
public:
    ShellRoom(Context& context, QMainWindow& window);
    ~ShellRoom() override;

    void FocusPane() override;
    void ShowFileTexts() override;
    void SetBusy(bool busy) override;
    void SetDeletePointer(bool deletes) override;
    void ShowMessage(const std::string& text) override;
    void ShowIfNoMessage(const std::string& text) override;
    void ShowFaults(const std::string& text, const std::vector<FileFault>& faults) override;
    void ShowStatus(const std::string& text) override;
    void ShowError(const std::string& text) override;
    void SetListCommands(bool enabled) override;
    void ShowHelpPage(int page) override;
    void SetMainShown(bool shown) override;
    bool MainMinimised() override;
    void SetMainMinimised(bool minimised) override;

private:
    QWidget* PaneOf(FileKind kind) const;
    void ShowPane(FileKind before);
    void PushPointer(bool push, const QCursor& pointer);

    Context& m;
    QMainWindow& m_window;
    std::unique_ptr<frmHelp> m_help;     // made when it is first asked for
    std::unique_ptr<FaultList> m_faults; // the same
    class QLabel* m_status;
    std::vector<bool> m_pointers; // within one another; whether each is shown
    QPixmap m_deletePointer;
};

} // namespace tarn
