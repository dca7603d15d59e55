#include "widgets/ElidedLabel.h"

#include "platform/QtText.h"

#include <QPainter>
#include <QStyle>

namespace tarn {

namespace {

constexpr int kLeastDigits = 12;

} // namespace

ElidedLabel::ElidedLabel() {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::SetText(const std::string& text) {
    setText(ToQt(text));
    setToolTip(ToToolTip(text));
}

QSize ElidedLabel::minimumSizeHint() const {
    return {kLeastDigits * fontMetrics().horizontalAdvance(QLatin1Char('0')),
            QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect inside = contentsRect();
    style()->drawItemText(
        &painter, inside, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
        fontMetrics().elidedText(text(), Qt::ElideMiddle, inside.width()), QPalette::WindowText);
}

} // namespace tarn
