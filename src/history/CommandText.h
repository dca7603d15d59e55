// Commands and their steps in words, for window and console.
#pragma once

#include "history/CommandRow.h"
#include "history/Step.h"

#include <span>
#include <string>

namespace tarn {

// "done", "undone", "broken off", or "running".
std::string StateText(const CommandRow& row);

// "2026-11-25T21:03:00Z".
std::string UtcText(std::int64_t seconds);

// "renamed a.jpg to b.jpg", "copied a.jpg to /copies/a.jpg", and what is not so any more behind.
std::string StepText(const Step& step);

// With a line of names first: id, utc, what, folder, files, state.
std::string CommandsAsCsv(std::span<const CommandRow> rows);

} // namespace tarn
