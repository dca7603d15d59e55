#include "notes/NightNotes.h"

#include "common/codepage.h"
#include "common/paths.h"
#include "common/text.h"
#include "history/Changes.h"
#include "notes/NoteNames.h"

#include <set>

namespace tarn {

NightNotes PlanNightNotes(const Files& files, const std::string& notesFolder,
                          const std::vector<std::string>& pictures, const FactLists& lists,
                          const HfrOfPicture& hfrOf, const std::function<bool(std::size_t)>& goOn) {
    NightNotes plan;
    std::set<std::string> taken; // folded names of notes; pictures that differ by type share one
    std::set<std::string> standing;
    for (const std::string& name :
         files.FileNames(notesFolder).value_or(std::vector<std::string>()))
        standing.insert(FoldCase(name));
    std::size_t done = 0;
    for (const std::string& picture : pictures) {
        if (!goOn(done++)) break;
        const std::string path = NotePath(notesFolder, LastPart(picture));
        if (standing.contains(FoldCase(LastPart(path)))) {
            ++plan.withNote;
            continue;
        }
        const FrameHeader header = ReadFrameHeader(picture, lists.ZoneMinutes());
        std::string text;
        if (header.fault.empty() && header.kind == FrameKind::Light)
            text = NoteOf(header, FactsOf(header, lists.Sources(hfrOf(picture))));
        if (text.empty())
            ++plan.left;
        else if (!taken.insert(FoldCase(LastPart(path))).second)
            ++plan.sharing;
        else
            plan.notes.push_back({picture, path, std::move(text)});
    }
    return plan;
}

std::size_t WriteNightNotes(Changes& changes, const std::vector<NightNote>& notes,
                            const std::function<bool(std::size_t)>& goOn,
                            std::vector<NightNoteFault>& faults) {
    std::vector<Step> steps;
    std::vector<std::optional<std::string>> all;
    std::vector<std::string> misfits(notes.size());
    for (std::size_t i = 0; i < notes.size(); ++i) {
        all.push_back(ToCodePage(notes[i].text, &misfits[i]));
        if (all.back()) steps.push_back(changes.PlanWrite(notes[i].path, all.back()));
    }
    changes.PlanWhole(std::move(steps));
    std::set<std::string> standing; // by now
    if (!notes.empty())
        for (const std::string& name : changes.FileNames(FolderOf(notes.front().path), nullptr)
                                           .value_or(std::vector<std::string>()))
            standing.insert(FoldCase(name));
    std::size_t written = 0;
    for (std::size_t i = 0; i < notes.size() && goOn(i); ++i) {
        std::string why;
        if (!all[i])
            why = "the character '" + misfits[i] + "' has no place in a note";
        else if (standing.contains(FoldCase(LastPart(notes[i].path))) ||
                 changes.Exists(notes[i].path))
            why = "it has a note by now, which stays";
        else if (changes.Write(notes[i].path, *all[i], &why))
            ++written;
        if (!why.empty()) faults.push_back({notes[i].picture, std::move(why)});
    }
    return written;
}

} // namespace tarn
