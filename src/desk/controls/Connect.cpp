#include "desk/controls/MainControls.h"

#include <QAction>
#include <QCheckBox>
#include <QPushButton>

namespace tarn {

namespace {

template <typename Control> void Enable(Control* control, bool enabled) {
    if (control->property("hasCommand").toBool()) control->setEnabled(enabled);
}

template <typename Signal, typename Control>
void ConnectTo(Control* control, Signal signal, std::function<void()> command) {
    control->setProperty("hasCommand", true);
    QObject::connect(control, signal, control, [command = std::move(command)] { command(); });
}

} // namespace

void Connect(QPushButton* button, std::function<void()> command) {
    ConnectTo(button, &QPushButton::clicked, std::move(command));
    button->setEnabled(true);
}

void Connect(QCheckBox* box, std::function<void()> command) {
    ConnectTo(box, &QCheckBox::toggled, std::move(command));
    box->setEnabled(true);
}

void Connect(QAction* entry, std::function<void()> command) {
    ConnectTo(entry, &QAction::triggered, std::move(command));
    entry->setEnabled(entry->property("startsEnabled").toBool());
}

void SetEnabled(QPushButton* button, bool enabled) {
    Enable(button, enabled);
}
void SetEnabled(QCheckBox* box, bool enabled) {
    Enable(box, enabled);
}
void SetEnabled(QAction* entry, bool enabled) {
    Enable(entry, enabled);
}

std::vector<std::string> Unconnected(const MainControls& c) {
    std::vector<std::string> names;
    const auto look = [&names](const QObject* command) {
        if (command && !command->property("hasCommand").toBool())
            names.push_back(command->objectName().toStdString());
    };
    const auto lookAt = [&](const auto& member) {
        using Member = std::decay_t<decltype(member)>;
        if constexpr (std::is_same_v<Member, QPushButton*> || std::is_same_v<Member, QCheckBox*>)
            look(member);
        else if constexpr (!std::is_pointer_v<Member>)
            for (const auto* each : member) look(each);
    };
#define TARN_CONTROL(type, name, caption, tooltip, place, icon) lookAt(c.name);
#define TARN_CONTROL_ROW(type, name, index, caption, tooltip, place, icon) look(c.name[index]);
#include "desk/controls/controls.def"
#undef TARN_CONTROL
#undef TARN_CONTROL_ROW
#define TARN_MENU(in, name, caption)
#define TARN_POPUP(name)
#define TARN_ENTRY(in, name, caption, key, shortcut, flags) look(c.name);
#define TARN_ROW(in, name, index, caption, flags) look(c.name[index]);
#define TARN_LINE(in)
#include "desk/controls/menus.def"
    return names;
}

} // namespace tarn
