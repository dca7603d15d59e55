// The facts of a note as the picture's own header has them, or as the kit list names what the
// header means, each with where it came from.
#pragma once

#include "notes/KitList.h"
#include "sky/headers/FrameHeader.h"
#include "sky/place/SiteList.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tarn {

struct FilledFact {
    std::string value;
    std::string source; // "header", "kit list, for 'EQMOD HEQ5'"

    bool operator==(const FilledFact&) const = default;
};
using FilledFacts = std::array<std::optional<FilledFact>, kNoteEntries>;

struct FactSources {
    std::span<const KitItem> kit;
    std::span<const NamedSite> sites;
    std::string otherwise;    // name of the site of pictures that do not say theirs; empty: none
    std::size_t dateForm = 0; // of DateEntries
    // Of its stars, pixels, where it was measured: it goes behind the exposure.
    std::optional<double> hfr = {};
};

// The user's lists as they are kept.
struct FactLists {
    std::vector<KitItem> kit;
    std::vector<NamedSite> sites;
    std::string otherwise;
    std::size_t dateForm = 0;

    FactSources Sources(std::optional<double> hfr = {}) const {
        return {kit, sites, otherwise, dateForm, hfr};
    }
    std::optional<int> ZoneMinutes() const; // of pictures that do not say theirs
};

// What the header does not say is none.
FilledFacts FactsOf(const FrameHeader& header, const FactSources& sources);

// A note of these facts alone, the object in front; empty where nothing is known.
std::string NoteOf(const FrameHeader& header, const FilledFacts& facts);

} // namespace tarn
