#include "AppDesk.h"

#include "app/window/frmMain.h"
#include "imaging/PicturesAhead.h"
#include "platform/QtText.h"

#include <QDialog>
#include <QProcess>

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
    EXPECT_EQ(Unconnected(d.c), std::vector<std::string>{}); // each has its command
}

TEST(Window, KeysStepAndEveryPlaceShowsTheSameFile) {
    AppDesk d;
    d.AddPictures({"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg", "f.jpg"});
    d.Start();
    const auto after = [&](Qt::Key key) {
        d.Key(key);
        return d.Current();
    };
    EXPECT_EQ(after(Qt::Key_N), "b.jpg");
    EXPECT_EQ(after(Qt::Key_Space), "c.jpg");
    EXPECT_EQ(after(Qt::Key_PageDown), "b.jpg");
    EXPECT_EQ(after(Qt::Key_End), "f.jpg");
    EXPECT_TRUE(d.c.LastLabel->isVisible());
    EXPECT_EQ(after(Qt::Key_Home), "a.jpg");
    EXPECT_FALSE(d.c.LastLabel->isVisible());
    EXPECT_EQ(after(Qt::Key_Comma), "f.jpg");
    EXPECT_EQ(after(Qt::Key_Period), "a.jpg");
    d.Key(Qt::Key_R);
    EXPECT_TRUE(d.s.ImageRotatedRight);
    d.Key(Qt::Key_T);
    QTest::keyClicks(d.c.NotesBox, "nnpp ");
    EXPECT_EQ(d.Current(), "a.jpg"); // letters in a box are letters
    EXPECT_EQ(d.c.NotesBox->toPlainText(), QStringLiteral("nnpp "));
}

TEST(Window, TheConsoleCompanionPrintsTheSameRows) {
    AppDesk d;
    const std::string picture = JpegBytes(TellTale(60, 40));
    const std::vector<std::string> paths{
        d.folder.Write("a.jpg", Behind(CanonPicture())), d.folder.Write("b.jpg", picture),
        d.folder.Write("c.jpg", Behind(NikonPicture())), d.folder.Write("d.jpg", picture)};
    d.Start();
    std::string rows;
    QStringList arguments{QStringLiteral("info")};
    for (const std::string& path : paths) {
        arguments << QString::fromStdString(path);
        EXPECT_EQ(d.s.Filename, path);
        const bool dated = d.s.NoExif == false;
        EXPECT_EQ(d.c.List1->count(), dated ? 13 : 3);
        EXPECT_EQ(d.c.MpixelText->text(), QStringLiteral("0.0 Mp"));
        EXPECT_EQ(d.c.FileSizeText->text().toStdString(), d.s.FileSizeText);
        EXPECT_EQ(d.c.FileDateText->text().isEmpty(), !dated);
        rows += "== " + path + "\n" + d.Panel();
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
    std::filesystem::remove(d.At("f_gone.jpg"));
    std::vector<std::string> errors;
    for (int i = 0; i < 6; ++i) {
        d.Key(Qt::Key_N);
        errors.push_back(d.Error());
    }
    EXPECT_EQ(d.Current(), "g_good.jpg");
    EXPECT_TRUE(d.s.ImageLoaded);
    const std::vector<std::string> about{"b_empty.jpg", "c_cut.jpg", "d_text.jpg", "e_huge.jpg",
                                         "e_huge.jpg"}; // the name before
    for (std::size_t i = 0; i < about.size(); ++i)
        EXPECT_TRUE(errors[i].ends_with(" - " + about[i])) << errors[i];
    EXPECT_EQ(errors.back(), "");
}

TEST(Window, EmptyAndUnreadableFoldersSayWhatIsTheMatter) {
    AppDesk d;
    d.Start();
    const auto hint = [](const AppDesk& desk) {
        return desk.c.Picture1->accessibleDescription().toStdString();
    };
    EXPECT_TRUE(d.c.Picture1->Picture().isNull());
    EXPECT_EQ(hint(d).find("No files to show in " + d.folder.Path()), 0U) << hint(d);
    EXPECT_FALSE(d.c.TextNumOf->isVisible());
    EXPECT_FALSE(d.c.RotateRightButton->isEnabled()); // nothing to turn
    AppDesk locked;
    locked.files.onAsk = [](const std::string& verb, const std::string&) {
        return verb == "names" ? "locked" : "";
    };
    locked.Start();
    EXPECT_EQ(hint(locked), "The folder " + locked.folder.Path() +
                                " cannot be read. Choose another in the tree.");
}

TEST(Window, TooltipsShowTheirTextAsItIs) {
    AppDesk d;
    EXPECT_EQ(d.c.FCheck->toolTip(), QStringLiteral("List FIT & FITS files"));
    EXPECT_EQ(ToToolTip("/a & <b>"), QStringLiteral("<qt>/a &amp; &lt;b&gt;</qt>"));
}

TEST(Window, APathHandedOverIsOpenedLikeAnArgument) {
    AppDesk d;
    d.AddPicture("a.jpg");
    TestFolder other;
    const std::string second = other.Write("b.jpg", JpegBytes(TellTale(60, 40)));
    d.house.Open(second); // while the program loads: kept until it has
    d.Start();
    EXPECT_EQ(d.s.Filename, second);
    d.house.Open("\"" + d.At("a.jpg") + "\"");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.house.Open(other.Path() + "/none.jpg"); // its folder on the first row, and what is missing
    EXPECT_EQ(d.s.Filename, second);
    EXPECT_EQ(d.Said(), "'" + other.Path() + "/none.jpg' does not exist");
    // Under a question the current file stays what it is.
    QDialog question(&d.house.window);
    question.setModal(true);
    question.show();
    d.house.Open(d.folder.Path());
    EXPECT_EQ(d.s.Filename, second);
    question.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Current() == "a.jpg"; }));
}

TEST(Window, ARealChangeOfSizeRedrawsOnceAfterItRests) {
    AppDesk d;
    d.AddPicture("a.jpg", 3000, 2000);
    d.Start();
    const QSize before = d.c.Picture1->Picture().size();
    for (int i = 1; i <= 5; ++i)
        d.house.window.resize(d.house.window.width() + 20, d.house.window.height() + 20);
    QCoreApplication::processEvents();
    EXPECT_EQ(d.c.Picture1->Picture().size(), before);
    QTest::qWait(400);
    const QSize after = d.c.Picture1->Picture().size();
    EXPECT_GT(after.height(), before.height());
    EXPECT_LE(after.height(), d.s.PreviewHeight);
    EXPECT_EQ(d.house.window.SplitterTop() % 224, 0); // as it is kept
    d.house.window.resize(10, 10);                    // the design size is the least
    EXPECT_EQ(d.house.window.size(), d.house.window.DesignSize());
}

TEST(Window, ClosingItInARunOfThumbnailsKeepsTheSettings) {
    AppDesk d;
    for (int i = 0; i < 20; ++i) d.AddPicture(std::to_string(i) + ".jpg");
    d.Start();
    ASSERT_TRUE(d.c.VCheck->isChecked());
    d.events.onPump = [&d] {
        if (!d.s.BatchRuns) return;
        EXPECT_FALSE(d.c.VCheck->isChecked());
        d.events.onPump = {};
        d.house.window.close();
    };
    d.c.GenerateThumbButton->trigger();
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_EQ(d.settings->Read("videolist_check", ""), "1");
    EXPECT_LT(ReadTree(d.At("thumbnails")).size(), 20U);
}

TEST(Window, TheListsFontGrowsByHalves) {
    AppDesk d;
    d.Start();
    const double size = d.c.FileListBox->font().pointSizeF();
    d.c.FileListFontIncButton->click();
    EXPECT_EQ(d.c.FileListBox->font().pointSizeF(), size + 0.5);
    d.c.FileListFontRedButton->click();
    EXPECT_EQ(d.c.FileListBox->font().pointSizeF(), size);
    EXPECT_EQ(d.Said(), "FileListBox font set to " + QString::number(size).toStdString());
}

TEST(Window, AShowOrABatchKeepsTheKeyboard) {
    AppDesk d;
    d.AddPicture("a.jpg", 60, 40);
    d.Start();
    d.c.NotesBox->setFocus();
    for (bool* runs : {&d.s.SlideViewing, &d.s.BatchRuns}) {
        *runs = true;
        d.house.shell.FocusPane();
        *runs = false;
        EXPECT_EQ(d.house.window.focusWidget(), d.c.NotesBox);
    }
    d.house.shell.FocusPane();
    EXPECT_EQ(d.house.window.focusWidget(), d.c.Picture1);
}

std::string Title(const char* name) {
    return AppDesk::Up(name)->windowTitle().toStdString();
}

TEST(Windows, FollowTheSelectionAndStepIt) {
    AppDesk d;
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) d.AddPicture(name, 1200, 800);
    d.Start();
    d.Key(Qt::Key_V);
    d.Key(Qt::Key_1);
    d.Key(Qt::Key_B);
    EXPECT_TRUE(AppDesk::Up("frmBrightness"));
    d.Key(Qt::Key_N);
    EXPECT_EQ(Title("FrmPic").substr(0, 5), "b.jpg");
    EXPECT_EQ(Title("FrmPic").substr(Title("FrmPic").size() - 6), "2 of 3");
    EXPECT_EQ(Title("frmOnetoOne"), "Tarn View - 1:1  " + d.At("b.jpg"));
    QTest::keyClick(AppDesk::Up("FrmPic"), Qt::Key_Down);
    EXPECT_EQ(d.Current(), "c.jpg");
    EXPECT_EQ(Title("FrmPic").substr(0, 5), "c.jpg");
    auto* view = d.In<QWidget>("frmOnetoOne", "OnePicture2");
    QTest::keyClick(view, Qt::Key_Up);
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(Title("FrmPic").substr(0, 5), "b.jpg");

    AppDesk::Up("FrmPic")->resize(300, 200);
    AppDesk::Up("FrmPic")->move(50, 60);
    QTest::keyClick(view, Qt::Key_T);
    d.house.lifecycle.Exit_Click();
    EXPECT_EQ(d.settings->Read("widthpic_value", ""), "4500");
    EXPECT_EQ(d.settings->Read("toppic_position", ""), "900");
    EXPECT_EQ(d.settings->Read("one_to_one_info", ""), "True");
}

// The times of a picture are set while it is shown: the way back finds it decoded all the same.
TEST(Windows, ThePictureBeforeIsNotDecodedAgain) {
    AppDesk d;
    const std::string dated = Behind(CanonPicture(), TellTale(900, 600));
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"}) d.folder.Write(name, dated);
    const std::string a = d.At("a.jpg");
    const auto written = d.files.ModifiedTime(a, nullptr);
    d.Start();
    EXPECT_NE(d.files.ModifiedTime(a, nullptr), written);
    const QSize pane(d.s.PreviewWidth, d.s.PreviewHeight);
    const auto known = d.house.ahead.Take(a, pane);
    ASSERT_TRUE(known);
    d.Key(Qt::Key_N);
    d.house.ahead.WaitUntilDone();
    d.Key(Qt::Key_P);
    EXPECT_EQ(d.house.ahead.Take(a, pane), known);
    d.Key(Qt::Key_N);
    d.Key(Qt::Key_P);
    EXPECT_EQ(d.house.ahead.Take(a, pane), known);
}

} // namespace
} // namespace tarn::testing
