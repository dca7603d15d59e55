#include "display/WindowSteps.h"

#include "common/keys.h"

#include <QKeyEvent>

namespace tarn {

namespace {

int PlainKeyCode(const QKeyEvent& event) {
    const bool plain =
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    return plain ? keys::KeyCode(event.key()) : keys::kNone;
}

} // namespace

void StepFiles(const Context& m, int rows) {
    if (!m.state.SlideViewing) m.navigation.StepBy(rows, KeepingKeyboard());
}

int HeldKeys::Press(const QKeyEvent& event, bool ready) {
    const int key = PlainKeyCode(event);
    if (!event.isAutoRepeat()) {
        m_down.insert(key);
        m_repeated.erase(key);
        return keys::kNone;
    }
    if (!m_down.count(key) || (key != keys::kUp && key != keys::kDown)) return keys::kNone;
    m_repeated.insert(key);
    return ready ? key : keys::kNone;
}

int HeldKeys::Release(const QKeyEvent& event) {
    const int key = PlainKeyCode(event);
    if (event.isAutoRepeat() || m_down.erase(key) == 0) return keys::kNone;
    return m_repeated.erase(key) > 0 ? keys::kNone : key;
}

} // namespace tarn
