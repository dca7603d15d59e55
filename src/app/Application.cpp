#include "app/Application.h"

#include "common/worker.h"

#include <cstdio>

namespace tarn {

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (...) {
        Tell();
        return false;
    }
}

bool Application::Keep(const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (...) {
        Tell();
        return false;
    }
}

// In a catch block. Memory may be too short for a message, too.
void Application::Tell() noexcept {
    try {
        const std::string fault = ThrownText();
        if (onThrown)
            onThrown(fault);
        else
            std::fprintf(stderr, "tarn-view: %s\n", fault.c_str());
    } catch (...) {
        std::fputs("tarn-view: Not enough memory\n", stderr);
    }
}

} // namespace tarn
