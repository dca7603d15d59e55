// The controls of a form and the options that they show: put into the controls, and taken from
// them. One list serves both ways.
#pragma once

#include "platform/QtText.h"
#include "web/ColorBox.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tarn {

template <class Settings> class FormFields {
public:
    void Add(QAbstractButton* box, bool Settings::*field) {
        Add([=](const Settings& s) { box->setChecked(s.*field); },
            [=](Settings& s) { s.*field = box->isChecked(); });
    }
    void Add(QAbstractButton* box, int Settings::*field) {
        Add([=](const Settings& s) { box->setChecked(s.*field != 0); },
            [=](Settings& s) { s.*field = box->isChecked() ? 1 : 0; });
    }
    // A value beyond one of the slider's ends moves that end until the next load: it is kept as it
    // stands.
    void Add(QSlider* slider, int Settings::*field) {
        const int least = slider->minimum();
        const int most = slider->maximum();
        Add(
            [=](const Settings& s) {
                const int value = s.*field; // what listens may write it at once
                slider->setRange(std::min(least, value), std::max(most, value));
                slider->setValue(value);
            },
            [=](Settings& s) { s.*field = slider->value(); });
    }
    // Line breaks, which can be pasted, become blanks: a page keeps each text on a line of its own.
    void Add(QLineEdit* edit, std::string Settings::*field) {
        Add([=](const Settings& s) { edit->setText(ToQt(s.*field)); },
            [=](Settings& s) {
                std::string text = FromQt(edit->text());
                for (char& c : text)
                    if (c == '\r' || c == '\n') c = ' ';
                s.*field = std::move(text);
            });
    }
    void Add(QLineEdit* edit, int Settings::*field) {
        Add([=](const Settings& s) { edit->setText(QString::number(s.*field)); },
            [=](Settings& s) { s.*field = edit->text().toInt(); });
    }
    void Add(QLabel* label, std::string Settings::*field) {
        label->setTextFormat(Qt::PlainText);
        Add([=](const Settings& s) { label->setText(ToQt(s.*field)); },
            [=](Settings& s) { s.*field = FromQt(label->text()); });
    }
    void Add(QLabel* label, int Settings::*field) {
        Add([=](const Settings& s) { label->setText(QString::number(s.*field)); },
            [=](Settings& s) { s.*field = label->text().toInt(); });
    }
    void Add(QComboBox* box, int Settings::*field) {
        Add([=](const Settings& s) { box->setCurrentIndex(s.*field); },
            [=](Settings& s) {
                if (box->currentIndex() >= 0) s.*field = box->currentIndex();
            });
    }
    void Add(ColorBox* box, std::string Settings::*field) {
        Add([=](const Settings& s) { box->SetColor(s.*field); },
            [=](Settings& s) { s.*field = box->Color(); });
    }
    // Buttons of which one at most is on, and which values they stand for: `chosen` gives the
    // button's place, or -1, and `choose` takes it. What was loaded stands, whatever it is, until
    // one of them is clicked or switched.
    void AddChoice(const std::vector<QAbstractButton*>& buttons,
                   const std::function<int(const Settings&)>& chosen,
                   const std::function<void(Settings&, int)>& choose) {
        auto touched = std::make_shared<bool>(false);
        for (QAbstractButton* button : buttons) {
            button->setAutoExclusive(true);
            const auto touch = [touched] { *touched = true; };
            QObject::connect(button, &QAbstractButton::clicked, button, touch);
            QObject::connect(button, &QAbstractButton::toggled, button, touch);
        }
        Add(
            [=](const Settings& s) {
                const int place = chosen(s);
                for (QAbstractButton* button : buttons) button->setAutoExclusive(false);
                for (int i = 0; i < int(buttons.size()); ++i)
                    buttons[std::size_t(i)]->setChecked(i == place);
                for (QAbstractButton* button : buttons) button->setAutoExclusive(true);
                *touched = false;
            },
            [=](Settings& s) {
                for (int i = 0; *touched && i < int(buttons.size()); ++i)
                    if (buttons[std::size_t(i)]->isChecked()) choose(s, i);
            });
    }
    // The same with a flag for each; the first that is set counts.
    void AddChoice(const std::vector<QAbstractButton*>& buttons,
                   const std::vector<bool Settings::*>& flags) {
        AddChoice(
            buttons,
            [=](const Settings& s) {
                for (std::size_t i = 0; i < flags.size(); ++i)
                    if (s.*flags[i]) return int(i);
                return -1;
            },
            [=](Settings& s, int place) {
                for (std::size_t i = 0; i < flags.size(); ++i) s.*flags[i] = int(i) == place;
            });
    }
    // Anything else.
    void Add(std::function<void(const Settings&)> load, std::function<void(Settings&)> store) {
        m_fields.push_back({std::move(load), std::move(store)});
    }

    void Load(const Settings& settings) const {
        for (const Field& field : m_fields) field.load(settings);
    }
    void Store(Settings& settings) const {
        for (const Field& field : m_fields) field.store(settings);
    }

private:
    struct Field {
        std::function<void(const Settings&)> load;
        std::function<void(Settings&)> store;
    };
    std::vector<Field> m_fields;
};

} // namespace tarn
