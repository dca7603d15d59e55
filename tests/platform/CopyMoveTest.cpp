// Copies and moves on real disks: what is replaced, what goes along, what a change meanwhile does.
#include "platform/Files.h"
#include "platform/FreeNames.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

namespace tarn::testing {
namespace {

namespace fs = std::filesystem;

constexpr char kOtherDisk[] = "/dev/shm"; // where the machine has it

struct Disk {
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    std::string error;
    std::string At(const std::string& name) const { return folder.Path() + "/" + name; }
};

std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct stat StatOf(const std::string& path) {
    struct stat info {};
    ::lstat(path.c_str(), &info);
    return info;
}

mode_t ModeAt(const std::string& path) {
    return StatOf(path).st_mode & 07777;
}

std::string Attribute(const std::string& path, const char* name) {
    std::array<char, 256> value{};
    const ssize_t size = ::getxattr(path.c_str(), name, value.data(), value.size());
    return size < 0 ? "none" : std::string(value.data(), std::size_t(size));
}

// Reading for one more user.
std::string AccessList() {
    std::string list("\x02\0\0\0", 4);
    const auto entry = [&](int tag, int rights, unsigned who) {
        for (const unsigned part : {unsigned(tag), unsigned(rights)})
            list += {char(part & 255), char(part >> 8)};
        for (int shift = 0; shift < 32; shift += 8) list += char(who >> shift & 255);
    };
    entry(0x01, 6, ~0U);
    entry(0x02, 4, 1234);
    entry(0x04, 0, ~0U);
    entry(0x10, 4, ~0U);
    entry(0x20, 0, ~0U);
    return list;
}

TEST(CopyMove, NobodyGetsTheRightsOfAForeignFilesMode) {
    Disk d;
    const mode_t mask = ::umask(027);
    for (const mode_t mode : {06755U, 04777U, 01666U, 0444U}) {
        SCOPED_TRACE(mode);
        d.folder.Write("foreign", "#!");
        ::chmod(d.At("foreign").c_str(), mode);
        ASSERT_TRUE(d.files->Copy(d.At("foreign"), d.At("copy"), &d.error)) << d.error;
        EXPECT_EQ(ModeAt(d.At("copy")), mode & 0750);
        fs::remove(d.At("copy"));
        // Written anew it is a new file, of whoever writes.
        if (::access(d.At("foreign").c_str(), W_OK) != 0) continue;
        ASSERT_TRUE(d.files->Write(d.At("foreign"), "new", &d.error)) << d.error;
        EXPECT_EQ(ModeAt(d.At("foreign")), mode & 0777);
    }
    ASSERT_TRUE(d.files->Write(d.At("fresh"), "new", &d.error)) << d.error;
    EXPECT_EQ(ModeAt(d.At("fresh")), 0640U);
    ::umask(mask);
}

TEST(CopyMove, WhatStandsIsReplacedOnlyByWhoMeansTo) {
    Disk d;
    d.folder.Write("a", "a");
    d.folder.Write("b", "b");
    fs::create_symlink("nowhere", d.At("dangling"));
    for (const char* name : {"b", "dangling"}) {
        SCOPED_TRACE(name);
        EXPECT_FALSE(d.files->Copy(d.At("a"), d.At(name), &d.error));
        EXPECT_EQ(d.error, "File exists");
        EXPECT_EQ(d.files->Move(d.At("a"), d.At(name), &d.error), Moved::No);
        EXPECT_EQ(d.error, "File exists");
    }
    EXPECT_EQ(BytesOf(d.At("b")), "b");
    EXPECT_TRUE(fs::is_symlink(d.At("dangling")));
    std::string replaced;
    ASSERT_EQ(d.files->Move(d.At("a"), d.At("b"), &d.error, &replaced), Moved::Renamed) << d.error;
    EXPECT_EQ(BytesOf(d.At("b")), "a");
    EXPECT_EQ(BytesOf(replaced), "b");
    EXPECT_FALSE(fs::exists(d.At("a")));
    // Itself, under this name or another, and a folder are never replaced.
    fs::create_hard_link(d.At("b"), d.At("twin"));
    fs::create_directory(d.At("folder"));
    for (const char* name : {"b", "twin", "folder"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(d.files->Move(d.At("b"), d.At(name), &d.error, &replaced), Moved::No);
        EXPECT_EQ(BytesOf(d.At("b")), "a");
    }
}

// While one is copied over and over to a free name, somebody else makes files of that name.
TEST(CopyMove, ANameThatComesUpMeanwhileIsKept) {
    Disk d;
    d.folder.Write("a", std::string(1 << 20, 'a'));
    std::atomic<bool> ends = false;
    std::atomic<int> made = 0;
    std::atomic<int> lost = 0;
    std::thread other([&] {
        while (!ends) {
            const int file = ::open(d.At("b").c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
            if (file < 0) continue;
            ++made;
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
            struct stat info {};
            lost += ::fstat(file, &info) == 0 && info.st_nlink == 0;
            ::unlink(d.At("b").c_str());
            ::close(file);
        }
    });
    for (int i = 0; i < 200 || made < 20; ++i)
        if (d.files->Copy(d.At("a"), d.At("b"), &d.error)) fs::remove(d.At("b"));
    ends = true;
    other.join();
    EXPECT_EQ(lost, 0) << "of " << made;
}

TEST(CopyMove, AFileThatIsWrittenMeanwhileIsNoCopy) {
    Disk d;
    d.folder.Write("a", std::string(32 << 20, 'a'));
    std::atomic<bool> begun = false;
    std::atomic<bool> ends = false;
    std::thread writer([&] { // the size stays
        std::fstream file(d.At("a"), std::ios::in | std::ios::out | std::ios::binary);
        while (!ends) {
            file.seekp(0).put('b').flush();
            begun = true;
        }
    });
    while (!begun) std::this_thread::yield();
    bool refused = false;
    for (int i = 0; i < 20 && !refused; ++i) {
        refused = !d.files->Copy(d.At("a"), d.At("copy"), &d.error);
        EXPECT_EQ(fs::remove(d.At("copy")), !refused);
    }
    ends = true;
    writer.join();
    EXPECT_TRUE(refused);
    EXPECT_EQ(d.error, "it changed while it was copied");
}

TEST(CopyMove, OnOneDiskAFileKeepsAllItHas) {
    Disk d;
    const std::string a = d.folder.Write("a", "a");
    fs::resize_file(a, 64 << 20);
    const std::string list = AccessList();
    const bool hasList =
        ::setxattr(a.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) == 0;
    const bool hasMark = ::setxattr(a.c_str(), "user.mark", "red", 3, 0) == 0;
    const auto before = StatOf(a);
    fs::create_directory(d.At("to"));
    ASSERT_EQ(d.files->Move(a, d.At("to/a"), &d.error), Moved::Renamed) << d.error;
    const auto after = StatOf(d.At("to/a"));
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_blocks, before.st_blocks); // its hole stays one
    EXPECT_EQ(Attribute(d.At("to/a"), "user.mark"), hasMark ? "red" : "none");
    EXPECT_EQ(Attribute(d.At("to/a"), "system.posix_acl_access"), hasList ? list : "none");
    // A link would lead elsewhere from there: it stays, its file is copied.
    fs::create_symlink("to/a", d.At("link"));
    EXPECT_EQ(d.files->Move(d.At("link"), d.At("to/link"), &d.error), Moved::Copied) << d.error;
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(d.At("to/link"))));
}

TEST(CopyMove, ToAnotherDiskGoWhatThatCanKeep) {
    Disk d;
    if (!fs::is_directory(kOtherDisk) ||
        StatOf(kOtherDisk).st_dev == StatOf(d.folder.Path()).st_dev)
        GTEST_SKIP() << "this machine has no other disk";
    const TestFolder folder(kOtherDisk);
    const std::string there = folder.Path() + "/";
    const std::string a = d.folder.Write("a", "a");
    SetFileTime(a, 2004, 6, 22, 20, 15, 30);
    ::chmod(a.c_str(), 04640);
    const std::string list = AccessList();
    if (::setxattr(a.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0 ||
        ::setxattr(a.c_str(), "user.mark", "red", 3, 0) != 0)
        GTEST_SKIP() << "this disk keeps no attributes";
    ASSERT_EQ(d.files->Move(a, there + "a", &d.error), Moved::Copied) << d.error;
    EXPECT_EQ(BytesOf(there + "a"), "a");
    EXPECT_EQ(Attribute(there + "a", "user.mark"), "red");
    EXPECT_EQ(Attribute(there + "a", "system.posix_acl_access"), list);
    EXPECT_EQ(ModeAt(there + "a"), StatOf(a).st_mode & 0777U);
    EXPECT_EQ(d.files->ModifiedTime(there + "a"), d.files->ModifiedTime(a));
    EXPECT_EQ(BytesOf(a), "a"); // until it is thrown away
    // A copy has none of it.
    ASSERT_TRUE(d.files->Copy(a, there + "copy", &d.error)) << d.error;
    EXPECT_EQ(Attribute(there + "copy", "user.mark"), "none");
    EXPECT_EQ(Attribute(there + "copy", "system.posix_acl_access"), "none");
}

TEST(CopyMove, WithoutSuchARenameOfTheSystemANameIsTakenFirst) {
    Disk d;
    d.folder.Write("a", "a");
    d.folder.Write("b", "b");
    EXPECT_FALSE(RenameByTaking(d.At("a"), d.At("b")));
    EXPECT_EQ(errno, EEXIST);
    EXPECT_EQ(BytesOf(d.At("b")), "b");
    EXPECT_FALSE(RenameByTaking(d.At("gone"), d.At("c")));
    EXPECT_FALSE(fs::exists(d.At("c")));
    EXPECT_TRUE(RenameByTaking(d.At("a"), d.At("c")));
    EXPECT_EQ(BytesOf(d.At("c")), "a");
    fs::create_directories(d.At("folder/inside"));
    EXPECT_FALSE(RenameByTaking(d.At("folder"), d.At("folder/inside/itself")));
    EXPECT_TRUE(fs::is_empty(d.At("folder/inside")));
    EXPECT_TRUE(RenameByTaking(d.At("folder"), d.At("moved")));
    EXPECT_TRUE(fs::exists(d.At("moved/inside")));
}

} // namespace
} // namespace tarn::testing
