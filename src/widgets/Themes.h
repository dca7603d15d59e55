// The colours of the whole program: the desktop's, dark ones, or red ones that spare the night eye.
#pragma once

#include <QColor>
#include <QImage>

namespace tarn {

enum class Theme { Desktop, Dark, Red }; // in the order of the setting

// Gives every window its colours, those that are up and those to come.
void ApplyTheme(Theme theme);
Theme CurrentTheme();

// A colour that is fixed, as the theme shows it: under the red one its light in red alone.
QColor Themed(const QColor& colour);
QImage Themed(const QImage& picture);

} // namespace tarn
