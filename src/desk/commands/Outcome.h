// What a verb did: whether it was done, and what is to be told of it. Whoever pressed shows the
// texts where they belong; nobody looks into them to learn something.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarn {

// One file that a batch could not work on.
struct FileFault {
    std::string path;
    std::string why; // "No space left on device"
};

struct [[nodiscard]] Outcome {
    bool done = false;
    std::string text;  // for the message line; empty: nothing is to be told
    std::string fault; // the system's own words, for the error text over the picture
    std::vector<FileFault> faults = {}; // of a batch, for its list

    explicit operator bool() const { return done; }
    static Outcome Did(std::string text = {}) { return {true, std::move(text), {}, {}}; }
    static Outcome Refused(std::string text = {}, std::string fault = {}) {
        return {false, std::move(text), std::move(fault), {}};
    }
};

} // namespace tarn
