// The user's telescopes, cameras and mounts, each with the names by which headers mean them: a
// plain file in the notes folder, line by line "keyword:name:header name:header name", the keywords
// those of the format file. Other lines stay as they are. Texts are UTF-8.
#pragma once

#include "notes/NoteFormats.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

inline constexpr const char* kKitFile = "Kit_List.txt";
inline constexpr std::size_t kLargestKit = 1U << 20U; // bytes

// What a kit has, in the order in which it is offered.
inline constexpr std::array kKitEntries = {NoteEntry::Telescope, NoteEntry::GuideScope,
                                           NoteEntry::Lens,      NoteEntry::Mount,
                                           NoteEntry::Camera,    NoteEntry::Filter};

struct KitItem {
    NoteEntry entry = NoteEntry::Telescope;
    std::string name; // as notes have it
    std::vector<std::string> headerNames;

    bool operator==(const KitItem&) const = default;
};

std::vector<KitItem> ParseKit(std::string_view bytes);

// The file's bytes with these items in place of those that stand there.
std::string KitBytes(std::span<const KitItem> items, std::string_view before);

// "EQMOD HEQ5; My Scope" as a list; blanks around each and empty ones are left out.
std::vector<std::string> HeaderNamesOf(std::string_view typed);

// Why an item cannot be kept; empty when it can.
std::string FaultOf(const KitItem& item);

// The first that a header's text means, by a header name or its own, in any case; null: none.
const KitItem* KitFor(std::span<const KitItem> items, NoteEntry entry, std::string_view written);

} // namespace tarn
