#include "platform/Files.h"
#include "platform/FileLock.h"
#include "platform/RunToken.h"
#include "support/Trees.h"

#include <QStandardPaths>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace tarn::testing {
namespace {

namespace fs = std::filesystem;

struct Disk {
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
    std::string Bytes(const std::string& name) const {
        return files->Read(At(name), 1000000).value_or("none");
    }
    std::size_t Entries() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()));
    }
};

TEST(Files, WriteReplacesWholeAndKeepsModeAndLinks) {
    Disk d;
    d.folder.Write("note", "old");
    ::chmod(d.At("note").c_str(), 0640);
    fs::create_symlink("note", d.At("link"));
    std::string error;
    EXPECT_TRUE(d.files->Write(d.At("link"), std::string("new\0bytes", 9), &error)) << error;
    EXPECT_EQ(d.Bytes("note"), std::string("new\0bytes", 9));
    EXPECT_TRUE(fs::is_symlink(d.At("link")));
    EXPECT_EQ(fs::status(d.At("note")).permissions(), fs::perms(0640));
    EXPECT_TRUE(d.files->Write(d.At("fresh"), "", &error));
    EXPECT_EQ(d.Entries(), 3U); // nothing is left lying about
    EXPECT_FALSE(d.files->Write(d.At("gone/note"), "x", &error));
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_FALSE(d.files->Write(d.folder.Path(), "x", &error)); // a folder stands there
    EXPECT_EQ(d.Entries(), 3U);
}

TEST(Files, APipeIsNotReplacedByAFile) {
    Disk d;
    ASSERT_EQ(::mkfifo(d.At("pipe").c_str(), 0600), 0);
    std::string error;
    EXPECT_FALSE(d.files->Write(d.At("pipe"), "x", &error));
    EXPECT_EQ(error, "Not a file but a pipe or a device");
    error.clear();
    std::string failed;
    {
        const auto staged = d.files->Stage(d.folder.Path(), &error);
        ASSERT_TRUE(staged) << error;
        ASSERT_TRUE(staged->Write("pipe", "x", &error)) << error;
        EXPECT_FALSE(staged->Place(&error, &failed));
    }
    EXPECT_EQ(error, "Not a file but a pipe or a device");
    EXPECT_TRUE(fs::is_fifo(d.At("pipe")));
    EXPECT_EQ(d.Entries(), 1U);
}

TEST(Files, WhatAKilledRunLeftIsThrownAwayAndWhatARunHoldsStays) {
    Disk d;
    std::string error;
    const auto other = d.files->Stage(d.folder.Path(), &error); // another run, at work
    ASSERT_TRUE(other) << error;
    ASSERT_TRUE(other->Write("theirs", "t", &error)) << error;
    d.folder.Write("page", "old");
    const std::string left = ".tarn-staging-";
    for (const char* name : {"killed", "empty", "fresh", "own"})
        fs::create_directory(d.At(left + name));
    d.folder.Write(left + "killed/page", "what stood here before");
    fs::rename(d.At(left + "own"), d.At("own")); // a user's folder behind a link of such a name
    fs::create_directory_symlink("own", d.At(left + "link"));
    for (const char* name : {"killed", "empty", "link"})
        fs::last_write_time(d.At(left + name),
                            fs::file_time_type::clock::now() - std::chrono::hours(2));
    const auto mine = d.files->Stage(d.folder.Path(), &error);
    ASSERT_TRUE(mine) << error;
    ASSERT_TRUE(mine->Write("page", "new", &error)) << error;
    EXPECT_FALSE(fs::exists(d.At(left + "killed")));
    EXPECT_FALSE(fs::exists(d.At(left + "empty")));
    EXPECT_TRUE(fs::exists(d.At(left + "fresh")));
    EXPECT_TRUE(fs::exists(d.At(left + "link")));
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    EXPECT_EQ(d.files->Read(data.toStdString() + "/Trash/files/.tarn-staging-killed/page", 100),
              "what stood here before");
    std::string failed;
    EXPECT_TRUE(other->Place(&error, &failed)) << error;
    EXPECT_TRUE(mine->Place(&error, &failed)) << error;
    EXPECT_EQ(d.Bytes("theirs"), "t");
    EXPECT_EQ(d.Bytes("page"), "new");
}

// Killed by a signal: nothing is put away.
std::string KilledBeside(const TestFolder& folder) {
    std::string token = RunToken();
    const pid_t child = ::fork();
    if (child == 0) {
        const auto files = MakeFiles();
        std::string error;
        const auto staged = files->Stage(folder.Path(), &error);
        staged->Write("page", "half", &error);
        folder.Write(std::string(kBeside) + RunToken() + "-1", "half a file");
        ::raise(SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return token.substr(0, token.rfind('-') + 1) + std::to_string(child);
}

TEST(Files, WhatAKilledRunOfThisMachineLeftIsSweptAtOnce) {
    Disk d;
    const std::string ended = KilledBeside(d.folder);
    EXPECT_TRUE(IsOfEndedRun(ended));
    EXPECT_FALSE(IsOfEndedRun(RunToken()));
    const auto changed = [&](std::size_t at) { // one sign of it
        std::string other = ended;
        other[at] = other[at] == '0' ? '1' : '0';
        return other;
    };
    EXPECT_FALSE(IsOfEndedRun(changed(0)));  // another machine's
    EXPECT_TRUE(IsOfEndedRun(changed(9)));   // from before its last start
    EXPECT_FALSE(IsOfEndedRun(changed(18))); // of a container, where the number is another's
    const std::string mine = std::string(kBeside) + RunToken() + "-1";
    d.folder.Write(mine, "at work");
    d.folder.Write(".tarn-0-1", "of an unknown run");
    d.folder.Write("a", "a");
    d.files->Sweep(d.folder.Path());
    EXPECT_EQ(ReadTree(d.folder.Path()),
              (Tree{{mine, "at work"}, {".tarn-0-1", "of an unknown run"}, {"a", "a"}}));
}

TEST(Files, WhatNewFilesReplacedLiesInTheWastebasketAndLinksOutAreRefused) {
    Disk d;
    d.folder.Write("page", "old");
    fs::create_directories(d.At("site/below"));
    d.folder.Write("site/below/deep", "old, by a link");
    d.folder.Write("site/index", "old index");
    fs::create_symlink("below/deep", d.At("site/inner"));
    fs::create_symlink("../page", d.At("site/outer"));
    std::string error;
    std::string failed;
    for (const bool out : {true, false}) {
        SCOPED_TRACE(out);
        const auto staged = d.files->Stage(d.At("site"), &error);
        ASSERT_TRUE(staged) << error;
        for (const char* name : {"index", "inner"})
            ASSERT_TRUE(staged->Write(name, name, &error)) << error;
        if (out) {
            ASSERT_TRUE(staged->Write("outer", "planted", &error)) << error;
            EXPECT_FALSE(staged->Place(&error, &failed));
            EXPECT_EQ(failed, "outer");
            EXPECT_EQ(error, "it is a link that leads out of the folder");
            EXPECT_EQ(d.Bytes("site/index"), "old index");
        } else {
            EXPECT_TRUE(staged->Place(&error, &failed)) << error;
        }
    }
    EXPECT_EQ(d.Bytes("page"), "old");
    EXPECT_EQ(d.Bytes("site/index"), "index");
    EXPECT_EQ(d.Bytes("site/below/deep"), "inner");
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const std::string basket = data.toStdString() + "/Trash/";
    EXPECT_EQ(d.files->Read(basket + "files/index", 100), "old index");
    EXPECT_EQ(d.files->Read(basket + "files/deep", 100), "old, by a link");
    const std::string card = d.files->Read(basket + "info/deep.trashinfo", 1000).value_or("");
    EXPECT_NE(card.find(d.At("site/below/deep") + "\n"), std::string::npos) << card;
    EXPECT_TRUE(d.files->LeadsOut(d.At("site/outer")));
    for (const char* name : {"site/inner", "site/index", "site/gone"})
        EXPECT_FALSE(d.files->LeadsOut(d.At(name))) << name;
}

TEST(Files, ReadStopsAtItsLimitAndSaysWhyNot) {
    Disk d;
    d.folder.Write("a", "0123456789");
    EXPECT_EQ(d.files->Read(d.At("a"), 4), "0123");
    std::string error;
    EXPECT_FALSE(d.files->Read(d.At("b"), 4, &error));
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_FALSE(d.files->Read(d.folder.Path(), 4, &error));
}

TEST(Files, FindsNamesInAnyCaseTheExactOneFirst) {
    Disk d;
    d.folder.Write("M31.enf", "a");
    EXPECT_EQ(d.files->FindAnyCase(d.At("m31.ENF")), d.At("M31.enf"));
    d.folder.Write("m31.ENF", "b");
    EXPECT_EQ(d.files->FindAnyCase(d.At("m31.ENF")), d.At("m31.ENF"));
    EXPECT_FALSE(d.files->FindAnyCase(d.At("m32.enf")));
}

TEST(Files, WhatCannotBeAskedIsNotTakenForFree) {
    Disk d;
    d.folder.Write("a.jpg", "a");
    EXPECT_FALSE(d.files->Exists(d.At("b.jpg")));
    EXPECT_FALSE(d.files->Exists(d.At("a.jpg/b.jpg")));
    ::chmod(d.folder.Path().c_str(), 0);
    const bool root = ::geteuid() == 0; // whom no mode keeps out
    ASSERT_TRUE(!root || ::seteuid(65534) == 0);
    EXPECT_TRUE(d.files->Exists(d.At("a.jpg")));
    EXPECT_EQ(d.files->FindAnyCase(d.At("A.JPG")), d.At("A.JPG"));
    ASSERT_TRUE(!root || ::seteuid(0) == 0);
    ::chmod(d.folder.Path().c_str(), 0700);
}

TEST(Files, RenameNeverReplaces) {
    Disk d;
    d.folder.Write("a", "a");
    d.folder.Write("b", "b");
    std::string error;
    EXPECT_FALSE(d.files->Rename(d.At("a"), d.At("b"), &error));
    EXPECT_EQ(error, "File exists");
    EXPECT_EQ(d.Bytes("a"), "a");
    EXPECT_EQ(d.Bytes("b"), "b");
    EXPECT_TRUE(d.files->Rename(d.At("a"), d.At("A"), &error)); // a change of case alone
    EXPECT_EQ(d.Bytes("A"), "a");
    EXPECT_FALSE(d.files->Rename(d.At("gone"), d.At("c"), &error));
}

TEST(Files, CopyKeepsTimesAndPutsAsideWhatItReplaces) {
    Disk d;
    const std::string a = d.folder.Write("a", std::string(200000, 'a'));
    SetFileTime(a, 2004, 6, 22, 20, 15, 30);
    d.folder.Write("b", "b");
    std::string error;
    EXPECT_TRUE(d.files->Copy(a, d.At("c"), &error)) << error;
    EXPECT_EQ(d.Bytes("c"), d.Bytes("a"));
    EXPECT_EQ(d.files->ModifiedTime(d.At("c")), d.files->ModifiedTime(a));
    fs::create_hard_link(a, d.At("same"));
    EXPECT_FALSE(d.files->Copy(a, d.At("same"), &error)); // one file under two names
    std::string replaced;
    EXPECT_TRUE(d.files->Copy(a, d.At("b"), &error, &replaced)) << error;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    EXPECT_EQ(d.files->Read(data.toStdString() + "/Trash/files/b", 10), "b");
    EXPECT_FALSE(d.files->Copy(d.At("gone"), d.At("b"), &error, &replaced));
    EXPECT_EQ(d.Bytes("b").size(), 200000U);
}

TEST(Files, WastebasketTakesAnyNameAndGivesItBack) {
    Disk d;
    const std::string longest = std::string(251, 'x') + ".jpg";
    const std::vector<std::pair<std::string, std::string>> names = {
        {"a b%.jpg", "a%20b%25.jpg"},
        {"line\nend.jpg", "line%0Aend.jpg"},
        {"no \xFF text", "no%20%FF%20text"},
        {"~x_-.", "~x_-."},
        {"(M31)+.jpg", "%28M31%29%2B.jpg"}};
    for (const auto& [name, spelt] : names) {
        SCOPED_TRACE(name);
        std::string error, where;
        d.folder.Write(name, name);
        ASSERT_TRUE(d.files->Trash(d.At(name), &error, &where)) << error;
        EXPECT_FALSE(d.files->Exists(d.At(name)));
        std::string entry = where;
        entry.replace(entry.rfind("/files/"), 7, "/info/");
        const auto info = d.files->Read(entry + ".trashinfo", 1000);
        ASSERT_TRUE(info);
        EXPECT_EQ(info->find("[Trash Info]\nPath=/"), 0U);
        EXPECT_NE(info->find("/" + spelt + "\nDeletionDate="), std::string::npos) << *info;
        d.folder.Write(name, "another");
        EXPECT_FALSE(d.files->Restore(where, d.At(name), &error)); // nothing is replaced
        ASSERT_TRUE(d.files->Trash(d.At(name), &error)) << error;  // the same name once more
        ASSERT_TRUE(d.files->Restore(where, d.At(name), &error)) << error;
        EXPECT_EQ(d.Bytes(name), name);
        EXPECT_FALSE(d.files->Exists(entry + ".trashinfo"));
    }
    std::string error, where;
    d.folder.Write(longest, "long");
    ASSERT_TRUE(d.files->Trash(d.At(longest), &error, &where)) << error;
    ASSERT_TRUE(d.files->Restore(where, d.At(longest), &error)) << error;
    EXPECT_FALSE(d.files->Trash(d.At("gone"), &error));
    EXPECT_EQ(error, "No such file or directory");
}

TEST(Files, WastebasketTakesManyAtOnce) {
    Disk d;
    std::vector<std::string> paths;
    for (const char* name : {"many.jpg", "many.txt", "below/many.jpg", "gone"})
        paths.push_back(d.At(name));
    fs::create_directory(d.At("below"));
    for (std::size_t i = 0; i < 3; ++i) d.folder.Write(paths[i].substr(d.At("").size()), paths[i]);
    const std::vector<std::string> where = d.files->TrashAll(paths);
    ASSERT_EQ(where.size(), 4U);
    EXPECT_EQ(where[3], "");
    std::string error;
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(paths[i]);
        EXPECT_EQ(d.files->Read(where[i], 1000), paths[i]);
        std::string entry = where[i];
        entry.replace(entry.rfind("/files/"), 7, "/info/");
        const std::string card = d.files->Read(entry + ".trashinfo", 1000).value_or("");
        EXPECT_NE(card.find("\nPath=" + paths[i] + "\n"), std::string::npos) << card;
        EXPECT_TRUE(d.files->Restore(where[i], paths[i], &error)) << error;
    }
}

TEST(Files, WastebasketTakesTheLinkNotWhatItLeadsTo) {
    Disk d;
    d.folder.Write("real.jpg", "real");
    fs::create_symlink("real.jpg", d.At("link.jpg"));
    fs::create_symlink("nowhere", d.At("dangling.jpg"));
    std::string error;
    EXPECT_TRUE(d.files->Trash(d.At("link.jpg"), &error)) << error;
    EXPECT_TRUE(d.files->Trash(d.At("dangling.jpg"), &error)) << error;
    EXPECT_EQ(d.Bytes("real.jpg"), "real");
    EXPECT_EQ(d.Entries(), 1U);
}

TEST(Files, WritesInPlaceWithinTheFileAlone) {
    Disk d;
    const std::string path = d.folder.Write("a", "0123456789");
    std::string error;
    EXPECT_TRUE(d.files->WriteAt(path, 7, "abc", &error)) << error;
    EXPECT_EQ(d.Bytes("a"), "0123456abc");
    EXPECT_FALSE(d.files->WriteAt(path, 8, "xyz", &error));
    EXPECT_FALSE(d.files->WriteAt(path, SIZE_MAX, "xyz", &error));
    EXPECT_EQ(d.Bytes("a"), "0123456abc");
    EXPECT_TRUE(d.files->SetTimes(path, 1087935330, &error)) << error;
    EXPECT_EQ(d.files->ModifiedTime(path), 1087935330);
    EXPECT_FALSE(d.files->SetTimes(d.At("gone"), 0, &error));
    FileLook then;
    then.seconds = 987654321;
    then.nanoseconds = 123456789;
    EXPECT_TRUE(d.files->PutTimeBack(path, then, &error)) << error;
    const FileLook now = d.files->Look(path).value_or(FileLook());
    EXPECT_EQ(now.seconds, then.seconds);
    EXPECT_EQ(now.nanoseconds, then.nanoseconds);
    EXPECT_FALSE(d.files->PutTimeBack(d.At("gone"), then, &error));
    EXPECT_TRUE(d.files->IsSameFile(path, d.folder.Path() + "/./a"));
    EXPECT_FALSE(d.files->IsSameFile(path, d.At("gone")));
}

// What lies behind the bytes that are written is neither read nor changed.
TEST(Files, ExtendsInTheMiddleOfAnyLength) {
    Disk d;
    const std::string path = d.folder.Write("a", "0123456789");
    std::string error;
    EXPECT_TRUE(d.files->Extend(path, 3, "abc", &error)) << error;
    EXPECT_EQ(d.Bytes("a"), "012abc6789");
    EXPECT_TRUE(d.files->Extend(path, 8, "xyz", &error)) << error;
    EXPECT_EQ(d.Bytes("a"), "012abc67xyz");
    constexpr std::uintmax_t kLength = std::uintmax_t(1) << 41; // of nothing
    fs::resize_file(path, kLength);
    EXPECT_TRUE(d.files->Extend(path, 0, "new", &error)) << error;
    EXPECT_EQ(d.files->Read(path, 8), "newabc67");
    EXPECT_EQ(fs::file_size(path), kLength);
}

TEST(FileLock, IsHeldByOneAndGoesWithItsHolder) {
    TestFolder folder;
    const std::string path = folder.Path() + "/window.lock";
    auto first = std::make_unique<FileLock>(path);
    FileLock second(path);
    EXPECT_TRUE(first->Take());
    EXPECT_TRUE(first->Take()); // it has it
    EXPECT_FALSE(second.Take());
    first.reset();
    EXPECT_TRUE(second.Take());
    EXPECT_FALSE(FileLock(folder.Path() + "/none/window.lock").Take());
}

} // namespace
} // namespace tarn::testing
