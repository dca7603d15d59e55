#include "platform/Files.h"
#include "support/TestFolder.h"

#include <QStandardPaths>

#include <gtest/gtest.h>

#include <sys/stat.h>

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

TEST(Files, RenameNeverReplaces) {
    Disk d;
    d.folder.Write("a", "a");
    d.folder.Write("b", "b");
    std::string error;
    EXPECT_FALSE(d.files->Rename(d.At("a"), d.At("b"), &error));
    EXPECT_EQ(error, "File exists");
    EXPECT_EQ(d.Bytes("a") + d.Bytes("b"), "ab");
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
    EXPECT_TRUE(d.files->Copy(a, d.At("b"), &error)) << error;
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    EXPECT_EQ(d.files->Read(data.toStdString() + "/Trash/files/b", 10), "b");
    EXPECT_FALSE(d.files->Copy(d.At("gone"), d.At("b"), &error));
    EXPECT_EQ(d.Bytes("b").size(), 200000U);
}

} // namespace
} // namespace tarn::testing
