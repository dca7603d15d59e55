// File dates and the date inside the picture, on whole files in the whole window.
#include "AppDesk.h"

#include "common/dates.h"

namespace tarn::testing {
namespace {

struct DatesDesk : AppDesk {
    DatesDesk() {
        settings->Write("filedate_auto", "False");
        Put("a.jpg", Dated("2004:06:22 20:15:30"));
        Put("b.jpg", Photo(ExifBuilder(Endian::Little).ExifDirectory().Ascii(271, "Maker")));
        Put("c.jpg", Dated("2005:07:23 01:02:03"));
        Put("d.jpg", "no camera data");
    }
    void Put(const std::string& name, const std::string& bytes) {
        SetFileTime(folder.Write(name, bytes), 2001, 2, 3, 4, 5, 6);
    }
    std::string Time(const std::string& name) const {
        return FormatDateText(FromFileTime(files.ModifiedTime(At(name), nullptr).value_or(0)));
    }
    template <typename Widget> Widget* In(const char* name) const {
        return AppDesk::In<Widget>("frmDate", name);
    }
    void Type(const char* date) const { In<QLineEdit>("SetDateText")->setText(date); }
    void Press(const char* button) const { In<QPushButton>(button)->click(); }
};

constexpr char kUntouched[] = "02/03/2001 4:05:06 AM";

TEST(FileDates, OneFileGetsItsOwnDate) {
    DatesDesk d;
    d.Start();
    EXPECT_TRUE(d.c.PopupSetFileDatesButton->isEnabled());
    d.Key(Qt::Key_F6);
    EXPECT_EQ(d.Time("a.jpg"), "06/22/2004 8:15:30 PM");
    EXPECT_EQ(d.Said(), "UPDATED - File Date set to Picture Date 06/22/2004 8:15:30 PM");
    d.files.Refuse("times", "Permission denied");
    d.Key(Qt::Key_F6);
    EXPECT_EQ(d.Said(), "ERROR - Cannot set File Date, may be Read Only");
    d.Key(Qt::Key_End);
    EXPECT_FALSE(d.c.SetFileDatesButton->isEnabled());
    EXPECT_FALSE(d.c.PopupSetFileDatesButton->isEnabled());
}

TEST(FileDates, WhatIsNoPictureKeepsItsDate) {
    DatesDesk d;
    d.Put("v.avi", "no picture");
    d.Start();
    d.Key(Qt::Key_End);
    EXPECT_EQ(d.s.FileNameOnly, "v.avi");
    EXPECT_FALSE(d.c.SetFileDatesButton->isEnabled());
    EXPECT_FALSE(d.c.FixPictureDateButton->isEnabled());
    EXPECT_FALSE(d.house.info.SetFileDatesButton_Click());
    EXPECT_EQ(d.Time("v.avi"), kUntouched);
}

TEST(FileDates, RangeFromTheCurrentRowToTheLast) {
    DatesDesk d;
    d.Start();
    d.c.SyncDatesButton->trigger(); // declined
    EXPECT_EQ(d.Time("a.jpg"), kUntouched);
    d.Answer({"OK"}, d.c.SyncDatesButton);
    EXPECT_EQ(d.dialogs.shown.back(),
              "Confirm Synchronize|Synchronize file date with picture Date taken\nbeginning with "
              "a.jpg\nand ending with d.jpg\nfor 4 files.");
    EXPECT_EQ(d.Time("a.jpg"), "06/22/2004 8:15:30 PM");
    EXPECT_EQ(d.Time("b.jpg"), "06/22/2004 8:15:30 PM"); // that of the picture before it
    EXPECT_EQ(d.Time("c.jpg"), "07/23/2005 1:02:03 AM");
    EXPECT_EQ(d.Time("d.jpg"), kUntouched);
    EXPECT_EQ(d.Said(), "File dates synchronized to picture dates");
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_EQ(d.Status(), d.At("a.jpg"));
    std::string remaining;
    d.events.onPump = [&] {
        if (!d.s.BatchRuns || !remaining.empty()) return;
        remaining = d.Said();
        d.c.BatchCancelButton->click();
    };
    d.Answer({"OK"}, d.c.SyncDatesButton);
    EXPECT_EQ(remaining, "Files remaining 3");
    EXPECT_EQ(d.Said(), "File dates synchronized to picture dates, cancelled after 0 of 4 files");
}

TEST(DateEditor, WritesNineteenBytesAndTheFileDate) {
    DatesDesk d;
    d.Start();
    const std::string before = BytesOf(d.At("a.jpg"));
    d.c.FixPictureDateButton->trigger();
    EXPECT_EQ(d.In<QLineEdit>("CurrentDateText")->text(), "2004:06:22 20:15:30");
    d.Press("CopyButton");
    d.Press("HourPlusButton");
    d.Press("AddButton");
    d.Press("SetButton");
    std::string expected = before;
    const std::string fresh = "2004:06:22 21:15:31";
    expected.replace(expected.find("2004:06:22"), fresh.size(), fresh);
    EXPECT_EQ(BytesOf(d.At("a.jpg")), expected);
    EXPECT_EQ(d.Time("a.jpg"), "06/22/2004 9:15:31 PM");
    EXPECT_EQ(d.Row(1), "* Picture date: 06/22/2004 9:15:31 PM  Tuesday");
    EXPECT_EQ(d.Said(), "UPDATED - Picture date changed and file date synchronized");
    EXPECT_EQ(d.In<QLineEdit>("CurrentDateText")->text().toStdString(), fresh);
    d.Type("2004:06:22 23:15:31");
    d.Press("HourPlusButton");
    EXPECT_TRUE(d.In<QLabel>("AutoErrorLabel")->isVisible());
    d.In<QCheckBox>("CheckAdvance")->setChecked(true);
    d.Press("SetButton");
    EXPECT_EQ(d.Time("a.jpg"), "06/22/2004 11:15:31 PM");
    EXPECT_EQ(d.In<QLabel>("FileLabel")->text().toStdString(), d.At("b.jpg"));
}

TEST(DateEditor, RefusesWhatIsNoDateAndWhatIsNotItsOwn) {
    DatesDesk d;
    d.Start();
    const Tree before = ReadTree(d.folder.Path());
    d.c.FixPictureDateButton->trigger();
    d.Type("2004:06:22 20:15:300");
    d.Press("SetButton");
    d.Type("2004:06:22 25:15:30");
    d.Press("SetButton");
    d.Type("2004:06:22 00:15:30");
    d.Press("HourMinusButton");
    EXPECT_TRUE(d.In<QLabel>("AutoErrorLabel")->isVisible());
    EXPECT_EQ(d.In<QLineEdit>("SetDateText")->text(), "2004:06:22 00:15:30");
    d.Press("NextButton"); // without a date of its own, the editor shows that of the one before
    EXPECT_EQ(d.In<QLineEdit>("CurrentDateText")->text(), "2004:06:22 20:15:30");
    EXPECT_FALSE(d.In<QPushButton>("SetButton")->isEnabled());
    d.Press("PrevButton");
    EXPECT_TRUE(d.In<QPushButton>("SetButton")->isEnabled());
    EXPECT_EQ(ReadTree(d.folder.Path()), before);

    d.folder.Write("a.jpg", Dated("2009:09:09 09:09:09")); // meanwhile, by another program
    d.Press("SetButton");
    EXPECT_EQ(d.dialogs.shown,
              (Calls{"Tarn_View - Modify Picture Date taken|New Picture Date must be 19 characters "
                     "'yyyy:mm:dd hh:mm:ss'",
                     "Tarn_View - Modify Picture Date taken|New Picture Date has invalid format",
                     "Tarn_View - Modify Picture Date taken|Current Picture Date Verification "
                     "Error\n2009:09:09 09:09:09"}));
    EXPECT_FALSE(d.Up("frmDate"));
    EXPECT_EQ(BytesOf(d.At("a.jpg")), Dated("2009:09:09 09:09:09"));
}

TEST(DateEditor, SaysWhenTheFileDateCannotFollow) {
    DatesDesk d;
    d.Start();
    d.c.FixPictureDateButton->trigger();
    d.Type("2004:13:22 20:15:30"); // only the time must be one
    d.Press("SetButton");
    EXPECT_EQ(d.Row(1), "* Picture date: 13/22/2004 8:15:30 PM  ");
    EXPECT_EQ(d.Said(),
              "UPDATED - Picture date changed, file date not set: the picture's is no date");
    EXPECT_EQ(d.Time("a.jpg").substr(0, 10),
              FormatDateText(FromFileTime(std::time(nullptr))).substr(0, 10));
}

TEST(DateEditor, ReachesThreeThousandBytesAndSaysWhyNotFurther) {
    DatesDesk d;
    const auto at = [](std::uint32_t offset) { // of the date in the file
        return Photo(ExifBuilder(Endian::Little)
                         .ExifDirectory()
                         .DataFrom(offset - 12)
                         .Ascii(36867, "2004:06:22 20:15:30"));
    };
    d.Put("a.jpg", at(2981));
    d.Start();
    d.c.FixPictureDateButton->trigger();
    d.Type("2004:06:22 20:15:31");
    d.Press("SetButton");
    EXPECT_EQ(BytesOf(d.At("a.jpg")), at(2981));
    EXPECT_EQ(d.dialogs.shown.size(), 1U);
    d.Put("c.jpg", at(2980)); // the last place from which it can be read
    d.Press("NextButton");
    d.Press("NextButton");
    d.Press("SetButton");
    EXPECT_EQ(BytesOf(d.At("c.jpg")).substr(2980, 19), "2004:06:22 20:15:31");
    EXPECT_EQ(d.dialogs.shown.size(), 1U);
}

} // namespace
} // namespace tarn::testing
