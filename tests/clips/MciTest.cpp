#include "ClipFiles.h"
#include "support/TestFolder.h"

#include "clips/ClipFrame.h"
#include "clips/ClipPlayer.h"
#include "clips/Mci.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tarn::testing {
namespace {

struct Clip {
    TestFolder folder;
    std::unique_ptr<Mci> mci = MakeMci();
    QImage shown;

    Clip() {
        mci->onFrame = [this](const QImage& frame) { shown = frame; };
    }
    std::string Send(const std::string& command) {
        const Mci::Reply reply = mci->Send(command);
        return reply.code == 0 ? reply.text : "code " + std::to_string(reply.code);
    }
    // The frame on show, and the position that is told.
    std::string Shown() {
        return std::to_string(NumberOf(shown)) + " " + Send("status VidClip position");
    }
};

struct Kind {
    const char* name;
    const char* options;
    const char* filter;
    const char* inputs = "";
};

constexpr char kSound[] = "-f lavfi -i sine=duration=3";

class MciClips : public ::testing::TestWithParam<Kind> {};

} // namespace

TEST_P(MciClips, ShowTheFrameThatTheyTell) {
    constexpr int kFrames = 60;
    Clip clip;
    const Kind& kind = GetParam();
    const std::string path = clip.folder.Path() + "/a \"b\"%" + kind.name;
    if (path.ends_with(".ser"))
        clip.folder.Write(path.substr(clip.folder.Path().size() + 1), NumberedSer(kFrames));
    else
        ASSERT_TRUE(MakeClip(path, kFrames, kind.options, kind.filter, kind.inputs));
    ASSERT_EQ(clip.Send("Open \"" + path + "\" alias VidClip"), "") << clip.mci->ErrorText(1);
    EXPECT_EQ(clip.Send("status VidClip length"), "60");
    EXPECT_EQ(clip.Send("Window VidClip handle 7"), "");
    EXPECT_EQ(clip.Send("Where VidClip destination"), "0 0 128 64");
    EXPECT_EQ(clip.Send("Put VidClip destination at 0 0 128 64"), "");
    clip.Send("Play VidClip to 4");
    EXPECT_EQ(clip.Shown(), "4 4");
    for (const int frame : {5, 6, 7, 6, 30, 29, 28, 59, 58, 1, 0, 12}) {
        EXPECT_EQ(clip.Send("seek VidClip to " + std::to_string(frame)), "");
        EXPECT_EQ(clip.Shown(), std::to_string(frame) + " " + std::to_string(frame));
    }
    clip.Send("seek VidClip to start");
    EXPECT_EQ(clip.Shown(), "0 0");
    clip.Send("seek VidClip to end");
    EXPECT_EQ(clip.Shown(), "59 60");
    EXPECT_EQ(clip.Send("close VidClip"), "");
    EXPECT_EQ(clip.Send("status VidClip position"), "code 3");
    EXPECT_EQ(NumberOf(FirstFrame(path, 64)), 0);
    EXPECT_EQ(FirstFrame(path, 64).size(), QSize(64, 32));
}

// Telephones film as they are held, and write beside it how that was.
TEST(Mci, ShowsClipsAsTheyWereHeld) {
    for (const auto& [turn, size, back] : {std::tuple{90, QSize(64, 128), -90.0},
                                           {180, QSize(128, 64), -180.0},
                                           {270, QSize(64, 128), 90.0}}) {
        Clip clip;
        const std::string path = clip.folder.Path() + "/a.mp4";
        ASSERT_TRUE(MakeClip(path, 8, "-c:v libx264 -pix_fmt yuv420p"));
        TurnClip(path, turn);
        ASSERT_EQ(clip.Send("Open \"" + path + "\" alias VidClip"), "");
        clip.Send("Window VidClip handle 7");
        const std::string sides =
            "0 0 " + std::to_string(size.width()) + " " + std::to_string(size.height());
        EXPECT_EQ(clip.Send("Where VidClip destination"), sides);
        clip.Send("Put VidClip destination at " + sides);
        clip.Send("Play VidClip to 4");
        EXPECT_EQ(clip.shown.size(), size) << turn;
        const auto asFilmed = [&](const QImage& frame) {
            return frame.transformed(QTransform().rotate(back));
        };
        EXPECT_EQ(NumberOf(asFilmed(clip.shown)), 4) << turn;
        clip.Send("seek VidClip to 6");
        EXPECT_EQ(NumberOf(asFilmed(clip.shown)), 6) << turn;
        EXPECT_EQ(FirstFrame(path, 64).size(), size / 2) << turn;
    }
}

TEST(Mci, AnswersEveryCommand) {
    Clip clip;
    const std::string path = clip.folder.Write("a.ser", NumberedSer(10));
    for (const auto& [command, reply] : std::vector<std::pair<std::string, std::string>>{
             {"status VidClip length", "code 3"},
             {"close VidClip", "code 3"},
             {"Open " + path + " alias VidClip", "code 2"},
             {"Open \"" + path + "\" alias Other", "code 2"},
             {"Open \"", "code 2"},
             {"Open \"" + path + "\" alias VidClip", ""},
             {"status VidClip length", "10"},
             {"status VidClip record frame rate", "25000"},
             {"status VidClip", "code 2"},
             {"Where VidClip destination", "0 0 128 64"},
             {"Window VidClip handle 12", ""},
             {"Window VidClip handle", "code 2"},
             {"Put VidClip destination at 0 0 64 32", ""},
             {"Put VidClip destination at 0 0 64", "code 2"},
             {"Put VidClip destination at 0 0 0 -1", "code 2"},
             {"Play VidClip to 4", ""},
             {"status VidClip position", "4"},
             {"Play VidClip to 99", ""},
             {"status VidClip position", "9"},
             {"Play VidClip to x", "code 2"},
             {"seek VidClip to end", ""},
             {"status VidClip position", "10"},
             {"seek VidClip to 99", ""},
             {"status VidClip position", "10"},
             {"seek VidClip to -5", ""},
             {"status VidClip position", "0"},
             {"seek VidClip to", "code 2"},
             {"seek VidClip to 1 2", "code 2"},
             {"pause VidClip", ""},
             {"stop VidClip", ""},
             {"play VidClip", "code 2"},
             {"close VidClip", ""},
             {"close VidClip", "code 3"}})
        EXPECT_EQ(clip.Send(command), reply) << command;
    EXPECT_EQ(clip.shown.size(), QSize(64, 32));
    EXPECT_EQ(NumberOf(clip.shown), 0);
}

TEST(Mci, AWaitCanBeBrokenOff) {
    Clip clip;
    const std::string path = clip.folder.Path() + "/a.avi";
    ASSERT_TRUE(MakeClip(path, 30, "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p"));
    int asked = 0;
    clip.mci->onWait = [&asked] { return ++asked < 1; };
    EXPECT_EQ(clip.Send("Open \"" + path + "\" alias VidClip"), "code 1");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(clip.mci->ErrorText(1), "The clip was broken off");
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, MciClips,
    ::testing::Values(Kind{"sun.ser", "", ""},
                      Kind{"h264.mp4", "-c:v libx264 -g 250 -bf 3 -pix_fmt yuv420p", "null"},
                      Kind{"mpeg4.avi", "-c:v mpeg4 -q:v 2 -g 50", "null"},
                      Kind{"mjpeg.avi", "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p", "null"},
                      Kind{"fast.mp4",
                           "-c:v libx264 -g 250 -bf 3 -pix_fmt yuv420p -fps_mode passthrough "
                           "-enc_time_base 1/24000",
                           "settb=1/24000,setpts=N*100"},
                      Kind{"sound.mkv", "-c:v libx264 -g 250 -pix_fmt yuv420p -c:a aac -shortest",
                           "null", kSound},
                      Kind{"late.mp4", "-c:v libx264 -g 250 -pix_fmt yuv420p -c:a aac -shortest",
                           "setpts=PTS+0.12/TB", kSound},
                      Kind{"wide.mkv", "-c:v libx264 -g 250 -pix_fmt yuv420p", "setsar=2"},
                      Kind{"stream.ts", "-c:v mpeg2video -q:v 2 -g 15 -bf 2", "null"},
                      Kind{"program.mpg", "-c:v mpeg2video -q:v 2 -g 15 -bf 2", "null"},
                      Kind{"reordered.avi", "-c:v mpeg4 -q:v 2 -g 50 -bf 2", "null"},
                      Kind{"variable.mkv", "-c:v libx264 -g 250 -pix_fmt yuv420p -fps_mode vfr",
                           "setpts=(N+floor(N*N/20))/25/TB"}),
    [](const auto& info) {
        std::string name = info.param.name;
        return name.substr(0, name.find('.'));
    });

TEST(Mci, PlaysToTheEndAndPauses) {
    for (const char* name : {"a.avi", "a.ser"}) {
        Clip clip;
        const std::string path = clip.folder.Write(name, NumberedSer(30));
        if (path.ends_with(".avi")) {
            ASSERT_TRUE(MakeClip(path, 30, "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p"));
        }
        ASSERT_EQ(clip.Send("Open \"" + path + "\" alias VidClip"), "");
        EXPECT_EQ(clip.Send("status VidClip record frame rate"), "25000");
        QElapsedTimer time;
        time.start();
        const auto playTo = [&](int frame) {
            clip.Send("Play VidClip");
            while (std::stoi(clip.Send("status VidClip position")) < frame && time.elapsed() < 8000)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        };
        playTo(5);
        clip.Send("pause VidClip");
        const std::string paused = clip.Send("status VidClip position");
        EXPECT_GE(std::stoi(paused), 5);
        EXPECT_LT(std::stoi(paused), 30);
        EXPECT_EQ(clip.Shown(), paused + " " + paused);
        playTo(30);
        EXPECT_EQ(clip.Shown(), "29 30") << name;
    }
}

TEST(Mci, TellsWhatCannotBeOpened) {
    Clip clip;
    EXPECT_EQ(clip.Send("Open \"" + clip.folder.Path() + "/none.avi\" alias VidClip"), "code 275");
    for (const auto& [name, bytes] :
         {std::pair<const char*, const char*>{"text.avi", "no clip"}, {"empty.avi", ""}}) {
        clip.folder.Write(name, bytes);
        EXPECT_EQ(clip.Send("Open \"" + clip.folder.Path() + "/" + name + "\" alias VidClip"),
                  "code 1");
        EXPECT_NE(clip.mci->ErrorText(1), "");
        EXPECT_EQ(clip.Send("Play VidClip to 4"), "code 3");
    }
    EXPECT_EQ(clip.Send("nonsense"), "code 3");
    EXPECT_EQ(clip.mci->ErrorText(99), "");
}

// Nobody writes into it, and the grid of the list waits for its picture when it ends.
TEST(Mci, PipesAreToldAndNeverWaitedFor) {
    for (const char* name : {"a.avi", "a.ser"}) {
        const TestFolder folder;
        const std::string path = folder.Path() + "/" + name;
        ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
        std::string error;
        EXPECT_EQ(OpenClip(
                      path, [] { return true; }, error),
                  nullptr);
        EXPECT_EQ(error, "Not a file but a pipe");
        EXPECT_TRUE(FirstFrame(path, 64).isNull());
    }
}

TEST(Mci, ListsThatNameOtherFilesAreNoClips) {
    const TestFolder folder;
    ASSERT_TRUE(MakeClip(folder.Path() + "/real.avi", 5, "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p"));
    const std::string real = "real.avi\n";
    for (const std::string& list :
         {"ffconcat version 1.0\nfile " + real, "#EXTM3U\n#EXTINF:1,\n" + real}) {
        const std::string path = folder.Write("list.avi", list);
        std::string error;
        EXPECT_EQ(OpenClip(
                      path, [] { return true; }, error),
                  nullptr);
        EXPECT_NE(error, "");
        EXPECT_TRUE(FirstFrame(path, 64).isNull());
    }
}

} // namespace tarn::testing
