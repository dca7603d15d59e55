#include "navigation/ClassFilter.h"
#include "navigation/FolderHistory.h"
#include "navigation/NameFilter.h"

#include <gtest/gtest.h>

namespace tarn::testing {
namespace {

SelectionState Lists() {
    SelectionState s;
    s.PictureTypes = "*.jpg";
    s.VideoTypes = "*.avi";
    s.WebTypes = "*.html";
    return s;
}

TEST(ClassFilter, EachBoxBuildsItsOwnString) {
    const SelectionState s = Lists();
    ClassBoxes all{true, true, true, true, true, true};
    EXPECT_EQ(TypesFromPictures(s, all), "*.jpg;*.avi;*.fits;*.fit;*.cr2"); // no web, no text
    EXPECT_EQ(TypesFromVideos(s, all), "*.avi;*.jpg;*.fits;*.fit;*.cr2");
    EXPECT_EQ(TypesFromWeb(s, all), "*.html;*.jpg;*.avi;*.fits;*.fit;*.cr2");
    all.pictures = false;
    EXPECT_EQ(TypesFromPictures(s, all), "*.avi;*.fits;*.fit;*.cr2");
    all = {true, true, false};
    EXPECT_EQ(TypesFromWeb(s, all), "*.jpg;*.avi");
}

TEST(ClassFilter, EmptyListsLeaveNoSeparators) {
    SelectionState s = Lists();
    s.VideoTypes.clear();
    EXPECT_EQ(TypesFromVideos(s, {false, true}), "");
    EXPECT_EQ(TypesFromVideos(s, {true, true}), "*.jpg");
    EXPECT_EQ(TypesFromPictures(s, {true, true}), "*.jpg");
    s.PictureTypes.clear();
    EXPECT_EQ(TypesFromPictures(s, {true, true, false, true}), "*.fits;*.fit");
    EXPECT_EQ(TypesFromTexts({true, true, true}, "", "*.avi", ""), "*.avi");
    EXPECT_EQ(TypesFromTexts({false, true, false}, "*.jpg", "", "*.css"), "");
    s.VideoListCheck = s.WebListCheck = 1;
    EXPECT_EQ(StartFileTypes(s), "*.html");
}

TEST(ClassFilter, AnUntickGoesBackToTheTick) {
    std::string types = "*.jpg";
    std::string fits;
    std::string text;
    types = TypesAfterTick(true, types, "*.fit", fits);
    types = TypesAfterTick(true, types, "*.txt", text);
    EXPECT_EQ(types, "*.jpg;*.fit;*.txt");
    EXPECT_EQ(TypesAfterTick(false, types, "*.fit", fits), "*.jpg"); // the texts are gone, too
    EXPECT_EQ(TypesAfterTick(false, "*.bmp", "*.txt", text), "*.jpg;*.fit");
}

TEST(ClassFilter, APatternHoldsNoSeparator) {
    EXPECT_TRUE(IsPattern(""));
    EXPECT_TRUE(IsPattern("*.jpg;*M31?.tif"));
    EXPECT_FALSE(IsPattern("*.jpg;../*.tif"));
}

TEST(NameFilter, SixteenBoxesAtMost) {
    std::string pattern;
    for (int i = 0; i < 17; ++i) pattern += (i ? ";*." : "*.") + std::to_string(i);
    const auto captions = FilterCaptions(pattern);
    ASSERT_EQ(captions.size(), 16U);
    EXPECT_EQ(captions.back(), "*.15");
    EXPECT_TRUE(FilterCaptions("").empty());

    std::array<bool, kFilterBoxes> ticked{};
    EXPECT_EQ(TickedPattern(captions, ticked), "*.none");
    ticked[0] = ticked[15] = true;
    EXPECT_EQ(TickedPattern(captions, ticked), "*.0;*.15");
    EXPECT_EQ(TickedPattern({"*.a"}, ticked), "*.a"); // a box that is not shown does not count
}

TEST(NameFilter, PresetsAsTheyAreStored) {
    const std::vector<std::string> first{"*VMC*"};
    EXPECT_EQ(PresetsOf(""), first);
    EXPECT_EQ(PresetsOf("*M31*"), first); // without ";" it holds none
    EXPECT_EQ(PresetsOf("*M31*;*M42*;"), (std::vector<std::string>{"*M31*", "*M42*"}));
    EXPECT_EQ(PresetsOf("*M31*;*M42*"), (std::vector<std::string>{"*M31*"})); // cut off
    EXPECT_EQ(StoredPresets({"*M31*", "*M42*"}), "*M31*;*M42*;");
    EXPECT_EQ(StoredPresets({}), "");
}

std::string Entries(const SelectionState& s) {
    std::string text;
    for (int i = 1; i <= s.HistHigh; ++i)
        text += s.HistFolderPath[static_cast<std::size_t>(i)] +
                std::to_string(s.HistFileIndex[static_cast<std::size_t>(i)]) +
                (i == s.HistCur ? "* " : " ");
    return text;
}

TEST(FolderHistory, ANewFolderIsInsertedBehindTheCursor) {
    SelectionState s;
    int row = 1;
    const auto enter = [&](const char* path) {
        EXPECT_TRUE(RecordFolder(s, path));
        *s.HistRow() = row++;
        return Entries(s);
    };
    EXPECT_EQ(enter("a"), "a1* ");
    EXPECT_FALSE(HasFolderBefore(s));
    EXPECT_EQ(enter("b"), "a1 b2* ");
    EXPECT_EQ(enter("c"), "a1 b2 c3* ");
    s.HistCur = 1; // back, back
    EXPECT_EQ(enter("d"), "a1 d4* b2 c3 ");
    EXPECT_TRUE(HasFolderAfter(s));
    EXPECT_EQ(enter("d"), "a1 d4 d5* b2 c3 "); // the same folder is a new entry
    s.HistCur = 5;
    EXPECT_EQ(enter("e"), "a1 d4 d5 b2 c3 e6* ");
    EXPECT_FALSE(HasFolderAfter(s));
}

TEST(FolderHistory, TheLastEntriesOfAFullOne) {
    SelectionState s;
    for (int i = 1; i < kHistoryLimit; ++i) EXPECT_TRUE(RecordFolder(s, "f"));
    EXPECT_EQ(s.HistHigh, kHistoryLimit - 1);
    EXPECT_FALSE(RecordFolder(s, "full"));
    EXPECT_EQ(s.HistCur, kHistoryLimit); // stays raised
    EXPECT_EQ(s.HistHigh, kHistoryLimit - 1);
    EXPECT_EQ(s.HistRow(), &s.HistFileIndex.back());
    EXPECT_FALSE(RecordFolder(s, "full"));
    EXPECT_EQ(s.HistRow(), nullptr);
}

} // namespace
} // namespace tarn::testing
