#include "console/HistoryCommands.h"

#include "console/Arguments.h"
#include "console/TableRow.h"

#include <charconv>
#include <cstdio>
#include <limits>

namespace tarn {

namespace {

constexpr OptionRule kHistoryOptions[] = {{"--csv"}, {"--limit", "N"}};
constexpr UsageLine kHistoryLines[] = {{kHistoryOptions, ""}};
constexpr UsageLine kTurnLines[] = {{{}, "[ID]"}};
constexpr int kMost = std::numeric_limits<int>::max();

std::optional<std::int64_t> IdOf(const std::string& word) {
    std::int64_t id = 0;
    const auto [end, fault] = std::from_chars(word.data(), word.data() + word.size(), id);
    if (fault != std::errc() || end != word.data() + word.size() || id < 1) return {};
    return id;
}

int RunTurn(std::span<const std::string> words, const Usage& usage, const CommandTurner& turn) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, {}, fault);
    if (!arguments) return ComplainOfUsage(fault, usage);
    const auto& operands = arguments->Operands();
    if (operands.size() > 1) return ComplainOfUsage("more than one command given", usage);
    const auto id = operands.empty() ? std::nullopt : IdOf(operands.front());
    if (!operands.empty() && !id)
        return ComplainOfUsage("'" + operands.front() + "' is no number of a command", usage);
    const TurnedCommand turned = turn(id);
    std::fprintf(turned.done ? stdout : stderr, "%s\n", turned.text.c_str());
    return turned.done ? kExitSuccess : kExitFailedFile;
}

} // namespace

constinit const Usage kHistoryUsage{"history", kHistoryLines};
constinit const Usage kUndoUsage{"undo", kTurnLines};
constinit const Usage kRedoUsage{"redo", kTurnLines};

int RunHistory(std::span<const std::string> words, const PastReader& read) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kHistoryOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kHistoryUsage);
    if (!arguments->Operands().empty()) return ComplainOfUsage("takes no files", kHistoryUsage);
    int most = kMost;
    if (!arguments->ReadNumber("--limit", 1, kMost, most, fault))
        return ComplainOfUsage(fault, kHistoryUsage);
    const bool csv = arguments->Has("--csv");
    PrintColumnNames(csv, {"id", "utc", "what", "files", "state"});
    for (const PastCommand& past : read(most))
        TableRow(csv)
            .Add(std::to_string(past.id))
            .Add(past.utc)
            .Add(past.what)
            .Add(std::to_string(past.files))
            .Add(past.state)
            .Print();
    return kExitSuccess;
}

int RunUndo(std::span<const std::string> words, const CommandTurner& undo) {
    return RunTurn(words, kUndoUsage, undo);
}

int RunRedo(std::span<const std::string> words, const CommandTurner& redo) {
    return RunTurn(words, kRedoUsage, redo);
}

} // namespace tarn
