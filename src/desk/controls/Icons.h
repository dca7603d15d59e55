// Drawings of the buttons, in the colour of the text around them, so that they show on light and
// dark desktops alike.
#pragma once

#include <QString>

class QAbstractButton;

namespace tarn {

// Gives the button its drawing ("icons/NAME.svg") now and whenever the palette changes. Without the
// file the caption stands alone.
void SetButtonIcon(QAbstractButton& button, const QString& name);

} // namespace tarn
