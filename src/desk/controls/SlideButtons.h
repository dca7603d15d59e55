// The commands that start a show.
#pragma once

#include "desk/controls/MainControls.h"

#include <array>

namespace tarn {

inline std::array<QPushButton*, 7> SlideButtons(const MainControls& c) {
    return {c.SlideButton,    c.Slides4Button,  c.Slides4LButton, c.Slides2Button,
            c.SlidesC2Button, c.Slides2VButton, c.SlidesC2VButton};
}

inline void EnableSlideButtons(const MainControls& c, bool enabled) {
    for (QPushButton* button : SlideButtons(c)) SetEnabled(button, enabled);
    SetEnabled(c.SlidesFullButton, enabled);
}

} // namespace tarn
