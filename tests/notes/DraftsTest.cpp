#include "NoteFolder.h"

#include "notes/Drafts.h"

namespace tarn::testing {
namespace {

class StateFiles : public ForwardingFiles {
public:
    TestFolder folder;
    std::string StateFolder() const override { return folder.Path(); }
    std::vector<Draft> OnDisk() const {
        return UnpackDrafts(BytesOf(folder.Path() + "/unsaved_notes"));
    }
};

TEST(Drafts, AnyNamesAndTextsComeBack) {
    const std::vector<Draft> drafts{{"a b\n.jpg", "draft 1 2\nx\r\n"},
                                    {"", ""},
                                    {"\xFF.jpg", std::string("\0\xE2\x89\x88", 4)}};
    const std::string bytes = PackDrafts(drafts);
    EXPECT_EQ(UnpackDrafts(bytes), drafts);
    for (std::size_t cut = 0; cut < bytes.size(); ++cut)
        EXPECT_LT(UnpackDrafts(bytes.substr(0, cut)).size(), 3U);
    for (const char* junk : {"", "draft", "draft x 1\n", "draft 99999999999999999999 1\n",
                             "draft 18446744073709551615 18446744073709551615\nab"})
        EXPECT_TRUE(UnpackDrafts(junk).empty()) << junk;
}

TEST(Drafts, OfTwoWindowsStandBesideEachOther) {
    StateFiles files;
    std::string error;
    {
        Drafts before(files);
        before.TakeUp();
        before.Drop({"a.jpg", "left by a crash"});
        ASSERT_TRUE(before.Write(&error));
    }
    Drafts one(files);
    Drafts two(files);
    one.TakeUp();
    two.TakeUp();
    one.Set(DraftPlace::Box, {"b.jpg", "clou"});
    ASSERT_TRUE(one.Write(&error));
    two.Set(DraftPlace::Box, {"c.jpg", "moon"});
    ASSERT_TRUE(two.Write(&error));
    one.Set(DraftPlace::Box, {"b.jpg", "clouds"});
    ASSERT_TRUE(one.Write(&error));
    EXPECT_EQ(
        files.OnDisk(),
        (std::vector<Draft>{{"a.jpg", "left by a crash"}, {"c.jpg", "moon"}, {"b.jpg", "clouds"}}));
    two.Saved("left by a crash");
    two.Saved("moon");
    two.Forget(DraftPlace::Box);
    ASSERT_TRUE(two.Write(&error));
    ASSERT_TRUE(one.Write(&error)); // which brings nothing back
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"b.jpg", "clouds"}}));
}

TEST(Drafts, StayUntilTheirTextIsSaved) {
    StateFiles files;
    std::string error;
    Drafts drafts(files);
    EXPECT_TRUE(drafts.TakeUp().empty());
    drafts.Set(DraftPlace::Box, {"b.jpg", "in the box"});
    drafts.Drop({"a.jpg", "clouds"});
    drafts.Drop({"d.jpg", "more"});
    drafts.Drop({"a.jpg", "clouds"}); // the same once more
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(
        files.OnDisk(),
        (std::vector<Draft>{{"a.jpg", "clouds"}, {"d.jpg", "more"}, {"b.jpg", "in the box"}}));
    drafts.Saved("in the box");
    drafts.Saved("high clouds"); // another note that only holds the word
    drafts.Saved("more");
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"a.jpg", "clouds"}}));
}

TEST(Drafts, ComeBackUntilRestoredOrSaved) {
    StateFiles files;
    std::string error;
    {
        Drafts first(files);
        first.TakeUp();
        first.Drop({"a.jpg", "dropped"});
        EXPECT_TRUE(first.Write(&error)); // and the power goes
    }
    for (int run = 0; run < 2; ++run) { // seen or not: a good end alone forgets nothing
        Drafts next(files);
        EXPECT_EQ(next.TakeUp(), (std::vector<Draft>{{"a.jpg", "dropped"}}));
        ASSERT_NE(next.TakenUpFor("a.jpg"), nullptr);
        EXPECT_EQ(next.TakenUpFor("b.jpg"), nullptr);
        EXPECT_TRUE(next.EndRun(&error));
    }
    Drafts restored(files);
    restored.TakeUp();
    restored.Restored("dropped");
    restored.Set(DraftPlace::Box, {"a.jpg", "dropped and more"});
    EXPECT_TRUE(restored.EndRun(&error));
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"a.jpg", "dropped and more"}}));
    Drafts saved(files);
    saved.TakeUp();
    saved.Restored("dropped and more");
    saved.Saved("dropped and more, edited");
    EXPECT_TRUE(saved.Write(&error));
    EXPECT_TRUE(files.OnDisk().empty());
}

TEST(Drafts, AFileThatIsNoneOfOursIsPutAside) {
    StateFiles files;
    files.folder.Write("unsaved_notes", "draft 5 4\na.jpg\ntext\nrubbish");
    std::string error;
    Drafts drafts(files);
    EXPECT_EQ(drafts.TakeUp(), (std::vector<Draft>{{"a.jpg", "text"}}));
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(BytesOf(files.folder.Path() + "/unsaved_notes.1"), "draft 5 4\na.jpg\ntext\nrubbish");
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"a.jpg", "text"}}));
}

TEST(Drafts, WriteOnlyWhatChanged) {
    StateFiles files;
    int writes = 0;
    files.onChange = [&](const std::string&, const std::string&) { return ++writes, ""; };
    std::string error;
    Drafts drafts(files);
    drafts.TakeUp();
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(writes, 0);
    drafts.Set(DraftPlace::Box, {"a.jpg", "text"});
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(writes, 1);
    files.onChange = [](const std::string&, const std::string&) { return "full"; };
    drafts.Forget(DraftPlace::Box);
    EXPECT_FALSE(drafts.Write(&error));
    EXPECT_EQ(error, "full");
}

} // namespace
} // namespace tarn::testing
