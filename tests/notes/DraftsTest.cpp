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

TEST(Drafts, StayUntilTheirTextIsSaved) {
    StateFiles files;
    std::string error;
    Drafts drafts(files);
    EXPECT_TRUE(drafts.TakeUp().empty());
    drafts.Set(DraftPlace::Box, {"b.jpg", "in the box"});
    drafts.Set(DraftPlace::Buffer, {"a.jpg", "dropped"});
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"b.jpg", "in the box"}, {"a.jpg", "dropped"}}));
    drafts.Saved("in the box");
    EXPECT_TRUE(drafts.Write(&error));
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"a.jpg", "dropped"}}));

    // After a crash the next run takes it up; it stays through a further crash, also beside new
    // ones, and is not offered again after a good end.
    for (int run = 0; run < 2; ++run) {
        Drafts next(files);
        EXPECT_EQ(next.TakeUp(), (std::vector<Draft>{{"a.jpg", "dropped"}}));
        EXPECT_TRUE(next.Write(&error));
    }
    Drafts last(files);
    last.TakeUp();
    last.Set(DraftPlace::Box, {"c.jpg", "new"});
    EXPECT_TRUE(last.Write(&error));
    EXPECT_EQ(files.OnDisk().size(), 2U);
    EXPECT_TRUE(last.EndRun(&error));
    EXPECT_EQ(files.OnDisk(), (std::vector<Draft>{{"c.jpg", "new"}}));

    Drafts saved(files);
    saved.TakeUp();
    saved.Saved("something\r\n\r\nnew"); // the offered text became part of a note
    EXPECT_TRUE(saved.Write(&error));
    EXPECT_TRUE(files.OnDisk().empty());
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
    EXPECT_TRUE(drafts.Write(&error) && drafts.Write(&error));
    EXPECT_EQ(writes, 1);
    files.onChange = [](const std::string&, const std::string&) { return "full"; };
    drafts.Forget(DraftPlace::Box);
    EXPECT_FALSE(drafts.Write(&error));
    EXPECT_EQ(error, "full");
}

} // namespace
} // namespace tarn::testing
