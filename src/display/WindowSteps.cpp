#include "display/WindowSteps.h"

#include "common/keys.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace tarn {

namespace {

constexpr int kNotch = 120;

int PlainKeyCode(const QKeyEvent& event) {
    const bool plain =
        !(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    return plain ? keys::KeyCode(event.key()) : keys::kNone;
}

} // namespace

int HeldKeys::Press(const QKeyEvent& event, bool ready) {
    const int key = PlainKeyCode(event);
    if (!event.isAutoRepeat()) {
        m_key = key;
        m_repeated = false;
        return keys::kNone;
    }
    if (key != m_key || (key != keys::kUp && key != keys::kDown)) return keys::kNone;
    m_repeated = true;
    return ready ? key : keys::kNone;
}

int HeldKeys::Release(const QKeyEvent& event) {
    const int key = PlainKeyCode(event);
    if (event.isAutoRepeat() || key != m_key) return keys::kNone;
    m_key = keys::kNone;
    return m_repeated ? keys::kNone : key;
}

int WheelNotches::Turned(const QWheelEvent& event) {
    const int turned = event.angleDelta().y();
    if ((turned > 0) != (m_rest > 0)) m_rest = 0; // the other way begins anew
    m_rest += turned;
    const int notches = m_rest / kNotch;
    m_rest -= notches * kNotch;
    return notches;
}

} // namespace tarn
