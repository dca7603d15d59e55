#include "SlideDesk.h"

#include <QCheckBox>

namespace tarn::testing {
namespace {

constexpr int kIdle = keys::kNone;

struct ManyDesk : SlideDesk {
    using Click = void (SlideRoom::*)();
    // What the titles under the areas name at each round: "abcd bcde".
    std::string Many(Click click, const std::vector<int>& keycodes, int start = 0) {
        controls.FileListBox->Select(start);
        pump.script.clear();
        seen.clear();
        for (const int key : keycodes)
            pump.script.push_back([this, key] {
                seen.push_back(Areas());
                room.SlideKeyUp(key);
            });
        (room.*click)();
        std::string all;
        for (const std::string& each : seen) all += (all.empty() ? "" : " ") + each;
        return all;
    }
    std::string Areas() {
        std::string names;
        for (const SlideLine& line : room.Window()->Lines()) names += line.text.substr(0, 1);
        return names;
    }
    std::string LastLine() { return room.Window()->Lines().back().text; }
};

const std::vector<std::string> kTen{"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg",
                                    "f.jpg", "g.jpg", "h.jpg", "i.jpg", "j.jpg"};

TEST(ManySlides, StepsAndPagesOfFour) {
    using namespace keys;
    ManyDesk d;
    d.Fill(kTen);
    const auto four = &SlideRoom::Slides4Button_Click;
    EXPECT_EQ(d.Many(four, {kDown, 'N', kSpace, kUp, 'P', kIdle}), "abcd bcde cdef defg cdef bcde");
    EXPECT_EQ(d.Current(), "b.jpg"); // the first of those shown
    EXPECT_EQ(d.Many(four, {kUp, kUp, kDown, kPageDown, kPageUp, kHome, kEnd, kPageDown, kIdle}),
              "abcd jabc ijab jabc defg jabc abcd ghij abcd");
    EXPECT_EQ(d.Many(four, {kPageUp, kIdle}, 2), "cdef ijab");
    EXPECT_EQ(d.Many(&SlideRoom::Slides2Button_Click, {kDown, kPageDown, kPageUp, kEnd, 'X'}),
              "ab bc de bc ij");
    EXPECT_EQ(d.state.SlidesPerPage, 0);
}

TEST(ManySlides, OneStepDecodesOnePicture) {
    ManyDesk d;
    d.Fill(kTen);
    d.controls.FileListBox->Select(0);
    std::vector<int> decoded;
    const auto step = [&](int key) {
        d.pump.script.push_back([&, key] {
            int sum = 0;
            for (const auto& [name, times] : d.display.decoded) sum += times;
            decoded.push_back(sum);
            d.display.decoded.clear();
            d.room.SlideKeyUp(key);
        });
    };
    for (const int key : {keys::kDown, keys::kUp, int('C'), int('T'), int('B'), keys::kPageDown})
        step(key);
    step(kIdle);
    d.room.Slides4Button_Click();
    EXPECT_EQ(decoded, (std::vector<int>{5, 1, 1, 0, 0, 0, 4})); // the first with its selection
}

// A second reading of a file that has gone would leave an enlargement of too few pixels.
TEST(ManySlides, TheDecodeOfTheSelectionServesTheArea) {
    QImage shown[2];
    for (const bool goes : {false, true}) {
        ManyDesk d;
        d.Fill({"a.jpg", "b.jpg"});
        for (const char* name : {"a.jpg", "b.jpg"})
            d.folder.Write(name, JpegBytes(TellTale(800, 600)));
        d.state.PreviewWidth = 40;
        d.state.PreviewHeight = 30;
        d.display.whenLoaded = [&] {
            if (goes && d.state.SlideViewing) std::filesystem::remove(d.state.Filename);
        };
        d.pump.script.push_back([&] { shown[goes] = d.room.Window()->Backing().copy(); });
        d.room.Slides2VButton_Click();
        EXPECT_EQ(d.state.PreviewWidth, 40);
    }
    ASSERT_FALSE(shown[0].isNull());
    EXPECT_EQ(shown[0], shown[1]);
}

TEST(ManySlides, FewerPicturesThanAreas) {
    ManyDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    const auto four = &SlideRoom::Slides4Button_Click;
    EXPECT_EQ(d.Many(four, {keys::kDown, keys::kUp, keys::kPageDown, keys::kEnd, kIdle}, 1),
              "bca cab bca bca abc");
    ManyDesk one;
    one.Fill({"a.jpg"});
    EXPECT_EQ(one.Many(&SlideRoom::SlidesC2Button_Click, {keys::kDown, keys::kHome, kIdle}),
              "a a a");
    ManyDesk none;
    none.Fill({"a.tif", "b.tif"});
    EXPECT_EQ(none.Many(four, {kIdle}), "");
    EXPECT_FALSE(none.state.SlideViewing);
}

TEST(ManySlides, PassesOverVideosAndWhatCannotBeRead) {
    ManyDesk d;
    d.Fill({"a.jpg", "b.avi", "c.jpg", "d.tif", "e.jpg", "f.jpg", "g.jpg"});
    EXPECT_EQ(d.Many(&SlideRoom::Slides2Button_Click,
                     {keys::kDown, keys::kDown, keys::kUp, keys::kUp, kIdle}),
              "ac ce ef ce ac");
    EXPECT_TRUE(d.Called("error Cannot read d.tif"));
    // A picture that goes while the show runs never stands under another's name.
    d.pump.script.clear();
    d.pump.script.push_back([&] {
        std::filesystem::remove(d.folder.Path() + "/e.jpg");
        d.room.SlideKeyUp(keys::kDown);
    });
    d.pump.script.push_back([&] {
        EXPECT_EQ(d.Areas(), "cf");
        std::filesystem::remove(d.folder.Path() + "/c.jpg");
        d.controls.FileListBox->Refresh();
        d.room.SlideDone();
    });
    d.controls.FileListBox->Select(0);
    d.room.Slides2Button_Click();
    EXPECT_EQ(d.Current(), "f.jpg"); // the first of those shown that is still there
    d.pump.script.push_back([&] {
        for (const char* name : {"/a.jpg", "/f.jpg", "/g.jpg"})
            std::filesystem::remove(d.folder.Path() + name);
        d.room.SlideKeyUp(keys::kDown);
    });
    d.pump.script.push_back([] { FAIL() << "an emptied folder ends the show"; });
    d.controls.FileListBox->Select(0);
    d.room.Slides2Button_Click();
    EXPECT_FALSE(d.state.SlideViewing);
}

TEST(ManySlides, ComparesWithAPictureThatStays) {
    ManyDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg", "d.jpg"});
    const auto compare = &SlideRoom::SlidesC2Button_Click;
    EXPECT_EQ(d.Many(compare,
                     {keys::kDown, keys::kDown, keys::kDown, keys::kUp, keys::kHome, keys::kEnd,
                      keys::kPageUp, kIdle},
                     1),
              "bc bd ba bb ba ba bd bc");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_FALSE(d.state.SlideCompare);
    d.pump.script.clear();
    for (const int mouse : {1, 2, 2})
        d.pump.script.push_back([&, mouse] {
            d.seen.push_back(d.Areas());
            d.room.Signals()->SlideMouse = mouse;
        });
    d.seen.clear();
    d.pump.script.push_back([&] { d.seen.push_back(d.Areas()); });
    d.room.SlidesC2VButton_Click();
    EXPECT_EQ(d.seen, (std::vector<std::string>{"bc", "bd", "bc", "bb"}));
}

TEST(ManySlides, TurnsAsTheSelectionDidOrLaysEveryPictureDown) {
    ManyDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    d.folder.Write("b.jpg", JpegBytes(TellTale(40, 60)));
    d.display.turnedRight = "a.jpg";
    d.display.upsideDown = "c.jpg";
    // Areas of 396 x 396 on the 800 x 800 of this screen.
    const auto look = [&](std::vector<std::string>& quarters, const std::vector<QRect>& places) {
        d.pump.script.push_back([&, places] {
            for (const QRect& p : places)
                quarters.push_back(d.QuartersAt(p.left(), p.top(), p.width(), p.height()));
        });
    };
    std::vector<std::string> turned;
    look(turned, {{182, 162, 40, 60}, {596, 162, 40, 60}, {172, 578, 60, 40}});
    d.controls.FileListBox->Select(0);
    d.room.Slides4Button_Click();
    EXPECT_EQ(turned, (std::vector<std::string>{"bryg", "rgby", "ybgr"}));
    std::vector<std::string> lying;
    look(lying, {{172, 172, 60, 40}, {586, 172, 60, 40}});
    d.room.Slides4LButton_Click();
    EXPECT_EQ(lying, (std::vector<std::string>{"rgby", "gyrb"}));
}

TEST(ManySlides, TheBrightnessReachesThePicturesThatStand) {
    ManyDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    std::vector<int> greens; // of the red quarters of both pictures
    const auto look = [&](int brightness) {
        d.pump.script.push_back([&, brightness] {
            for (const int left : {182, 596})
                greens.push_back(d.room.Window()->Backing().pixelColor(left, 182).green());
            d.display.SetBrightness(brightness);
        });
    };
    for (const int brightness : {50, 0, 0}) look(brightness);
    d.display.decoded.clear();
    d.room.Slides4Button_Click();
    ASSERT_EQ(greens.size(), 6U);
    for (const std::size_t i : {2U, 3U}) EXPECT_GT(greens[i], greens[0] + 100);
    for (const std::size_t i : {1U, 4U, 5U}) EXPECT_NEAR(greens[i], greens[0], 3);
    EXPECT_EQ(d.display.decoded["b.jpg"], 1);
}

TEST(ManySlides, TheListHoldsPicturesAloneForTheTimeOfTheShow) {
    ManyDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    d.controls.VCheck->setChecked(true);
    d.state.VideoListCheck = 1;
    d.state.FileTypes = "*.jpg;*.avi;*.fit";
    d.pump.script.push_back([&] {
        EXPECT_FALSE(d.controls.VCheck->isChecked());
        EXPECT_FALSE(d.controls.WCheck->isChecked());
        d.state.FileTypes = "*.jpg";
        d.room.SlideDone();
        EXPECT_TRUE(d.controls.VCheck->isChecked()); // before any settings are saved
        d.room.SlideDone();
    });
    d.room.Slides4Button_Click();
    EXPECT_TRUE(d.controls.VCheck->isChecked());
    EXPECT_FALSE(d.controls.WCheck->isChecked());
    EXPECT_EQ(d.state.VideoListCheck, 1);
    EXPECT_EQ(d.state.FileTypes, "*.jpg;*.avi;*.fit");
    EXPECT_EQ(d.Current(), "a.jpg");
}

} // namespace
} // namespace tarn::testing
