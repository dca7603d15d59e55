#include "widgets/WheelNotches.h"

#include <QWheelEvent>

namespace tarn {

namespace {

constexpr int kNotch = 120;

} // namespace

int WheelNotches::Turned(const QWheelEvent& event) {
    const int turned = event.angleDelta().y();
    if ((turned > 0) != (m_rest > 0)) m_rest = 0; // the other way begins anew
    m_rest += turned;
    const int notches = m_rest / kNotch;
    m_rest -= notches * kNotch;
    return notches;
}

} // namespace tarn
