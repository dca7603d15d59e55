// "tarn history", "tarn undo" and "tarn redo": what window and console did to files, listed, taken
// back and done again.
#pragma once

#include "console/Subcommand.h"

#include <cstdint>
#include <optional>

namespace tarn {

extern const Usage kHistoryUsage;
extern const Usage kUndoUsage;
extern const Usage kRedoUsage;

struct PastCommand {
    std::int64_t id = 0;
    std::string utc; // when it began
    std::string what;
    std::int64_t files = 0;
    std::string state; // "done", "undone", "broken off", or "running"
};

struct TurnedCommand {
    bool done = false;
    std::string text; // what happened
};

using PastReader = std::function<std::vector<PastCommand>(std::int64_t most)>;
// Of the command with this id, else of the next.
using CommandTurner = std::function<TurnedCommand(std::optional<std::int64_t> id)>;

// The newest first.
int RunHistory(std::span<const std::string> words, const PastReader& read);
int RunUndo(std::span<const std::string> words, const CommandTurner& undo);
int RunRedo(std::span<const std::string> words, const CommandTurner& redo);

} // namespace tarn
