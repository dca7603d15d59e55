// The built program, run as a shell runs it.
#pragma once

#include <array>
#include <cstdio>
#include <string>

#include <sys/wait.h>

namespace tarn::testing {

struct Outcome {
    int status = -1;
    std::string out; // standard output, and standard error behind it
};

inline Outcome Tarn(const std::string& words) {
    Outcome outcome;
    const std::string command = std::string(TARN_PROGRAM) + " " + words + " 2>&1";
    std::FILE* pipe = ::popen(command.c_str(), "r"); // NOLINT(cert-env33-c)
    if (pipe == nullptr) return outcome;
    std::array<char, 4096> part{};
    while (const std::size_t count = std::fread(part.data(), 1, part.size(), pipe)) {
        outcome.out.append(part.data(), count);
    }
    outcome.status = WEXITSTATUS(::pclose(pipe));
    return outcome;
}

inline bool Has(const Outcome& outcome, const std::string& part) {
    return outcome.out.find(part) != std::string::npos;
}

} // namespace tarn::testing
