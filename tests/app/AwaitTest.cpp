// Pictures that take longer than the window may stand still for.
#include "AppDesk.h"

using namespace tarn;
using namespace tarn::testing;

namespace {

using namespace std::chrono_literals;

struct Awaiting : AppDesk {
    void Begin() {
        AddPicture("a.jpg", 60, 40);
        AddPicture("b.jpg", 64, 48);
        AddPicture("c.jpg", 80, 60);
        folder.Write("d.jpg", "\xFF\xD8 no picture");
        folder.Write("e.txt", "a text");
        Start(At("a.jpg"));
        house.ahead.Expect({});
        house.ahead.Expect({}); // what was taken stays for the first
        house.display.SetPatience(0ms);
    }
    void StepTo(const char* name) {
        house.navigation.SelectRow(c.FileListBox->RowOf(name), Stepping());
    }
    QSize Shown() const { return c.Picture1->Picture().size(); }
    void Settle() {
        house.ahead.WaitUntilDone();
        QCoreApplication::processEvents();
    }
};

} // namespace

TEST(Await, TheFileIsTheCurrentOneAtOnceAndItsPictureComesOnceItIsRead) {
    Awaiting d;
    d.Begin();
    const QSize before = d.Shown();
    d.StepTo("b.jpg");
    EXPECT_TRUE(d.Shown().isEmpty());
    EXPECT_EQ(d.s.FileNameOnly, "b.jpg");
    EXPECT_EQ(d.c.List1->count(), 0);
    EXPECT_FALSE(d.c.RotateRightButton->isEnabled());
    EXPECT_EQ(d.s.ImageWidth, 0);
    d.Settle();
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.Shown(), QSize(64, 48));
    EXPECT_TRUE(d.c.RotateRightButton->isEnabled());

    d.StepTo("a.jpg"); // which its neighbour has had decoded
    EXPECT_EQ(d.Shown(), before);
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Await, StepsPassOverWhatIsNotThereYet) {
    Awaiting d;
    d.Begin();
    d.StepTo("b.jpg");
    d.Key(Qt::Key_Down);
    EXPECT_EQ(d.s.FileNameOnly, "c.jpg");
    EXPECT_TRUE(d.Shown().isEmpty());
    d.Settle();
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_EQ(d.Shown(), QSize(80, 60));
}

TEST(Await, OtherCommandsAreMeantForThePictureAndWaitForIt) {
    Awaiting d;
    d.Begin();
    d.StepTo("c.jpg");
    ASSERT_TRUE(d.Shown().isEmpty());
    d.Key(Qt::Key_R);
    EXPECT_EQ(d.Shown(), QSize(60, 80));
    d.Settle();
    EXPECT_EQ(d.Shown(), QSize(60, 80)); // shown once
    EXPECT_EQ(d.Current(), "c.jpg");

    d.house.ahead.Expect({});
    d.house.ahead.Expect({});
    d.StepTo("b.jpg");
    ASSERT_TRUE(d.Shown().isEmpty());
    QTest::mouseClick(d.c.MirrorButton, Qt::LeftButton);
    EXPECT_EQ(d.Shown(), QSize(64, 48));
    EXPECT_TRUE(d.s.ImageMirrored);
}

TEST(Await, WhatCannotBeReadIsToldOnceItIsKnown) {
    Awaiting d;
    d.Begin();
    d.StepTo("d.jpg");
    EXPECT_EQ(d.Error(), "");
    d.Settle();
    EXPECT_NE(d.Error().find("d.jpg"), std::string::npos) << d.Error();
    EXPECT_FALSE(d.Shown().isEmpty()); // the placeholder
    EXPECT_FALSE(d.c.DeletePicButton->isHidden());
}

TEST(Await, NothingComesUpOverAnotherKindOfFile) {
    Awaiting d;
    d.Begin();
    d.c.WCheck->click();
    d.house.display.SetPatience(0ms);
    ASSERT_GE(d.c.FileListBox->RowOf("e.txt"), 0);
    d.StepTo("b.jpg");
    d.StepTo("e.txt");
    d.Settle();
    EXPECT_EQ(d.s.FileNameOnly, "e.txt");
    EXPECT_EQ(int(d.s.Kind), int(FileKind::Text));
}

TEST(Await, NeitherCodeNorAShowNorABatchGoesOnWithoutItsPicture) {
    Awaiting d;
    d.Begin();
    d.GoTo("c.jpg");
    EXPECT_EQ(d.Shown(), QSize(80, 60));
    for (bool* busy : {&d.s.SlideViewing, &d.s.BatchRuns}) {
        *busy = true;
        d.StepTo("b.jpg");
        EXPECT_EQ(d.s.ImageWidth, 64);
        *busy = false;
        d.GoTo("a.jpg");
        d.Settle();
        d.house.ahead.Expect({});
        d.house.ahead.Expect({});
    }
}
