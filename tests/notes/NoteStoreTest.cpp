#include "NoteFolder.h"

#include "common/paths.h"
#include "notes/NoteNames.h"
#include "notes/NoteStore.h"
#include "notes/NoteText.h"

namespace tarn::testing {
namespace {

TEST(NoteNames, AreTheFileNameWithoutItsLastFourCharacters) {
    EXPECT_EQ(NoteNameOf("M31.JPG"), "M31.enf");
    EXPECT_EQ(NoteNameOf("IMG_0001.jpeg"), "IMG_0001..enf");
    EXPECT_EQ(NoteNameOf("abcd"), ".enf");
    EXPECT_EQ(NoteNameOf("ab"), ".enf");
    EXPECT_EQ(NoteNameOf("\xC3\xA9.ts"), ".enf");  // characters, not bytes
    EXPECT_EQ(NoteNameOf("L_001.fz"), "L_00.enf"); // whatever the ending
    EXPECT_EQ(NotePath("/notes", "M31.TIF"), "/notes/M31.enf");
    EXPECT_EQ(NotePath("", "M31.TIF"), "/M31.enf");
}

TEST(NoteNames, LongPathsAreShortenedInMessages) {
    const std::string tail = "/y/z.enf";
    const auto path = [&](std::size_t length) {
        return "/a/" + std::string(length - 3 - tail.size(), 'x') + tail;
    };
    EXPECT_EQ(DisplayPath(path(64)), path(64));
    EXPECT_EQ(DisplayPath(path(65)), "/a/.../y/z.enf");
    const std::string flat = "/a/" + std::string(70, 'x') + "/z.enf"; // four parts
    EXPECT_EQ(DisplayPath(flat), flat);
}

TEST(NoteText, TheOlderFormLosesItsMarksOnly) {
    EXPECT_EQ(WithoutOldMarks("\"Hello\"\r\n"), "Hello");
    EXPECT_EQ(WithoutOldMarks("\"a \"\"b\"\" c\"\r\n"), "a \"\"b\"\" c");
    EXPECT_EQ(WithoutOldMarks("\"\"\r\n"), "");
    for (const char* whole :
         {"\"Hello", "\"Hello\"", "\"Hello\"\n", "Hello\"\r\n", "\"\r\n", "\"", ""})
        EXPECT_EQ(WithoutOldMarks(whole), whole);
}

TEST(NoteText, RepairTakesOneQuoteAtEachEnd) {
    EXPECT_EQ(WithoutQuotes("\"text\"\r\n"), "text\r\n");
    EXPECT_EQ(WithoutQuotes("\"text\""), "text");
    EXPECT_EQ(WithoutQuotes("\"text"), "text");
    EXPECT_EQ(WithoutQuotes("text\"\r\n"), "text\r\n");
    EXPECT_EQ(WithoutQuotes("t\"\r\n\""), "t\r\n"); // both at the end
    EXPECT_EQ(WithoutQuotes("\"\"t"), "\"t");
    EXPECT_EQ(WithoutQuotes("\""), "");
    EXPECT_EQ(WithoutQuotes("te\"xt"), std::nullopt);
    EXPECT_EQ(WithoutQuotes(""), std::nullopt);
}

struct StoreDesk : NoteFolder {
    NoteStore store{files};
    std::string error;
    StoreDesk() { store.index.SetFolder(folder.Path()); }
    bool Save(const std::string& name, const std::string& bytes) {
        return store.Save(files, At(name), bytes, &error);
    }
};

TEST(NoteStore, FindsANoteInAnyCaseAndKeepsToIt) {
    StoreDesk d;
    d.folder.Write("m31.ENF", "lower");
    EXPECT_TRUE(d.store.index.HasNote("M31.jpg"));
    ASSERT_TRUE(d.store.Load(d.At("M31.enf")));
    EXPECT_EQ(d.store.Loaded().bytes, "lower");
    EXPECT_TRUE(d.Save("M31.enf", "saved"));
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"m31.ENF"}));
    EXPECT_EQ(d.Bytes("m31.ENF"), "saved");
    EXPECT_EQ(d.store.Read(d.At("M31.enf")), "saved");
    d.folder.Write("M31.enf", "exact"); // the exact name comes first
    EXPECT_EQ(d.store.Read(d.At("M31.enf")), "exact");
    ASSERT_TRUE(d.store.Load(d.At("M31.enf")));
    EXPECT_EQ(d.store.Loaded().bytes, "exact");
    EXPECT_TRUE(d.store.Delete(d.files, d.At("M31.enf"), &d.error));
    EXPECT_TRUE(d.store.Delete(d.files, d.At("M31.enf"), &d.error)); // now the other
    EXPECT_TRUE(d.Names().empty());
    EXPECT_FALSE(d.store.Load(d.At("M31.enf")));
    EXPECT_FALSE(d.store.index.HasNote("M31.jpg"));
    EXPECT_FALSE(d.store.Delete(d.files, d.At("M31.enf"), &d.error));
}

TEST(NoteStore, WhatWasLoadedIsReplacedWithoutATrace) {
    StoreDesk d;
    d.folder.Write("plain.enf", "old");
    ASSERT_TRUE(d.store.Load(d.At("plain.enf")));
    EXPECT_TRUE(d.Save("plain.enf", "new"));
    EXPECT_TRUE(d.Save("plain.enf", "newer"));
    EXPECT_EQ(Trashed("plain (replaced).enf"), "(none)");
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"plain.enf"}));
}

TEST(NoteStore, WhatNobodyHasSeenGoesToTheWastebasketFirst) {
    StoreDesk d;
    d.folder.Write("changed.enf", "as loaded");
    ASSERT_TRUE(d.store.Load(d.At("changed.enf")));
    d.folder.Write("changed.enf", "by another program");
    EXPECT_FALSE(d.store.IsAsLoaded(d.At("changed.enf")));
    EXPECT_TRUE(d.Save("changed.enf", "mine"));
    EXPECT_EQ(Trashed("changed (replaced).enf"), "by another program");

    EXPECT_FALSE(d.store.Load(d.At("unread.enf")));
    d.folder.Write("unread.enf", "came later");
    EXPECT_TRUE(d.Save("unread.enf", "mine"));
    EXPECT_EQ(Trashed("unread (replaced).enf"), "came later");
    EXPECT_EQ(d.Names().size(), 2U);
}

// Without a wastebasket its copy stays.
TEST(NoteStore, AChangedNoteThatCannotBeKeptIsNotOverwritten) {
    StoreDesk d;
    d.folder.Write("a.enf", "old");
    ASSERT_TRUE(d.store.Load(d.At("a.enf")));
    d.folder.Write("a.enf", "changed");
    d.files.onChange = [](const std::string& verb, const std::string&) {
        return verb == "copy" ? "Read-only file system" : "";
    };
    EXPECT_FALSE(d.Save("a.enf", "new"));
    EXPECT_EQ(d.Bytes("a.enf"), "changed");
    d.files.onChange = [](const std::string& verb, const std::string&) {
        return verb == "trash" ? "no wastebasket" : "";
    };
    EXPECT_TRUE(d.Save("a.enf", "new"));
    EXPECT_EQ(d.Bytes("a (replaced).enf"), "changed");
}

} // namespace
} // namespace tarn::testing
