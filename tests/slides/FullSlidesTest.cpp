#include "SlideDesk.h"

#include "desk/state/Replay.h"

#include <QCheckBox>
#include <QPushButton>

namespace tarn::testing {
namespace {

constexpr int kIdle = keys::kNone;

std::string Flags(const PreviewTurns& turns) {
    std::string flags;
    if (turns.ImageTurnedHalf) flags += "half";
    if (turns.ImageRotatedRight) flags += "right";
    if (turns.ImageRotatedLeft) flags += "left";
    if (turns.ImageMirrored) flags += "mirrored";
    if (turns.ImageFliped) flags += "flipped";
    return flags;
}

TEST(FullSlides, EveryMoveOfBothLayouts) {
    using namespace keys;
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg", "f.jpg", "g.jpg"});
    EXPECT_EQ(d.Show({kDown, 'N', kSpace, kUp, 'P', 'O', kLeft, kIdle}),
              "a b c d c b b b"); // the arrow turns
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.Show({kUp, kHome, kEnd, kPageDown, kPageUp, 'X'}), "a g a g e g");
    d.state.SlideAltArrowKeys = true;
    EXPECT_EQ(d.Show({kRight, kRight, kLeft, kDown, kUp, kIdle}, 1), "b c d c c c");
    EXPECT_EQ(d.controls.FileListBox->CurrentRow(), 2);
    EXPECT_FALSE(d.state.SlideViewing);
    EXPECT_EQ(d.room.Window(), nullptr);
}

TEST(FullSlides, WhatChangesForItsTimeComesBack) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    d.Do([&] {
        EXPECT_TRUE(d.state.SlideViewing);
        EXPECT_EQ(d.state.SlidesPerPage, 1);
        d.controls.SlideButton->click(); // refused while one runs
    });
    d.Play({'N', keys::kEscape});
    EXPECT_EQ(d.Run(), "a a b");
    for (const char* window : {"main", "filter", "caption"}) {
        EXPECT_EQ(d.Times(std::string(window) + " down"), 1);
        EXPECT_EQ(d.Times(std::string(window) + " up"), 1) << window << " comes back";
    }
    EXPECT_EQ(d.Times("awake"), 1);
    EXPECT_EQ(d.Times("may sleep"), 1);
    EXPECT_EQ(d.calls.back(), "DisplayPicture") << "in the window that is back";
    EXPECT_EQ(d.Current(), "b.jpg");
}

TEST(FullSlides, TurnsComeBackWithTheSamePicture) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    EXPECT_EQ(d.Show({'R', '1', kIdle}), "a a a");
    ASSERT_TRUE(d.display.requested.turns);
    EXPECT_EQ(Flags(*d.display.requested.turns), "left");
    d.Show({'M', 'N', kIdle}); // another picture
    EXPECT_FALSE(d.display.requested.turns);
    // Whatever the keys, the preview's four turns in their order make the same of a picture.
    const int keycodes[] = {'R', 'M', 'L', 'I', '1', 'R', 'M', 'I', 'L', 'L'};
    ImgX turned;
    turned.TakePicture(TellTale(60, 40));
    std::vector<int> played;
    for (const int key : keycodes) {
        if (key == 'M' || key == 'I')
            turned.Mirror(key == 'M' ? 0 : 1);
        else
            turned.Rotate(key == 'R' ? 90 : key == 'L' ? 270 : 180);
        played.push_back(key);
        d.Show(played);
        ImgX again;
        again.TakePicture(TellTale(60, 40));
        ReplayTurns(d.display.requested.turns.value_or(PreviewTurns()), again);
        EXPECT_EQ(again.FullPicture(), turned.FullPicture()) << played.size();
    }
}

TEST(FullSlides, PassesOverWhatIsNoPictureInTheDirectionOfTravel) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.avi", "c.html", "d.jpg", "e.tif", "f.jpg"});
    EXPECT_EQ(d.Show({'N', 'N', 'P', keys::kUp, kIdle}), "a d f d a");
    // The message of the broken one stands when the main window is back.
    EXPECT_EQ(d.calls.back().substr(0, 6), "error ");
    EXPECT_NE(d.calls.back().find(" - e.tif"), std::string::npos);
    d.state.SlideAltArrowKeys = true;
    EXPECT_EQ(d.Show({keys::kLeft, kIdle}, 3), "d d"); // this key is not looked at
    SlideDesk longer;                                  // all four characters count
    longer.state.VideoTypes = "*.mpeg";
    longer.Fill({"a.jpg", "b.jpeg"});
    longer.folder.Write("b.jpeg", JpegBytes(TellTale(60, 40)));
    EXPECT_EQ(longer.Show({'N', kIdle}), "a b");
}

TEST(FullSlides, EndsWhenNothingCanBeShown) {
    SlideDesk d;
    d.Fill({"a.tif", "b.avi", "c.tif"});
    EXPECT_EQ(d.Show({kIdle}, 0), "");
    EXPECT_TRUE(d.Called("main up"));
    d.pump.script.clear();
    d.controls.FileListBox->SelectEveryRow(); // the selected files too
    EXPECT_EQ(d.Run(), "");
    SlideDesk emptied;
    emptied.Fill({"a.jpg", "b.jpg"});
    emptied.Do([&] {
        for (const char* name : {"/a.jpg", "/b.jpg"})
            std::filesystem::remove(emptied.folder.Path() + name);
        emptied.room.SlideKeyUp('N');
    });
    EXPECT_EQ(emptied.Run(), "a");
    EXPECT_FALSE(emptied.state.SlideViewing);
    SlideDesk none;
    none.Fill({});
    none.room.SlideButton_Click();
    none.Fill({"a.jpg"});
    none.state.Kind = FileKind::Clip;
    none.room.SlideButton_Click();
    none.state.Kind = FileKind::Page;
    none.room.SlideButton_Click();
    EXPECT_EQ(none.Called("main down"), false);
}

TEST(FullSlides, SelectedFilesAloneFromTheFirstAndTheListStaysWhereItWas) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg", "d.jpg"});
    for (const int row : {3, 1, 2}) d.controls.FileListBox->Select(row);
    d.Play({'N', 'N', 'N'});
    EXPECT_EQ(d.Run(), "b c d");
    EXPECT_EQ(d.Current(), "c.jpg"); // the current row at the start
    EXPECT_EQ(d.controls.FileListBox->SelectedRows(), (std::vector<int>{1, 2, 3}));
}

TEST(FullSlides, DeletesDownToTheLastPicture) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    const int del = keys::kDelete;
    d.Play({'N', del, del, kIdle, del, 'N'});
    EXPECT_EQ(d.Run(), "a b c a a");
    EXPECT_EQ(d.controls.FileListBox->Count(), 0);
    EXPECT_TRUE(d.Called("EnableListCommands"));
    d.pump.script.clear();

    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    for (const int row : {0, 2}) d.controls.FileListBox->Select(row);
    d.deletes.declines = true;
    d.Play({del});
    d.Do([&] { d.deletes.declines = false; });
    d.Play({del, kIdle});
    EXPECT_EQ(d.Run(), "a a a c");
    SlideDesk moved;
    moved.Fill({"c.jpg", "d.jpg", "e.jpg"});
    moved.Do([&] { // another program brings one in front
        moved.folder.Write("b.jpg", JpegBytes(TellTale(60, 40)));
        moved.room.SlideKeyUp(del);
    });
    moved.Play({kIdle});
    EXPECT_EQ(moved.Run(), "c d");
}

TEST(FullSlides, CopiesAreMarkedOnceAndOnlyWhereTheyHappened) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    std::vector<std::string> titles;
    const auto note = [&](int key) {
        d.Do([&, key] {
            titles.push_back(d.Title());
            d.room.SlideKeyUp(key);
        });
    };
    for (const int key : {int('Y'), int('O'), int('U'), int('N')}) note(key);
    d.Do([&] { d.copies.answer.done = false; }); // b.jpg, and no word why
    note('Y');
    d.Do([&] {
        titles.push_back(d.Title());
        d.copies.answer.text = "Image copy failed for 'b.jpg'";
        d.copies.answer.fault = "No space left on device";
        d.copies.answer.copyOk = "COPY FAILED - No space left on device";
        d.room.SlideKeyUp('Y');
    });
    note(keys::kNone);
    d.Run();
    ASSERT_EQ(titles.size(), 7U);
    EXPECT_EQ(titles[6], "COPY FAILED - No space left on device   ");
    EXPECT_EQ(titles[1], titles[0].substr(0, titles[0].size() - 3) + "  COPIED   ");
    EXPECT_EQ(titles[2], titles[0]);
    EXPECT_EQ(titles[3], titles[1]);
    EXPECT_EQ(titles[5], titles[4]);
    EXPECT_TRUE(d.Called("CopyImage"));
    EXPECT_TRUE(d.Called("CMImage"));
}

TEST(FullSlides, ByItselfAndAKeyOnlyEndsTheWait) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    d.state.SlideDelay = 1;
    // Each slide: one round of keys, then five looks at the clock.
    d.Play({kIdle});
    for (int i = 0; i < 5; ++i) d.Do([] {});
    EXPECT_EQ(d.Run(), "a a a a a a");
    EXPECT_EQ(d.Current(), "b.jpg");
    d.pump.slept = 0;
    d.Do([] {});
    d.Play({keys::kUp}); // in the wait: forward
    d.Do([] {});
    d.Do([&] { d.room.SlideDone(); });
    EXPECT_EQ(d.Run(), "b b c c");
    EXPECT_LT(d.pump.slept, 1000);
    EXPECT_EQ(d.Current(), "c.jpg");
}

TEST(FullSlides, SoundsOnTheLastAndOnAll) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg"});
    d.state.BeepAllSlide = true;
    d.Show({'N', kIdle});
    EXPECT_EQ(d.Times("play out picture.wav"), 2);
    d.calls.clear();
    d.state.BeepLastSlide = true;
    d.Show({'N', kIdle});
    EXPECT_EQ(d.Times("play out picture.wav"), 1);
    EXPECT_EQ(d.Times("play out picture_last.wav"), 1);
}

TEST(FullSlides, KeysThatChangeBrightnessViewsAndLook) {
    SlideDesk d;
    d.Fill({"a.jpg", "b.jpg", "c.jpg"});
    for (QAction* row : d.controls.SlideTextColorButton) Connect(row, [] {});
    const int f1 = keys::kF1;
    d.Play({f1 + 5, f1 + 6, f1 + 4, f1 + 3, f1 + 6, f1});
    d.Play({'D', 'D', 'D', 'T', 'F', 'C', 'A', 'N', 'N', f1 + 2, kIdle});
    EXPECT_EQ(d.Run(), "a a a a a a a a a a a a a a a b b");
    Calls brightness;
    for (const std::string& call : d.calls)
        if (call.substr(0, 10) == "brightness") brightness.push_back(call);
    EXPECT_EQ(brightness, (Calls{"brightness 1", "brightness 6", "brightness 5", "brightness 0",
                                 "brightness 5"}));
    EXPECT_TRUE(d.Called("help 2"));
    EXPECT_TRUE(d.Called("Adjust"));
    EXPECT_TRUE(d.Called("ResetB"));
    EXPECT_EQ(d.state.SlideNotesMode, 0);
    EXPECT_EQ(d.state.SlideTextColorIndex, 1);
    EXPECT_EQ(d.state.SlideFontIndex, 2);
    EXPECT_NE(d.lastTitle, ""); // the font shows it again

    d.navigation.views = {2, 1, 0};
    d.navigation.view = 2;
    EXPECT_EQ(d.Show({keys::kComma, keys::kComma, keys::kPeriod, kIdle}), "a b c b");
    EXPECT_EQ(d.navigation.view, 1);
    d.navigation.views = {1}; // none before it
    d.navigation.view = 0;
    d.state.SlideClear = true; // which reads the picture again
    d.calls.clear();
    d.display.SetBrightness(5);
    EXPECT_EQ(d.Show({keys::kComma, 'T', kIdle}, 1), "b b b");
    EXPECT_EQ(d.Times("SetNotesFilename"), 2);
    EXPECT_TRUE(d.Called("Adjust")); // at the end
}

} // namespace
} // namespace tarn::testing
