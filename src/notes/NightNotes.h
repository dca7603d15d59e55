// Notes for the pictures of a night that have none, as their headers tell them. No widgets.
#pragma once

#include "notes/FilledFacts.h"
#include "platform/Files.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

class Changes;

struct NightNote {
    std::string picture; // path
    std::string path;    // of the note to be written
    std::string text;    // UTF-8
};

struct NightNotes {
    std::vector<NightNote> notes;
    std::size_t withNote = 0; // that have one already
    std::size_t sharing = 0;  // whose note is that of another of these
    std::size_t left = 0;     // darks, flats, bias, and what tells nothing
};

// Half-flux radius of a picture's stars, pixels, where it was measured.
using HfrOfPicture = std::function<std::optional<double>(const std::string& path)>;

// Of these pictures; any thread. False of `goOn`, asked with the count read, ends it early.
NightNotes PlanNightNotes(const Files& files, const std::string& notesFolder,
                          const std::vector<std::string>& pictures, const FactLists& lists,
                          const HfrOfPicture& hfrOf, const std::function<bool(std::size_t)>& goOn);

struct NightNoteFault {
    std::string path;
    std::string why;
};

// Where a note has come up meanwhile, it stays. The number of notes written.
std::size_t WriteNightNotes(Changes& changes, const std::vector<NightNote>& notes,
                            const std::function<bool(std::size_t)>& goOn,
                            std::vector<NightNoteFault>& faults);

} // namespace tarn
