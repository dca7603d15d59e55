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
    VideoState video;
    TakeSize("0 0 640 480", video);
    EXPECT_EQ(video.VideoWidth, 640);
    EXPECT_EQ(video.VideoHeight, 480);
    TakeSize("none", video);
    EXPECT_EQ(video.VideoWidth, 0);
}

TEST(VideoText, TellsTimes) {
    VideoState video;
    EXPECT_EQ(PlayingTime(video), "0.0 seconds");
    video.VideoFrameRate = 25;
    EXPECT_EQ(PlayingTime(video), "0.0 seconds"); // one frame
    video.VideoLastFrame = 25 * 65;
    EXPECT_EQ(PlayingTime(video), "1.1 minutes");
    video.VideoLastFrame = 25 * 60;
    EXPECT_EQ(PlayingTime(video), "1.0 minutes");
    video.VideoFrameRate = 10;
    video.VideoLastFrame = 599;
    EXPECT_EQ(PlayingTime(video), "59.9 seconds");
    EXPECT_EQ(SummaryLines("/none/a.mov", "x", 1500000)[3],
              "     Size: 1,500,000   1,465 KB   1 MB");
    EXPECT_EQ(SummaryLines("/none/a.mov", "x", 2560)[3], "     Size: 2,560   3 KB   0 MB");
    EXPECT_EQ(SummaryLines("/none/a.mov", "x", 2621440)[3],
              "     Size: 2,621,440   2,560 KB   3 MB");
    EXPECT_EQ(ClipLines("/none/a.avi", video, 123456)[6], "        Size: 121 KB");
}
