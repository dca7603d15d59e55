// Shows a page in a window of the program, without scripts.
#pragma once

#include <string>

class QWidget;

namespace tarn {

void ShowPageWindow(QWidget& parent, const std::string& path);

} // namespace tarn
