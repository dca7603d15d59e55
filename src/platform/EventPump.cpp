#include "platform/EventPump.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

namespace tarn {

namespace {

class QtEventPump : public EventPump {
public:
    void Pump() override { QCoreApplication::processEvents(); }
    void Sleep(int milliseconds) override {
        QThread::msleep(static_cast<unsigned long>(milliseconds));
    }
    bool ProgramEnds() const override { return m_ends; }
    void EndProgram() override {
        m_ends = true;
        QCoreApplication::quit();
    }
    void Later(std::function<void()> action) override {
        QTimer::singleShot(0, QCoreApplication::instance(), std::move(action));
    }

private:
    bool m_ends = false;
};

} // namespace

std::unique_ptr<EventPump> MakeEventPump() {
    return std::make_unique<QtEventPump>();
}

} // namespace tarn
