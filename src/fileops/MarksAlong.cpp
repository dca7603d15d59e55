#include "fileops/MarksAlong.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tarn {

namespace {

// What is to be kept aside of each path; none: nothing any more.
using Aside = std::map<std::string, std::optional<MarkChange>>;

// A picture may go over a place between, and what stood at its new one goes before.
Aside WhereTheyGo(MarkCommands& marks, const std::vector<Step>& done) {
    Aside now;
    for (const Step& each : done) {
        const bool goes = each.kind == StepKind::Renamed || each.kind == StepKind::Made ||
                          each.kind == StepKind::ThrownAway;
        const auto known = now.find(each.from);
        const auto kept = !goes                ? std::nullopt
                          : known != now.end() ? known->second
                                               : marks.KeptAside(each.from);
        if (!kept) continue;
        if (each.kind != StepKind::ThrownAway) now[each.to] = kept;
        if (each.kind != StepKind::Made) now[each.from] = std::nullopt;
    }
    return now;
}

} // namespace

std::vector<MarkMove> MarkMoves(MarkCommands& marks, const std::vector<Step>& done) {
    std::vector<MarkMove> moves;
    for (const auto& [path, kept] : WhereTheyGo(marks, done)) {
        const auto stood = marks.KeptAside(path);
        moves.push_back(
            {path, stood ? marks.MarkOf(path).value_or(Changed({}, *stood)) : Mark(), kept});
    }
    return moves;
}

void TakeMarksAlong(MarkCommands& marks, Changes& changes) {
    std::vector<MarkWish> wishes;
    for (const MarkMove& move : MarkMoves(marks, changes.Done())) {
        const Mark after = move.kept ? Changed({}, *move.kept) : Mark();
        std::string ignored; // without a history it goes along all the same
        if (move.before != after) changes.Marked(move.path, move.before, after, &ignored);
        wishes.push_back({move.path, move.kept.value_or(MarkChange())});
    }
    if (!wishes.empty()) marks.SetMarks(wishes);
}

} // namespace tarn
