#include "video/VideoText.h"

#include <gtest/gtest.h>

using namespace tarn;

TEST(VideoText, TakesRepliesApart) {
    std::string text = "0 0 640 480";
    EXPECT_EQ(GetFirstWord(text), "0 ");
    EXPECT_EQ(text, "0 640 480");
    text = "word";
    EXPECT_EQ(GetFirstWord(text), "word");
    EXPECT_EQ(text, "");
    text = "Well, then";
    EXPECT_EQ(GetFirstWord(text), "Well ");
    EXPECT_EQ(text, ",then");
    text = "? x";
    EXPECT_EQ(GetFirstWord(text), "? ");
    ClipNumbers clip;
    TakeSize("0 0 640 480", clip);
    EXPECT_EQ(clip.width, 640);
    EXPECT_EQ(clip.height, 480);
    TakeSize("none", clip);
    EXPECT_EQ(clip.width, 0);
}

TEST(VideoText, TellsTimes) {
    ClipNumbers clip;
    EXPECT_EQ(PlayingTime(clip), "0.0 seconds");
    clip.frameRate = 25;
    EXPECT_EQ(PlayingTime(clip), "0.0 seconds"); // one frame
    clip.lastFrame = 25 * 65;
    EXPECT_EQ(PlayingTime(clip), "1.1 minutes");
    clip.lastFrame = 25 * 60;
    EXPECT_EQ(PlayingTime(clip), "1.0 minutes");
    clip.frameRate = 10;
    clip.lastFrame = 599;
    EXPECT_EQ(PlayingTime(clip), "59.9 seconds");
    EXPECT_EQ(SummaryLines("/none/a.mov", "x", 1500000)[3],
              "     Size: 1,500,000   1,465 KB   1 MB");
    EXPECT_EQ(SummaryLines("/none/a.mov", "x", 2560)[3], "     Size: 2,560   3 KB   0 MB");
    EXPECT_EQ(SummaryLines("/none/a.mov", "x", 2621440)[3],
              "     Size: 2,621,440   2,560 KB   3 MB");
    EXPECT_EQ(ClipLines("/none/a.avi", clip, 123456)[6], "        Size: 121 KB");
}
