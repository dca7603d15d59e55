// The program's application object: what is thrown while an event is worked at ends that event and
// is told, not the program.
#pragma once

#include <QApplication>

#include <functional>
#include <string>

namespace tarn {

class Application : public QApplication {
public:
    using QApplication::QApplication;

    // Gets the text of what was thrown; before it is set that goes to the error output.
    std::function<void(const std::string& fault)> onThrown;

    bool notify(QObject* receiver, QEvent* event) override;

    // Work that no event has begun, the same way. False when something was thrown.
    bool Keep(const std::function<void()>& work);

private:
    void Tell() noexcept;
};

} // namespace tarn
