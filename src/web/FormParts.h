// What both forms make their rows of.
#pragma once

#include "widgets/Named.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>

namespace tarn {

// A row of widgets with room behind it.
inline QHBoxLayout* Row(std::initializer_list<QWidget*> widgets) {
    auto* row = new QHBoxLayout();
    for (QWidget* widget : widgets) row->addWidget(widget);
    row->addStretch();
    return row;
}

inline QLabel* Caption(const char* text, QWidget* buddy = nullptr) {
    auto* label = new QLabel(QString::fromLatin1(text));
    label->setBuddy(buddy);
    return label;
}

// A slider whose label shows its value.
inline QSlider* MakeSlider(const char* name, const char* spoken, int least, int most,
                           QLabel* label) {
    auto* slider = Named(new QSlider(Qt::Horizontal), name, spoken);
    slider->setRange(least, most);
    slider->setPageStep(1);
    constexpr int kLabelWidth = 24; // logical pixels
    label->setMinimumWidth(kLabelWidth);
    label->setText(QString::number(slider->value()));
    QObject::connect(slider, &QSlider::valueChanged, label,
                     [label](int value) { label->setText(QString::number(value)); });
    return slider;
}

// A frame with a title, named, whose rows stand one below the other.
inline QVBoxLayout* MakeFrame(QWidget*& frame, const char* name, const char* title) {
    frame = Named(new QGroupBox(QString::fromLatin1(title)), name);
    auto* rows = new QVBoxLayout(frame);
    return rows;
}

} // namespace tarn
