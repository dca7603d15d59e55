#include "desk/batch/BatchRun.h"

#include "platform/EventPump.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>

namespace tarn {

BatchRun::BatchRun(Context& context, QPushButton* ownCancel)
    : m(context), m_cancel(ownCancel ? *ownCancel : *context.controls.BatchCancelButton),
      m_focusBefore(QApplication::focusWidget()) {
    m.shell.ShowFaults({}, {}); // those of the batch before say nothing of this one
    m.state.BatchRuns = true;
    m.state.BatchCancelled = false;
    m_cancel.show();
    m_cancel.raise();
    m_cancel.setFocus();
    qApp->installEventFilter(this);
}

BatchRun::~BatchRun() {
    qApp->removeEventFilter(this);
    m.state.BatchRuns = false;
    // Before the button goes: hiding it would hand the focus to whatever comes next.
    if (m_focusBefore)
        m_focusBefore->setFocus();
    else
        m.shell.FocusPane();
    m_cancel.hide();
}

bool BatchRun::Step(const std::string& progress) const {
    m.shell.ShowMessage(progress);
    m.events.Pump();
    return !m.state.BatchCancelled && !m.events.ProgramEnds();
}

bool BatchRun::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) return false; // the window system's own; its widget comes next
    // A box that the batch itself puts up is to be answered.
    const QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal != m_cancel.window() && static_cast<QWidget*>(watched)->window() == modal)
        return false;
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) m.state.BatchCancelled = true;
        return watched != &m_cancel;
    case QEvent::ShortcutOverride:
        event->accept(); // a key with a shortcut is a plain key now
        return true;
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::ContextMenu:
    case QEvent::Wheel:
    case QEvent::Drop:
        return watched != &m_cancel;
    default:
        return false;
    }
}

bool CancelsBatch(ProgramState& state, QCloseEvent& event) {
    if (state.BatchRuns) {
        state.BatchCancelled = true;
        event.ignore();
    }
    return state.BatchRuns;
}

} // namespace tarn
