// The life of a room. The roof calls each step for every room, in the order in which the house
// lists them, and knows no more of them than this.
#pragma once

#include <string>

namespace tarn {

class Room {
public:
    virtual ~Room() = default;
    // Once, before anything is shown: the controls get their commands.
    virtual void ConnectControls() = 0;
    // The settings have been read; no file is selected yet.
    virtual void ShowSettings() {}
    // The window stands with its first picture.
    virtual void Started() {}
    // The values of the room's windows go onto the desk: the settings are about to be written.
    virtual void KeepValues() {}
    // Whether the program may end; if not, `why` says what would be lost with it.
    virtual bool MayEnd(std::string& why) {
        (void)why;
        return true;
    }
    // The program ends: what the room changed for a time is put back, before the settings are
    // written.
    virtual void BreakOff() {}
    // The settings are written; the last step.
    virtual void End() {}
};

} // namespace tarn
