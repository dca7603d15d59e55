#include "console/decoders/Past.h"

#include "common/paths.h"
#include "console/decoders/OpenHistory.h"
#include "history/Changes.h"
#include "history/CommandText.h"
#include "marks/MarkFiles.h"

namespace tarn {

namespace {

bool GoesOn(std::size_t) {
    return true;
}

// A mark that cannot be written is told with the rest.
TurnedCommand Ended(UndoResult result, Files& files) {
    for (const MarkBack& each : result.marks) {
        std::string error;
        const auto sidecars = SidecarsIn(files, FolderOf(each.path), &error);
        const WrittenMark written =
            sidecars ? WriteMark(files, each.path, *sidecars, each.change) : WrittenMark();
        if (sidecars && written.done) continue;
        result.done = false;
        result.text += "; its mark could not be set: " + each.path + " - " +
                       (sidecars ? written.error : error);
    }
    return {result.done, result.text};
}

} // namespace

std::vector<PastCommand> ReadPast(std::int64_t most) {
    OpenHistory open;
    std::vector<PastCommand> all;
    for (const CommandRow& row : open.history.List({most}))
        all.push_back({row.id, UtcText(row.began), row.what, row.files, StateText(row)});
    return all;
}

TurnedCommand UndoPast(std::optional<std::int64_t> id) {
    OpenHistory open;
    if (id) return Ended(open.history.UndoOf(*id, GoesOn), *open.files);
    if (!open.history.NextToUndo()) return {false, "Nothing to undo"};
    return Ended(open.history.Undo(GoesOn), *open.files);
}

std::vector<SetDate> SetFileDates(const std::vector<SetDate>& wanted) {
    std::vector<SetDate> all = wanted;
    if (all.empty()) return all;
    OpenHistory open;
    Changes changes(open.history, "File dates of " + std::to_string(all.size()) +
                                      (all.size() == 1 ? " file" : " files"));
    std::vector<Step> plan;
    for (SetDate& each : all) {
        each.path = open.files->Absolute(each.path);
        plan.push_back(changes.PlanTimes(each.path, each.seconds));
    }
    changes.PlanWhole(std::move(plan));
    for (std::size_t i = 0; i < all.size(); ++i) {
        changes.SetTimes(all[i].path, all[i].seconds, &all[i].error);
        all[i].path = wanted[i].path;
    }
    return all;
}

TurnedCommand RedoPast(std::optional<std::int64_t> id) {
    OpenHistory open;
    if (id) return Ended(open.history.RedoOf(*id, GoesOn), *open.files);
    if (!open.history.NextToRedo()) return {false, "Nothing to do again"};
    return Ended(open.history.Redo(GoesOn), *open.files);
}

} // namespace tarn
