// What a subcommand is called and takes, said once: its usage is written from here, its options are
// read by it, and the shell's completion goes by the usage.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarn {

struct OptionRule {
    std::string_view name;       // "--size"
    std::string_view value = {}; // what stands for the word behind it, "N"; empty: there is none
    bool repeats = false;        // may be given more than once, and each counts
    bool excludesNext = false;   // not together with the next one
};

// A line of the usage.
struct UsageLine {
    std::span<const OptionRule> options;
    std::string_view operands;                      // "OUT.pdf FOLDER"
    std::span<const std::string_view> choices = {}; // of the word before the options
};

struct Usage {
    std::string_view name; // of the subcommand
    std::span<const UsageLine> lines;
};

// "tarn info [--date] FILE...", further lines below each other.
std::string TextOf(const Usage& usage);

} // namespace tarn
