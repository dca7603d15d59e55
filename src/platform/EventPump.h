// Where long work and loops let events in. The real one is the toolkit's loop; a scripted one plays
// keys and clicks at chosen rounds.
#pragma once

#include <functional>
#include <memory>

namespace tarn {

class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void Pump() = 0;
    virtual void Sleep(int milliseconds) = 0;
    virtual bool ProgramEnds() const = 0;
    virtual void EndProgram() = 0;

    // Runs `action` once, when the program next waits for events.
    virtual void Later(std::function<void()> action) = 0;
};

std::unique_ptr<EventPump> MakeEventPump();

} // namespace tarn
