#include "Acts.h"

#include "common/paths.h"
#include "history/Rehearsal.h"

#include <sys/stat.h>

namespace tarn::testing {

namespace {

constexpr std::time_t kLongAgo = 1'100'000'000; // all that is given is older

void RenameMany(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"a", "tmp"}, {"b", "a"}, {"tmp", "b"}, {"c", "d"}})
        changes.Rename(JoinPath(folder, from), JoinPath(folder, to), &error);
}

void ThrowMany(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    for (const char* name : {"a", "b", "c"}) changes.ThrowAway(JoinPath(folder, name), &error);
}

// As a rename of a picture with its note, over a name that is taken.
void RenameWithNote(Changes& changes, const std::string& folder, const std::string&) {
    const auto at = [&](const char* name) { return JoinPath(folder, name); };
    std::string error;
    changes.CopyTo(at("a.enf"), at("b.enf"), &error);
    changes.ThrowAway(at("b"), &error);
    changes.Rename(at("a"), at("b"), &error);
    changes.EndRename(at("a.enf"), at("b.enf"), &error);
}

void CopyOver(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.CopyTo(JoinPath(folder, "a"), JoinPath(folder, "b"), &error, Standing::ThrowAway);
    changes.CopyTo(JoinPath(folder, "a"), JoinPath(folder, "new"), &error);
}

void WriteSome(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.Write(JoinPath(folder, "a"), "anew", &error);
    changes.WriteAt(JoinPath(folder, "b"), 1, "XY", &error);
    changes.SetTimes(JoinPath(folder, "c"), 1'000'000'000, &error);
    changes.Write(JoinPath(folder, "made"), "made", &error);
}

// As dates inside pictures are put right, and the files' own with them.
void DateInside(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    for (const char* name : {"a", "b"}) {
        changes.WriteAt(JoinPath(folder, name), 1, "XY", &error);
        changes.SetTimes(JoinPath(folder, name), 1'000'000'000, &error);
    }
}

void MoveFar(Changes& changes, const std::string& folder, const std::string& otherDisk) {
    std::string error;
    changes.CopyTo(JoinPath(folder, "a.xmp"), JoinPath(otherDisk, "a.xmp"), &error);
    changes.MoveTo(JoinPath(folder, "a"), JoinPath(otherDisk, "a"), &error);
    changes.EndMove(JoinPath(folder, "a"), &error);
    changes.EndRename(JoinPath(folder, "a.xmp"), JoinPath(otherDisk, "a.xmp"), &error);
    changes.MoveTo(JoinPath(folder, "b"), JoinPath(otherDisk, "b"), &error);
    changes.EndMove(JoinPath(folder, "b"), &error);
}

void MakeFolderFor(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.MakeFolder(JoinPath(folder, "sub"), &error);
    changes.MoveTo(JoinPath(folder, "a"), JoinPath(folder, "sub/a"), &error);
}

// Two files of one name, the second over the first.
void PasteTwins(Changes& changes, const std::string& folder, const std::string&) {
    std::string error;
    changes.CopyTo(JoinPath(folder, "a"), JoinPath(folder, "x"), &error, Standing::ThrowAway);
    changes.CopyTo(JoinPath(folder, "b"), JoinPath(folder, "x"), &error, Standing::ThrowAway);
}

} // namespace

Tree WholeTree(const std::string& folder) {
    Tree tree = ReadTree(folder);
    if (tree.contains("sub"))
        for (const auto& [name, bytes] : ReadTree(folder + "/sub")) tree["sub/" + name] = bytes;
    for (auto& [name, bytes] : tree) {
        struct stat info {};
        ::stat((folder + "/" + name).c_str(), &info);
        bytes += " " + (info.st_mtim.tv_sec > kLongAgo ? "new"
                                                       : std::to_string(info.st_mtim.tv_sec) + "." +
                                                             std::to_string(info.st_mtim.tv_nsec));
        bytes += " " + std::to_string(info.st_mode);
    }
    return tree;
}

const std::vector<Act>& Acts() {
    static const std::vector<Act> kActs{
        {"renames in a circle", {{"a", "1"}, {"b", "22"}, {"c", "333"}}, RenameMany},
        {"delete", {{"a", "1"}, {"b", "22"}, {"c", "333"}}, ThrowMany},
        {"delete unplanned", {{"a", "1"}, {"b", "22"}, {"c", "333"}}, ThrowMany, false},
        {"rename with note", {{"a", "1"}, {"a.enf", "note"}, {"b", "22"}}, RenameWithNote},
        {"copy over", {{"a", "1"}, {"b", "22"}}, CopyOver},
        {"twins", {{"a", "1"}, {"b", "22"}, {"x", "333"}}, PasteTwins},
        {"writing", {{"a", "1"}, {"b", "2222"}, {"c", "333"}}, WriteSome},
        {"writing unplanned", {{"a", "1"}, {"b", "2222"}, {"c", "333"}}, WriteSome, false},
        {"dates inside", {{"a", "1111"}, {"b", "2222"}}, DateInside},
        {"move onto another disk", {{"a", "1"}, {"a.xmp", "mark"}, {"b", "22"}}, MoveFar},
        {"unplanned move", {{"a", "1"}, {"a.xmp", "mark"}, {"b", "22"}}, MoveFar, false},
        {"move into a new folder", {{"a", "1"}, {"b", "22"}}, MakeFolderFor},
    };
    return kActs;
}

void Plan(const Act& act, Changes& changes, const std::string& folder,
          const std::string& otherDisk) {
    Rehearsal rehearsal(changes);
    act.run(rehearsal.Command(), folder, otherDisk);
    changes.PlanWhole(rehearsal.Steps());
}

void FillLongAgo(const TestFolder& folder, const Tree& before) {
    Fill(folder, before);
    for (const auto& [name, bytes] : before) {
        SetFileTime(folder.Path() + "/" + name, 2001, 2, 3, 4, 5, 6);
        ::chmod((folder.Path() + "/" + name).c_str(), 0640);
    }
}

} // namespace tarn::testing
