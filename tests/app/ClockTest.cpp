// A camera's clock that was wrong, put right in all pictures of the camera.
#include "AppDesk.h"

#include "common/dates.h"
#include "panel/ClockPictures.h"

#include <QTableWidget>

namespace tarn::testing {
namespace {

std::string Of(const char* model, const std::string& date) {
    return Photo(ExifBuilder(Endian::Little)
                     .Ascii(271, "Maker")
                     .Ascii(272, model)
                     .ExifDirectory()
                     .Ascii(36867, date));
}

struct ClockDesk : AppDesk {
    ClockDesk() {
        settings->Write("filedate_auto", "False");
        folder.Write("a.jpg", Of("One", "2024:03:31 01:30:00"));
        folder.Write("b.jpg", Of("One", "2024:02:28 23:59:59"));
        folder.Write("c.jpg", Of("Two", "2024:03:31 01:30:00"));
        folder.Write("d.jpg", "no camera data");
    }
    std::string Label(const char* label) const {
        return In<QLabel>("frmClock", label)->text().toStdString();
    }
    std::string Cell(int row, int column) const {
        return In<QTableWidget>("frmClock", "ClockTable")->item(row, column)->text().toStdString();
    }
    void Tell(const char* time) const {
        In<QLineEdit>("frmClock", "ClockTrueText")->setText(QString::fromLatin1(time));
    }
    std::string Date(const char* name) const { return ReadClockPicture(files, At(name)).date; }
};

TEST(Clock, MovesAllPicturesOfTheCameraAndGoesBack) {
    ClockDesk d;
    const Tree before = ReadTree(d.folder.Path());
    const auto time = d.files.ModifiedTime(d.At("b.jpg"));
    d.Start();
    d.c.SetClockButton->trigger();
    ASSERT_TRUE(d.Up("frmClock"));
    EXPECT_EQ(d.Label("ClockErrorLabel"), "The clock was right");
    EXPECT_FALSE(d.In<QPushButton>("frmClock", "ClockSetButton")->isEnabled());
    d.Tell("2024:03:31 02:30:03");
    EXPECT_EQ(d.Label("ClockErrorLabel"),
              "The clock was 1 h 0 min 3 s behind: summer time that was not set, or not set back");
    EXPECT_EQ(d.Label("ClockLabel"), "2 pictures of this camera; 2 of other cameras or without a "
                                     "date that can be changed");
    EXPECT_EQ(d.Cell(1, 0), "b.jpg");
    EXPECT_EQ(d.Cell(1, 2), "2024:02:29 01:00:02");
    d.Press("frmClock", "ClockSetButton");
    EXPECT_FALSE(d.Up("frmClock"));
    EXPECT_EQ(d.Said(), "The dates of 2 pictures were set");
    EXPECT_EQ(d.Date("a.jpg"), "2024:03:31 02:30:03");
    EXPECT_EQ(d.Date("b.jpg"), "2024:02:29 01:00:02");
    EXPECT_EQ(d.Date("c.jpg"), "2024:03:31 01:30:00");
    EXPECT_EQ(d.files.ModifiedTime(d.At("b.jpg")), ToFileTime({2024, 2, 29, 1, 0, 2}));
    d.c.UndoButton->trigger();
    EXPECT_EQ(ReadTree(d.folder.Path()), before);
    EXPECT_EQ(d.files.ModifiedTime(d.At("b.jpg")), time);
}

TEST(Clock, WhatCannotBeSetIsToldAndTheRestIsSet) {
    ClockDesk d;
    d.Start();
    d.c.SetClockButton->trigger();
    d.Tell("2024-03-30 01:30:00");
    d.folder.Write("a.jpg", Of("One", "2024:01:01 00:00:00")); // by another program, meanwhile
    d.Press("frmClock", "ClockSetButton");
    EXPECT_EQ(d.Date("a.jpg"), "2024:01:01 00:00:00");
    EXPECT_EQ(d.Date("b.jpg"), "2024:02:27 23:59:59");
    EXPECT_TRUE(d.Up("frmFaults"));
    d.GoTo("d.jpg");
    d.c.SetClockButton->trigger();
    EXPECT_FALSE(d.Up("frmClock"));
    EXPECT_EQ(d.Said(), "'d.jpg' tells no clock: no date of a camera stands in it");
}

TEST(Clock, ItsErrorHasItsUsualCause) {
    for (const auto& [seconds, cause] :
         {std::pair<std::int64_t, std::string>{3600 + 40,
                                               "summer time that was not set, or not set back"},
          {-12 * 3600, "morning and evening exchanged"},
          {7 * 3600 - 30, "the zone of another place"},
          {-(5 * 3600 + 1800), "the zone of another place, of those with half an hour"},
          {86400 * 3 + 10, "another day set by mistake"},
          {20 * 365 * 86400LL + 5000, "a clock that was never set, or lost its battery"},
          {95, "a clock that has drifted"},
          {3 * 3600 + 1000, ""}})
        EXPECT_EQ(UsualCauseOf(seconds), cause) << seconds;
    EXPECT_EQ(ClockErrorText(-90061), "1 d 1 h 1 min 1 s ahead");
}

} // namespace
} // namespace tarn::testing
