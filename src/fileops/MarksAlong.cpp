#include "fileops/MarksAlong.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>

namespace tarn {

// A picture may go over a place between, and what stood at its new one goes before.
std::vector<MarkBefore> TakeMarksAlong(MarkCommands& marks, const std::vector<Done>& done) {
    std::map<std::string, std::optional<MarkChange>> now;
    std::vector<MarkBefore> before;
    for (const Done& each : done) {
        const auto known = now.find(each.from);
        const auto kept = known != now.end() ? known->second : marks.KeptAside(each.from);
        if (!kept) continue;
        if (each.kind != Done::Kind::ThrownAway) now[each.to] = kept;
        if (each.kind == Done::Kind::Made) continue;
        if (known == now.end())
            before.push_back({each.from, marks.MarkOf(each.from).value_or(Changed(Mark(), *kept))});
        now[each.from] = std::nullopt;
    }
    std::vector<MarkWish> wishes;
    for (const auto& [path, kept] : now) {
        wishes.push_back({path, kept.value_or(MarkChange())});
        const bool stood = std::any_of(before.begin(), before.end(),
                                       [&](const MarkBefore& mark) { return mark.path == path; });
        if (kept && !stood) before.push_back({path, {}}); // where it came to it goes again
    }
    if (!wishes.empty()) marks.SetMarks(wishes);
    return before;
}

} // namespace tarn
