// The folder that is followed while another program adds files to it.
#include "FilesDesk.h"
#include "MadeNight.h"

#include <QScrollBar>

#include <atomic>
#include <chrono>
#include <fstream>
#include <thread>

namespace tarn::testing {
namespace {

struct FollowDesk : FilesDesk {
    FollowDesk() : FilesDesk({"b.jpg", "d.jpg"}) {
        Start(At("d.jpg"));
        house.window.show();
        c.FollowFolderButton->trigger();
    }
    std::string Rows() const {
        std::string rows;
        for (int row = 0; row < c.FileListBox->Count(); ++row)
            rows += c.FileListBox->Text(row) + " ";
        return rows;
    }
    bool Await(const std::string& name) {
        return QTest::qWaitFor([&] { return c.FileListBox->RowOf(name) >= 0; }, 12000);
    }
};

} // namespace

TEST(FollowFolder, ListsWholeFilesAndLeavesTheRestWhereItIs) {
    FollowDesk d;
    EXPECT_TRUE(d.s.FollowFolder);
    d.GoTo("b.jpg");
    d.GoTo("d.jpg");
    const std::string whole = JpegBytes(TellTale(70, 40));
    d.folder.Write("a.jpg", whole.substr(0, whole.size() - 20)); // it is still being written
    d.folder.Write("c.jpg", whole);
    d.folder.Write("e.txt.part", "half");
    ASSERT_TRUE(d.Await("c.jpg"));
    EXPECT_EQ(d.Rows(), "b.jpg c.jpg d.jpg ");
    EXPECT_EQ(d.Current(), "d.jpg");
    EXPECT_EQ(d.s.FileIndex, 2);
    EXPECT_EQ(d.s.TextNumOf, "3 of 3");
    EXPECT_FALSE(d.c.FolderChangedLabel->isVisible());
    // The views before it are found again, though their rows are others by now.
    d.folder.Write("a.jpg", whole);
    ASSERT_TRUE(d.Await("a.jpg"));
    EXPECT_EQ(d.Rows(), "a.jpg b.jpg c.jpg d.jpg ");
    EXPECT_EQ(d.Current(), "d.jpg");
    d.c.FileBackButton->click();
    EXPECT_EQ(d.Current(), "b.jpg");
    // What goes is told as ever, and stands until the folder is read.
    std::filesystem::remove(d.At("c.jpg"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.c.FolderChangedLabel->isVisible(); }, 12000));
    EXPECT_EQ(d.Rows(), "a.jpg b.jpg c.jpg d.jpg ");
    d.c.QuickDirButton->click();
    EXPECT_EQ(d.Rows(), "a.jpg b.jpg d.jpg ");
    EXPECT_FALSE(d.c.FolderChangedLabel->isVisible());
    // Switched off, the strip tells of new ones, too.
    d.c.FollowFolderButton->trigger();
    d.folder.Write("f.jpg", whole);
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.c.FolderChangedLabel->isVisible(); }, 12000));
    EXPECT_EQ(d.Rows(), "a.jpg b.jpg d.jpg ");
}

TEST(FollowFolder, ShowsTheNewestAtTheZoomThatStands) {
    FollowDesk d;
    d.c.ShowNewestButton->trigger();
    EXPECT_TRUE(d.s.ShowNewest);
    d.house.display.Zoom(3);
    const int zoomed = d.c.Picture1->Picture().width();
    EXPECT_GT(zoomed, 61);
    d.folder.Write("a.jpg", JpegBytes(TellTale(61, 40)));
    ASSERT_TRUE(d.Await("a.jpg"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Current() == "a.jpg"; }));
    EXPECT_EQ(d.c.Picture1->Picture().width(), zoomed);
    // A note that is being written keeps its picture.
    d.c.NotesBox->setPlainText(QStringLiteral("unsaved"));
    d.folder.Write("e.jpg", JpegBytes(TellTale(62, 40)));
    ASSERT_TRUE(d.Await("e.jpg"));
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_EQ(d.c.NotesBox->toPlainText(), "unsaved");
}

TEST(FollowFolder, WaitsForTheEndOfAShowAndForAnAnswer) {
    FollowDesk d;
    const std::string whole = JpegBytes(TellTale(70, 40));
    d.RunShow(d.c.SlideButton, {[&] {
                  d.folder.Write("c.jpg", whole);
                  QTest::qWait(2500);
                  EXPECT_EQ(d.Rows(), "b.jpg d.jpg ");
              }});
    ASSERT_TRUE(d.Await("c.jpg"));
    QDialog question(&d.house.window);
    question.setModal(true);
    question.show();
    d.folder.Write("e.jpg", whole);
    QTest::qWait(2500);
    EXPECT_EQ(d.Rows(), "b.jpg c.jpg d.jpg ");
    question.close();
    EXPECT_TRUE(d.Await("e.jpg"));
}

TEST(FollowFolder, KeepsWhatIsSeenAndSelectedInALongList) {
    FollowDesk d;
    for (int i = 0; i < 400; ++i)
        d.folder.Write("m" + std::to_string(1000 + i) + ".jpg", JpegBytes(TellTale(20, 10)));
    d.c.QuickDirButton->click();
    FileListBox& list = *d.c.FileListBox;
    d.GoTo("m1200.jpg");
    list.Select(list.RowOf("m1203.jpg"));
    list.verticalScrollBar()->setValue(list.RowOf("m1195.jpg"));
    const auto first = [&] { return list.Text(list.SeenRows().front()); };
    const std::string seen = first();
    const std::string selected = [&] {
        std::string names;
        for (const int row : list.SelectedRows()) names += list.Text(row) + " ";
        return names;
    }();
    for (const char* name : {"a1.jpg", "a2.jpg", "z.jpg"})
        d.folder.Write(name, JpegBytes(TellTale(20, 10)));
    ASSERT_TRUE(d.Await("z.jpg"));
    EXPECT_EQ(first(), seen);
    std::string now;
    for (const int row : list.SelectedRows()) now += list.Text(row) + " ";
    EXPECT_EQ(now, selected);
}

TEST(FollowFolder, TheEndDoesNotWaitForADiskThatStandsStill) {
    using namespace std::chrono_literals;
    FilesDesk d({"b.jpg"});
    d.Start(d.At("b.jpg"));
    std::atomic<bool> waits = false;
    std::atomic<bool> stands = true;
    d.files.onAsk = [&, window = std::this_thread::get_id()](const std::string& verb,
                                                             const std::string& path) {
        const bool isAsked = verb == "names" && path == d.folder.Path();
        if (!isAsked || std::this_thread::get_id() == window) return std::string();
        waits = true;
        for (int i = 0; i < 500 && stands; ++i) std::this_thread::sleep_for(10ms);
        return std::string();
    };
    d.c.FollowFolderButton->trigger();
    ASSERT_TRUE(QTest::qWaitFor([&] { return waits.load(); }));
    const auto began = std::chrono::steady_clock::now();
    d.house.follow.BreakOff();
    EXPECT_LT(std::chrono::steady_clock::now() - began, 2s);
    stands = false;
}

TEST(FollowFolder, NewFramesJoinTheNightAndAWorseOneIsTold) {
    FilesDesk d(std::vector<std::string>{});
    const auto add = [&](int number, double fwhm) {
        const std::string at = std::to_string(10 + number);
        d.folder.Write("L" + at + ".fits",
                       FrameBytes({.fwhm = fwhm, .taken = "2024-11-05T20:" + at + ":00"}, 400, 300,
                                  unsigned(number)));
    };
    for (int i = 0; i < 10; ++i) add(i, 3 + 0.02 * i);
    d.Start(d.At("L10.fits"));
    d.house.window.show();
    d.c.FollowFolderButton->trigger();
    d.Key(Qt::Key_G);
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.house.night.AllMeasured(); }, 60000));
    add(20, 3.1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return d.house.night.FrameOf(d.At("L30.fits")); }, 60000));
    EXPECT_EQ(d.Said().find("worse"), std::string::npos);
    add(21, 6);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return d.Said().find("'L31.fits' is worse") != std::string::npos; }, 60000))
        << d.Said();
}

} // namespace tarn::testing
