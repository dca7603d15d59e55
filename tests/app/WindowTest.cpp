#include "AppDesk.h"

#include "platform/QtText.h"
#include "shell/window/frmMain.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace tarn::testing {
namespace {

TEST(Window, EveryControlAndEntryBearsItsNameOnce) {
    AppDesk d;
    std::multiset<std::string> names;
    for (const QObject* each : d.house.window.findChildren<QObject*>())
        names.insert(each->objectName().toStdString());
    for (const ControlRow& row : ControlRows()) EXPECT_EQ(names.count(row.name), 1U) << row.name;
    for (const char* name : {"ThumbSizeButton_15", "VideoButton_3", "SlideTextColorButton_0",
                             "CopyCameraButton_1", "PopupSetFileDatesButton", "vbuSplitter",
                             "FrameExif", "FrameNotes", "VideoFrame", "StatusBar1"})
        EXPECT_EQ(names.count(name), 1U) << name;
    EXPECT_EQ(d.house.controls.SyncDatesButton->text(),
              QStringLiteral("Synchroize File dates to Picture dates..."));
}

// Commands that later rooms bring; the last of them empties this list.
TEST(Window, WhatHasNoCommandYetIsDisabled) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    const std::vector<std::string> without = Unconnected(d.house.controls);
    for (const std::string& name : without) {
        const auto* entry = d.house.window.findChild<QAction*>(QString::fromStdString(name));
        const auto* button = d.house.window.findChild<QWidget*>(QString::fromStdString(name));
        EXPECT_FALSE(entry ? entry->isEnabled() : button->isEnabled()) << name;
    }
    const std::vector<std::string> expected{
#include "Unconnected.inc"
    };
    EXPECT_EQ(without, expected);
}

TEST(Window, KeysStepAndEveryPlaceShowsTheSameFile) {
    AppDesk d;
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg", "f.jpg"})
        d.AddPicture(name);
    d.Start();
    const auto after = [&](Qt::Key key) {
        d.Key(key);
        return d.Current();
    };
    EXPECT_EQ(after(Qt::Key_N), "b.jpg");
    EXPECT_EQ(after(Qt::Key_Space), "c.jpg");
    EXPECT_EQ(after(Qt::Key_PageDown), "b.jpg");
    EXPECT_EQ(after(Qt::Key_End), "f.jpg");
    EXPECT_TRUE(d.house.controls.LastLabel->isVisible());
    EXPECT_EQ(after(Qt::Key_Home), "a.jpg");
    EXPECT_FALSE(d.house.controls.LastLabel->isVisible());
    EXPECT_EQ(after(Qt::Key_Comma), "f.jpg");
    EXPECT_EQ(after(Qt::Key_Period), "a.jpg");
    d.Key(Qt::Key_R);
    EXPECT_TRUE(d.house.state.ImageRotatedRight);
    d.Key(Qt::Key_T);
    QTest::keyClicks(d.house.controls.NotesBox, "nnpp ");
    EXPECT_EQ(d.Current(), "a.jpg"); // letters in a box are letters
    EXPECT_EQ(d.house.controls.NotesBox->toPlainText(), QStringLiteral("nnpp "));
}

TEST(Window, TheConsoleCompanionPrintsTheSameRows) {
    AppDesk d;
    const std::string picture = JpegBytes(TellTale(60, 40));
    const auto with = [&](std::string head) { // camera data in front, the picture behind
        return head.substr(0, head.size() - 2) + picture.substr(2);
    };
    const std::vector<std::string> paths{
        d.folder.Write("a.jpg", with(CanonPicture())), d.folder.Write("b.jpg", picture),
        d.folder.Write("c.jpg", with(NikonPicture())), d.folder.Write("d.jpg", picture)};
    d.Start();
    std::string rows;
    QStringList arguments{QStringLiteral("info")};
    for (const std::string& path : paths) {
        arguments << QString::fromStdString(path);
        EXPECT_EQ(d.house.state.Filename, path);
        const bool dated = d.house.state.NoExif == false;
        EXPECT_EQ(d.house.controls.List1->count(), dated ? 13 : 3);
        EXPECT_EQ(d.house.controls.MpixelText->text(), QStringLiteral("0.0 Mp"));
        EXPECT_EQ(d.house.controls.FileSizeText->text().toStdString(), d.house.state.FileSizeText);
        EXPECT_EQ(d.house.controls.FileDateText->text().isEmpty(), !dated);
        rows += "== " + path + "\n";
        for (int row = 0; row < d.house.controls.List1->count(); ++row) rows += d.Row(row) + "\n";
        d.Key(Qt::Key_N);
    }
    QProcess tarn;
    tarn.start(QStringLiteral(TARN_PROGRAM), arguments);
    ASSERT_TRUE(tarn.waitForFinished());
    EXPECT_EQ(tarn.readAllStandardOutput().toStdString(), rows);
}

TEST(Window, BrokenFilesNeverStopTheRun) {
    AppDesk d;
    const std::string good = JpegBytes(TellTale(60, 40));
    d.folder.Write("a_good.jpg", good);
    d.folder.Write("b_empty.jpg", "");
    d.folder.Write("c_cut.jpg", good.substr(0, good.size() / 2));
    d.folder.Write("d_text.jpg", "no picture at all");
    std::string huge = good;
    const auto frame = huge.find("\xFF\xC0");
    huge.replace(frame + 5, 4, "\xFF\xFF\xFF\xFF");
    d.folder.Write("e_huge.jpg", huge);
    d.folder.Write("f_gone.jpg", good);
    d.folder.Write("g_good.jpg", good);
    d.Start();
    std::filesystem::remove(d.folder.Path() + "/f_gone.jpg");
    std::vector<std::string> errors;
    for (int i = 0; i < 6; ++i) {
        d.Key(Qt::Key_N);
        const QLabel& error = *d.house.controls.Label_error;
        errors.push_back(error.isVisible() ? error.text().toStdString() : "");
    }
    EXPECT_EQ(d.Current(), "g_good.jpg");
    EXPECT_TRUE(d.house.state.ImageLoaded);
    const std::vector<std::string> about{"b_empty.jpg", "c_cut.jpg", "d_text.jpg", "e_huge.jpg",
                                         "e_huge.jpg"}; // the name before
    for (std::size_t i = 0; i < about.size(); ++i)
        EXPECT_TRUE(
            QString::fromStdString(errors[i]).endsWith(QString::fromStdString(" - " + about[i])))
            << errors[i];
    EXPECT_EQ(errors.back(), "");

    // Nothing of another file stands beside one that is gone, and the next step goes on from it.
    d.house.navigation.SelectRow(0);
    d.house.navigation.SelectRow(5);
    EXPECT_EQ(d.Row(0), "none");
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Current(), "g_good.jpg");
}

TEST(Window, EmptyAndUnreadableFoldersSayWhatIsTheMatter) {
    AppDesk d;
    d.Start();
    const auto hint = [](const AppDesk& desk) {
        return desk.house.controls.Picture1->accessibleDescription().toStdString();
    };
    EXPECT_TRUE(d.house.controls.Picture1->Picture().isNull());
    EXPECT_EQ(hint(d).find("No files to show in " + d.folder.Path()), 0U) << hint(d);
    EXPECT_FALSE(d.house.controls.TextNumOf->isVisible());
    EXPECT_FALSE(d.house.controls.RotateRightButton->isEnabled()); // nothing to turn
    AppDesk locked;
    locked.files.unreadable = locked.folder.Path();
    locked.Start();
    EXPECT_EQ(hint(locked), "The folder " + locked.folder.Path() +
                                " cannot be read. Choose another in the tree.");
}

TEST(Window, TooltipsShowTheirTextAsItIs) {
    AppDesk d;
    EXPECT_EQ(d.house.controls.FCheck->toolTip(), QStringLiteral("List FIT & FITS files"));
    EXPECT_EQ(ToToolTip("/a & <b>"), QStringLiteral("<qt>/a &amp; &lt;b&gt;</qt>"));
}

TEST(Window, APathHandedOverIsOpenedLikeAnArgument) {
    AppDesk d;
    d.AddPicture("a.jpg");
    TestFolder other;
    const std::string second = other.Write("b.jpg", JpegBytes(TellTale(60, 40)));
    d.house.Open(second); // while the program loads: kept until it has
    d.Start();
    EXPECT_EQ(d.house.state.Filename, second);
    d.house.Open("\"" + d.folder.Path() + "/a.jpg\"");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.house.Open(other.Path() + "/none.jpg"); // its folder on the first row, and what is missing
    EXPECT_EQ(d.house.state.Filename, second);
    EXPECT_EQ(d.house.controls.FileDateText->text().toStdString(),
              "'" + other.Path() + "/none.jpg' does not exist");
    // Under a question the current file stays what it is.
    QDialog question(&d.house.window);
    question.setModal(true);
    question.show();
    d.house.Open(d.folder.Path());
    EXPECT_EQ(d.house.state.Filename, second);
    question.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Current() == "a.jpg"; }));
}

TEST(Window, ARealChangeOfSizeRedrawsOnceAfterItRests) {
    AppDesk d;
    d.AddPicture("a.jpg", 3000, 2000);
    d.Start();
    const QSize before = d.house.controls.Picture1->Picture().size();
    for (int i = 1; i <= 5; ++i)
        d.house.window.resize(d.house.window.width() + 20, d.house.window.height() + 20);
    QCoreApplication::processEvents();
    EXPECT_EQ(d.house.controls.Picture1->Picture().size(), before);
    QTest::qWait(400);
    const QSize after = d.house.controls.Picture1->Picture().size();
    EXPECT_GT(after.height(), before.height());
    EXPECT_LE(after.height(), d.house.state.PreviewHeight);
    EXPECT_EQ(d.house.window.SplitterTop() % 224, 0); // as it is kept
    d.house.window.resize(10, 10);                    // the design size is the least
    EXPECT_EQ(d.house.window.size(), d.house.window.DesignSize());
}

TEST(Window, OneAndTwoTimesExcludeEachOther) {
    AppDesk d;
    d.AddPicture("a.jpg", 60, 40);
    d.Start();
    d.house.controls.TwoXcheck->click();
    EXPECT_EQ(d.house.controls.SizeText->text(), QStringLiteral("120 x 80"));
    EXPECT_EQ(d.Row(2).substr(0, 48), "        Size: 0.0 Megapixel - 60 x 40 - 1 KB");
    d.house.controls.OneXcheck->click();
    EXPECT_FALSE(d.house.controls.TwoXcheck->isChecked());
    EXPECT_EQ(d.house.controls.SizeText->text(), QStringLiteral("60 x 40"));
}

TEST(Window, TheListsFontGrowsByHalves) {
    AppDesk d;
    d.Start();
    const double size = d.house.controls.FileListBox->font().pointSizeF();
    d.house.controls.FileListFontIncButton->click();
    EXPECT_EQ(d.house.controls.FileListBox->font().pointSizeF(), size + 0.5);
    const auto said = [&] { return d.house.controls.FileDateText->text(); };
    EXPECT_EQ(said(), QStringLiteral("FileListBox font set to %1").arg(size + 0.5));
    d.house.controls.FileListFontRedButton->click();
    EXPECT_EQ(d.house.controls.FileListBox->font().pointSizeF(), size);
    EXPECT_EQ(said(), QStringLiteral("FileListBox font set to %1").arg(size));
}

} // namespace
} // namespace tarn::testing
