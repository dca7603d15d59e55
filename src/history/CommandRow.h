// A command as the journal lists it.
#pragma once

#include <cstdint>
#include <string>

namespace tarn {

// The numbers are kept on the disk.
enum class CommandState {
    Running = 0,
    Done = 1,
    Undone = 2,
    Undoing = 3,
    Redoing = 4,
    Final = 5 // done, and nothing of it can be taken back
};

inline bool HasEnded(CommandState state) {
    return state == CommandState::Done || state == CommandState::Undone ||
           state == CommandState::Final;
}

struct CommandRow {
    std::int64_t id = 0;
    std::int64_t began = 0; // seconds since 1970
    std::string what;       // "Delete 'M31.jpg'"
    std::string folder;     // of its first file
    std::int64_t files = 0; // that it changed
    CommandState state = CommandState::Running;
    bool isBrokenOff = false; // its program ended before it did
    bool isWhole = false;     // all of it was planned before it began
};

struct NewCommand {
    std::string what;
    std::string folder; // of its first file
    bool isWhole = false;
};

} // namespace tarn
