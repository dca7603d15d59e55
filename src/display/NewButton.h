// A button of the small windows beside the picture: the return key presses none.
#pragma once

#include <QPushButton>

namespace tarn {

inline QPushButton* NewButton(const char* name, const char* caption, const char* tooltip) {
    auto* button = new QPushButton(QString::fromUtf8(caption));
    button->setObjectName(QString::fromUtf8(name));
    button->setToolTip(QString::fromUtf8(tooltip));
    button->setAutoDefault(false);
    return button;
}

} // namespace tarn
