// The ten facts of a formatted note: their captions, the lists they are chosen from, the file that
// fills the lists, and the note's lines composed and read back. Texts are UTF-8, CR LF at line
// ends.
#pragma once

#include "common/dates.h"
#include "platform/Files.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarn {

enum class NoteEntry {
    Telescope,
    GuideScope,
    Lens,
    Mount,
    Camera,
    Filter,
    Exposure,
    Processing,
    Location,
    Date,
};
inline constexpr std::size_t kNoteEntries = 10;

// Caption, keyword of the file and label in the note in one; the name that its controls end in.
struct NoteEntryRow {
    const char* caption;
    const char* controlName;
    const char* tooltip;
    std::vector<std::string> defaults;
};
const std::array<NoteEntryRow, kNoteEntries>& NoteEntryRows();

using FormatLists = std::array<std::vector<std::string>, kNoteEntries>;

// The entries of a format file, line by line "keyword:value", in file order. What is no such line
// is passed over: without a colon, with an unknown keyword, longer than 1000 bytes, not a text.
FormatLists ParseFormats(std::string_view bytes);

// Fills the lists as a load does: from the file's bytes, or, without a file, with the built-in
// entries. The filters stay and get the file's behind them. `now` gives the dates.
void LoadFormats(FormatLists& lists, const std::optional<std::string>& bytes, const DateTime& now);

// The present moment in the six forms that the date list offers.
std::vector<std::string> DateEntries(const DateTime& now);

// The bytes of the user's format file. Where none stands, the program's own is put there first.
std::optional<std::string> ReadFormatFile(Files& files, const std::string& path,
                                          const std::string& programsOwn);

// A note: the first lines if there are any to take, then one line for each entry that is ticked.
struct NoteComposition {
    std::optional<std::string> firstLines;
    std::array<std::optional<std::string>, kNoteEntries> entries; // none: not ticked
};
std::string ComposeNote(const NoteComposition& composition);

// Values of the labelled lines of a note, in their order. The guide scope is not read back, and the
// location is taken by the lens's tick.
using EntryTicks = std::array<bool, kNoteEntries>;
std::vector<std::pair<NoteEntry, std::string>> ReadBack(std::string_view note,
                                                        const EntryTicks& ticks);

// The first n lines, at least one, no more than there are.
std::string FirstLines(std::string_view note, int n);

} // namespace tarn
