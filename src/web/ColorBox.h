// A button that shows a colour of a page.
#pragma once

#include <QPushButton>

#include <string>

namespace tarn {

class ColorBox : public QPushButton {
public:
    explicit ColorBox(const QString& caption);

    // In the form that pages have it.
    void SetColor(const std::string& htmlColor);
    const std::string& Color() const { return m_color; }

private:
    std::string m_color;
};

// The colour of a page as the toolkit has it.
QColor ColorOf(const std::string& htmlColor);

} // namespace tarn
