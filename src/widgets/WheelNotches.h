// How far a wheel was turned.
#pragma once

class QWheelEvent;

namespace tarn {

// Whole notches of a wheel; a touchpad sends many parts of one.
class WheelNotches {
public:
    // Since the last call: above 0 away from the user.
    int Turned(const QWheelEvent& event);

private:
    int m_rest = 0;
};

} // namespace tarn
