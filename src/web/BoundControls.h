// The controls of a form, each made together with the option that it shows.
#pragma once

#include "web/FormFields.h"
#include "web/FormParts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QIntValidator>
#include <QRadioButton>

#include <functional>
#include <string>
#include <vector>

namespace tarn {

template <class Settings> class BoundControls : public FormFields<Settings> {
public:
    using FormFields<Settings>::Add;

    QCheckBox* Check(const char* name, const char* caption, int Settings::*field) {
        auto* box = Named(new QCheckBox(QString::fromLatin1(caption)), name);
        Add(box, field);
        return box;
    }
    QLineEdit* Edit(const char* name, const char* spoken, std::string Settings::*field) {
        auto* edit = Named(new QLineEdit(), name, spoken);
        Add(edit, field);
        return edit;
    }
    template <class Type>
    QLineEdit* Number(const char* name, const char* spoken, int least, int width,
                      Type Settings::*field) {
        constexpr int kMost = 32767; // pixels of a picture's side
        auto* edit = Named(new QLineEdit(), name, spoken);
        edit->setValidator(new QIntValidator(least, kMost, edit));
        edit->setMaximumWidth(width);
        Add(edit, field);
        return edit;
    }
    // A row of caption, slider and value.
    QSlider* Slider(QVBoxLayout& to, const char* name, const char* label, const char* caption,
                    int least, int most, int Settings::*field) {
        QSlider* slider = SliderRow(to, name, label, caption, least, most);
        Add(slider, field);
        return slider;
    }
    // What lies beyond an end means the same as the end.
    void EndingSlider(QVBoxLayout& to, const char* name, const char* label, const char* caption,
                      int least, int most, int Settings::*field) {
        QSlider* slider = SliderRow(to, name, label, caption, least, most);
        Add([=](const Settings& s) { slider->setValue(s.*field); },
            [=](Settings& s) { s.*field = slider->value(); });
    }
    struct ColorOption {
        const char* caption;
        std::string Settings::*field;
    };
    // Two beside one another; each box asks by `choose`.
    std::vector<ColorBox*> Colors(QVBoxLayout& to, const char* name,
                                  const std::vector<ColorOption>& options,
                                  const std::function<void(ColorBox&)>& choose) {
        auto* grid = new QGridLayout();
        std::vector<ColorBox*> boxes;
        for (const ColorOption& option : options) {
            const int place = static_cast<int>(boxes.size());
            auto* box = new ColorBox(QString::fromLatin1(option.caption));
            box->setObjectName(QStringLiteral("%1_%2").arg(QString::fromLatin1(name)).arg(place));
            grid->addWidget(box, place / 2, place % 2);
            QObject::connect(box, &QPushButton::clicked, box, [box, choose] { choose(*box); });
            Add(box, option.field);
            boxes.push_back(box);
        }
        to.addLayout(grid);
        return boxes;
    }
    // A name and a size that a dialog chooses.
    struct FontLabels {
        QLabel* name;
        QLabel* points;
    };
    FontLabels Font(std::string Settings::*name, int Settings::*points) {
        const FontLabels font{Named(new QLabel(), "FontLabel"), Named(new QLabel(), "FsizeLabel")};
        Add(font.name, name);
        Add(font.points, points);
        return font;
    }

private:
    static QSlider* SliderRow(QVBoxLayout& to, const char* name, const char* label,
                              const char* caption, int least, int most) {
        auto* value = Named(new QLabel(), label);
        QSlider* slider = MakeSlider(name, caption, least, most, value);
        to.addLayout(Row({Caption(caption, slider), slider, value}));
        return slider;
    }
};

// Radio buttons of which one is on, in a widget of their own.
inline QWidget* Together(std::initializer_list<QWidget*> buttons) {
    auto* together = new QWidget();
    auto* row = Row(buttons);
    row->setContentsMargins({});
    together->setLayout(row);
    return together;
}

inline QRadioButton* Choice(const char* name, const char* caption) {
    return Named(new QRadioButton(QString::fromLatin1(caption)), name);
}

} // namespace tarn
