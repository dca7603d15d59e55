// A command that works through many files and lets events in between: while it lives, only its
// cancel button and Esc act, the progress stands in the message line, and the window redraws
// nothing.
#pragma once

#include "desk/Context.h"

#include <QObject>
#include <QPointer>

#include <string>

class QCloseEvent;
class QPushButton;
class QWidget;

namespace tarn {

class BatchRun : public QObject {
public:
    // A modal window brings a cancel button of its own, since the main window's cannot be reached;
    // pressed, it sets BatchCancelled.
    explicit BatchRun(Context& context, QPushButton* ownCancel = nullptr);
    ~BatchRun() override;

    // Shows the progress and lets events in. False when the run is to stop: cancelled by the user,
    // or the program ends.
    bool Step(const std::string& progress) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Context& m;
    QPushButton& m_cancel;
    QPointer<QWidget> m_focusBefore;
};

// Closing a window that a batch depends on cancels the batch instead: true then.
bool CancelsBatch(ProgramState& state, QCloseEvent& event);

} // namespace tarn
