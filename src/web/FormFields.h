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
#include <string>
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
    // A value beyond one of the slider's ends moves that end: it is kept as it stands.
    void Add(QSlider* slider, int Settings::*field) {
        Add(
            [=](const Settings& s) {
                slider->setRange(std::min(slider->minimum(), s.*field),
                                 std::max(slider->maximum(), s.*field));
                slider->setValue(s.*field);
            },
            [=](Settings& s) { s.*field = slider->value(); });
    }
    void Add(QLineEdit* edit, std::string Settings::*field) {
        Add([=](const Settings& s) { edit->setText(ToQt(s.*field)); },
            [=](Settings& s) { s.*field = FromQt(edit->text()); });
    }
    void Add(QLineEdit* edit, int Settings::*field) {
        Add([=](const Settings& s) { edit->setText(QString::number(s.*field)); },
            [=](Settings& s) { s.*field = edit->text().toInt(); });
    }
    void Add(QLabel* label, std::string Settings::*field) {
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
