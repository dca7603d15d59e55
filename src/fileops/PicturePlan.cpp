#include "fileops/PicturePlan.h"

#include "common/paths.h"
#include "common/patterns.h"
#include "common/text.h"
#include "history/Rehearsal.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr std::size_t kLongestName = 255; // bytes

// One that cannot be read is no empty one: bringing it along will say why it cannot be.
bool HasBytes(const Files& files, const std::string& path) {
    const auto first = files.Read(path, 1);
    return !first || !first->empty();
}

bool TakeBack(Changes& changes) {
    std::string ignored; // the first fault is the one to tell
    changes.TakeBack(&ignored);
    return false;
}

} // namespace

DeletePlan PlanDelete(Belongings& belongings, const std::string& path, bool withNote) {
    DeletePlan plan{path, belongings.Of(path)};
    if (!withNote)
        std::erase_if(plan.along,
                      [](const Belonging& each) { return each.kind == BelongingKind::Note; });
    return plan;
}

void PlanThrow(const DeletePlan& plan, Changes& changes) {
    std::vector<Step> steps{changes.PlanThrow(plan.path)};
    for (const Belonging& each : plan.along)
        if (each.sharedWith.empty()) steps.push_back(changes.PlanThrow(each.path));
    changes.PlanWhole(std::move(steps));
}

bool PlanThrows(const std::vector<std::string>& paths, const NotesPlace& notes, bool withNotes,
                Changes& changes, const PlanGoesOn& goesOn) {
    Rehearsal rehearsal(changes);
    Belongings belongings(rehearsal.Disk(), notes);
    std::size_t number = 0;
    for (const std::string& path : paths) {
        if (!goesOn(++number)) return false;
        const DeletePlan plan = PlanDelete(belongings, path, withNotes);
        if (rehearsal.Command().ThrowAway(path, nullptr)) ThrowAlong(plan, rehearsal.Command());
    }
    changes.PlanWhole(rehearsal.Steps());
    return true;
}

std::string ThrowAlong(const DeletePlan& plan, Changes& changes) {
    std::string said;
    for (const Belonging& each : plan.along) {
        std::string error;
        if (!each.sharedWith.empty())
            said += ", its " + WordOf(each.kind) + " stays for '" + each.sharedWith + "'";
        else if (!changes.ThrowAway(each.path, &error))
            said += ", its " + WordOf(each.kind) + " stays: " + error;
    }
    return said;
}

std::string FaultOfName(const std::string& name, const std::string& old) {
    if (name == old) return "Filenames are the same";
    if (name.empty()) return "New filename is blank";
    if (name.find(kSeparator) != std::string::npos || name.find('\0') != std::string::npos)
        return "New filename must not contain '/'";
    if (name.front() == '.') return "New filename must not begin with '.'"; // none would list it
    if (name.size() > kLongestName) return "New filename is too long";
    return {};
}

NewNamePlan PlanPlace(Belongings& belongings, const std::string& from, const std::string& to) {
    NewNamePlan plan{from, to, {}, {}, {}};
    const Files& files = belongings.Disk();
    for (const Belonging& each : belongings.Of(from)) {
        if (each.kind == BelongingKind::Note && !HasBytes(files, each.path)) continue;
        const std::string place = belongings.PlaceAt(each, from, to, plan.notWritten);
        if (!place.empty() && place != each.path)
            plan.along.push_back({each.kind, each.path, place, !each.sharedWith.empty()});
    }
    const std::string own = from == to || !files.Exists(to) ? "" : belongings.OwnSidecarOf(to);
    const bool isTaken = std::any_of(plan.along.begin(), plan.along.end(), [&](const Along& each) {
        return FoldCase(each.to) == FoldCase(own) || each.from == own;
    });
    if (!isTaken) plan.givesWay = own;
    return plan;
}

bool MakeRoom(const Files& files, const std::string& source, const std::string& target,
              Changes& changes, std::string* error) {
    const bool onlyCase = FoldCase(source) == FoldCase(target);
    const auto stands = !onlyCase              ? files.FindAnyCase(target)
                        : files.Exists(target) ? std::optional(target)
                                               : std::nullopt;
    if (!stands || files.IsSameFile(source, *stands)) return true;
    if (files.IsFolder(*stands)) {
        if (error) *error = "A folder of that name stands there";
        return false;
    }
    return changes.ThrowAway(*stands, error);
}

namespace {

bool Bring(const Along& along, const Files& files, Changes& changes, std::string* error) {
    // Another spelling that the disk takes for the same file.
    if (files.IsSameFile(along.from, along.to)) return changes.Rename(along.from, along.to, error);
    // Of a sidecar that several pictures share the first has brought it.
    const bool isThere =
        along.kind == BelongingKind::Sidecar && IsSameSidecar(files, along.from, along.to);
    return isThere || (MakeRoom(files, along.from, along.to, changes, error) &&
                       changes.Copy(along.from, along.to, error));
}

// Of those who shared a sidecar the last one takes it away.
bool Stays(const Along& along, const NewNamePlan& plan, const Files& files) {
    return along.stays && (along.kind == BelongingKind::Note ||
                           !OtherWithSidecar(files, along.from, plan.from).empty());
}

} // namespace

bool BringAlong(const NewNamePlan& plan, const Files& files, Changes& changes, std::string* error) {
    if (!plan.givesWay.empty() && !changes.ThrowAway(plan.givesWay, error)) return false;
    return std::all_of(plan.along.begin(), plan.along.end(),
                       [&](const Along& each) { return Bring(each, files, changes, error); });
}

LeftBehind EndAlong(const NewNamePlan& plan, const Files& files, Changes& changes) {
    LeftBehind left;
    for (const Along& each : plan.along) {
        if (files.IsSameFile(each.from, each.to) || !files.Exists(each.from) ||
            Stays(each, plan, files))
            continue;
        std::string why;
        if (!changes.EndRename(each.from, each.to, &why) && left.path.empty())
            left = {each.kind, each.from, why};
    }
    return left;
}

namespace {

using Way = bool (*)(const NewNamePlan&, const Files&, Changes&, std::string*, LeftBehind*);

// What belongs to it first, so that at no instant the picture is without it.
bool RenameAll(const NewNamePlan& plan, const Files& files, Changes& changes, std::string* error,
               LeftBehind* left) {
    if (!BringAlong(plan, files, changes, error) ||
        !MakeRoom(files, plan.from, plan.to, changes, error) ||
        !changes.Rename(plan.from, plan.to, error))
        return false;
    *left = EndAlong(plan, files, changes);
    return true;
}

bool DuplicateAll(const NewNamePlan& plan, const Files& files, Changes& changes, std::string* error,
                  LeftBehind*) {
    return BringAlong(plan, files, changes, error) &&
           MakeRoom(files, plan.from, plan.to, changes, error) &&
           changes.Copy(plan.from, plan.to, error);
}

bool CarryOut(Way way, const NewNamePlan& plan, Changes& changes, std::string* error,
              LeftBehind* left) {
    {
        Rehearsal rehearsal(changes);
        LeftBehind ignored;
        if (way(plan, rehearsal.Disk(), rehearsal.Command(), error, &ignored))
            changes.PlanWhole(rehearsal.Steps());
    }
    return way(plan, changes, changes, error, left) || TakeBack(changes);
}

} // namespace

bool CarryOutRename(const NewNamePlan& plan, Changes& changes, std::string* error,
                    LeftBehind* left) {
    return CarryOut(RenameAll, plan, changes, error, left);
}

bool CarryOutDuplicate(const NewNamePlan& plan, Changes& changes, std::string* error,
                       LeftBehind* left) {
    return CarryOut(DuplicateAll, plan, changes, error, left);
}

std::vector<std::string> FitsFiles(const Files& files, const std::string& folder) {
    const NamePatterns fits("*.fit;*.fits");
    std::vector<std::string> paths;
    for (const std::string& name :
         InListOrder(files.FileNames(folder).value_or(std::vector<std::string>())))
        if (fits.Matches(name)) paths.push_back(JoinPath(folder, name));
    return paths;
}

} // namespace tarn
