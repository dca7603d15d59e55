// Takes the input for a note, for a format file and for the drafts of an earlier run.
#include "Demand.h"
#include "Input.h"

#include "common/codepage.h"
#include "notes/Drafts.h"
#include "notes/NoteFormats.h"
#include "notes/NoteText.h"

using tarn::fuzz::Demand;

namespace {

void TryNote(const std::string& bytes) {
    Demand(tarn::ToCodePage(tarn::FromCodePage(bytes)) == bytes);
    const auto shown = tarn::WithoutOldMarks(bytes);
    Demand(shown.size() == bytes.size() || shown.size() + 4 == bytes.size());
    const auto repaired = tarn::WithoutQuotes(bytes);
    Demand(!repaired || repaired->size() < bytes.size());
}

void TryFormats(const std::string& bytes) {
    tarn::FormatLists lists;
    tarn::LoadFormats(lists, bytes, {2026, 11, 24, 20, 0, 0});
    tarn::NoteComposition note;
    tarn::EntryTicks ticks{};
    ticks.fill(true);
    for (std::size_t i = 0; i < tarn::kNoteEntries; ++i)
        note.entries[i] = lists[i].empty() ? "" : lists[i].back();
    tarn::ReadBack(bytes, ticks);
    tarn::FirstLines(bytes, 3);
    // What was composed comes back, but for the guide scope, unless a value broke its line.
    for (const auto& [entry, value] : tarn::ReadBack(tarn::ComposeNote(note), ticks))
        Demand(value == *note.entries[static_cast<std::size_t>(entry)]);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes = tarn::fuzz::Input(data, size).Rest();
    TryNote(bytes);
    TryFormats(bytes);
    const auto drafts = tarn::UnpackDrafts(bytes);
    Demand(tarn::UnpackDrafts(tarn::PackDrafts(drafts)) == drafts);
    return 0;
}
