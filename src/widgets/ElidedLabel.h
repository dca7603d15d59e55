// One line of text, a path as a rule, that ends where its room does: cut in the middle, whole in
// the tooltip.
#pragma once

#include <QLabel>

#include <string>

namespace tarn {

class ElidedLabel : public QLabel {
public:
    ElidedLabel();

    void SetText(const std::string& text);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tarn
