#include "widgets/FileListBox.h"
#include "support/TestFolder.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tarn::testing {
namespace {

struct ListDesk {
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    FileListBox list{*files};
    int clicks = 0;
    int doubleClicks = 0;

    explicit ListDesk(const std::vector<std::string>& names) {
        for (const std::string& name : names) folder.Write(name, "x");
        list.onClick = [this] { ++clicks; };
        list.onDoubleClick = [this] { ++doubleClicks; };
        list.resize(200, 300);
        list.show();
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (int row = 0; row < list.Count(); ++row) names.push_back(list.Text(row));
        return names;
    }
    QPoint At(int row) { return list.visualRect(list.model()->index(row, 0)).center(); }
};

TEST(FileListBox, ListsVisiblePlainFilesOnceInAnyCase) {
    ListDesk d({"b.JPG", "A.jpg", "c.tif", ".hidden.jpg", "d.png", "a.JPEG"});
    std::filesystem::create_directory(d.folder.Path() + "/e.jpg");
    d.list.SetPattern("*.jpg;*.jp*;*.TIF");
    d.list.SetPath(d.folder.Path());
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"a.JPEG", "A.jpg", "b.JPG", "c.tif"}));
    EXPECT_EQ(d.list.CurrentRow(), -1);
    d.list.SetPattern("");
    EXPECT_EQ(d.list.Count(), 5); // no pattern keeps nothing away
    EXPECT_EQ(d.clicks, 0);
}

TEST(FileListBox, IsASnapshotUntilAskedToReadAgain) {
    ListDesk d({"a.jpg", "c.jpg"});
    d.list.SetPattern("*.jpg");
    d.list.SetPath(d.folder.Path());
    QSignalSpy changed(&d.list, &FileListBox::diskChanged);
    d.list.Select(1);
    d.folder.Write("b.jpg", "x");
    ASSERT_TRUE(changed.wait(5000));
    EXPECT_TRUE(changed.last().first().toBool());
    EXPECT_EQ(d.list.Count(), 2);
    d.list.Refresh();
    EXPECT_FALSE(changed.last().first().toBool());
    EXPECT_EQ(d.list.CurrentRow(), 2); // by name
    EXPECT_EQ(d.clicks, 1);
    EXPECT_FALSE(d.list.SetPath(d.folder.Path() + "/gone"));
    EXPECT_EQ(d.list.Path(), d.folder.Path());
    EXPECT_EQ(d.list.Count(), 3);
}

// Each mark writes a sidecar, and large folders take long to read.
TEST(FileListBox, ASidecarIsNoReasonToReadTheFolderAgain) {
    ListDesk d({"a.jpg"});
    d.list.SetPattern("*.jpg");
    d.list.SetPath(d.folder.Path());
    QSignalSpy changed(&d.list, &FileListBox::diskChanged);
    std::string error;
    ASSERT_TRUE(d.files->Write(d.folder.Path() + "/a.jpg.xmp", "x", &error)) << error;
    EXPECT_FALSE(changed.wait(600));
    std::filesystem::remove(d.folder.Path() + "/a.jpg.xmp");
    EXPECT_FALSE(changed.wait(600));
    d.list.SetPattern("*.jpg;*.xmp"); // where they are listed they are files
    changed.clear();
    d.folder.Write("a.jpg.xmp", "x");
    ASSERT_TRUE(changed.wait(5000));
    EXPECT_TRUE(changed.last().first().toBool());
}

TEST(FileListBox, AFolderThatIsMadeAnewIsWatchedAgain) {
    ListDesk d({});
    const std::string folder = d.folder.Path() + "/sub";
    std::filesystem::create_directory(folder);
    d.list.SetPath(folder);
    QSignalSpy changed(&d.list, &FileListBox::diskChanged);
    std::filesystem::remove(folder);
    ASSERT_TRUE(changed.wait(5000));
    EXPECT_TRUE(changed.last().first().toBool());
    std::filesystem::create_directory(folder);
    ASSERT_TRUE(d.list.Refresh());
    changed.clear();
    d.folder.Write("sub/b.jpg", "x");
    EXPECT_TRUE(changed.wait(5000));
}

TEST(FileListBox, SelectionInCodeAlwaysRaisesTheClick) {
    ListDesk d({"a", "b", "c"});
    d.list.SetPath(d.folder.Path());
    d.list.Select(1);
    d.list.Select(1);
    EXPECT_EQ(d.clicks, 2);
    d.list.Select(2);
    EXPECT_EQ(d.list.SelectedRows(), (std::vector<int>{1, 2}));
    for (const int outside : {-1, 3}) d.list.Select(outside);
    EXPECT_EQ(d.clicks, 3);
    d.list.UnselectAll();
    EXPECT_EQ(d.list.CurrentRow(), 2);
    EXPECT_TRUE(d.list.SelectedRows().empty());
    d.list.SelectEveryRow();
    EXPECT_EQ(d.list.SelectedRows().size(), 3U);
    EXPECT_EQ(d.clicks, 3);
}

TEST(FileListBox, MouseAndKeyboardRaiseItOnce) {
    ListDesk d({"a", "b", "c"});
    d.list.SetPath(d.folder.Path());
    QWidget* view = d.list.viewport();
    QTest::mouseClick(view, Qt::LeftButton, {}, d.At(1));
    EXPECT_EQ(d.clicks, 1);
    QTest::mouseClick(view, Qt::LeftButton, {}, d.At(1));
    EXPECT_EQ(d.clicks, 2); // the same row loads again
    QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, d.At(2));
    EXPECT_EQ(d.list.SelectedRows(), (std::vector<int>{1, 2}));
    EXPECT_EQ(d.clicks, 3);
    QTest::keyClick(&d.list, Qt::Key_Down); // nothing below
    EXPECT_EQ(d.clicks, 3);
    QTest::keyClick(&d.list, Qt::Key_Up);
    EXPECT_EQ(d.clicks, 4);
    // Other buttons and the blank below the rows leave everything as it is.
    const auto rows = d.list.SelectedRows();
    QTest::mouseClick(view, Qt::RightButton, {}, d.At(0));
    QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(20, 280));
    EXPECT_EQ(d.list.SelectedRows(), rows);
    EXPECT_EQ(d.clicks, 4);
    // A double click: press and release, then the second press and release.
    QTest::mouseClick(view, Qt::LeftButton, {}, d.At(0));
    QTest::mouseDClick(view, Qt::LeftButton, {}, d.At(0));
    EXPECT_EQ(d.clicks, 5);
    EXPECT_EQ(d.doubleClicks, 1);
}

TEST(FileListBox, EveryFileCanBeDraggedAndTheSelectedOnesGo) {
    ListDesk d({"a", "b c", "d"});
    d.list.SetPath(d.folder.Path());
    EXPECT_TRUE(d.list.dragEnabled());
    EXPECT_EQ(d.list.DragData(), nullptr);
    d.list.Select(1);
    d.list.Select(2);
    for (int row = 0; row < 3; ++row)
        EXPECT_TRUE(d.list.model()->index(row, 0).flags() & Qt::ItemIsDragEnabled) << row;
    const std::unique_ptr<QMimeData> data(d.list.DragData());
    EXPECT_EQ(data->data(QStringLiteral("text/uri-list")).toStdString(),
              "file://" + d.folder.Path() + "/b%20c\r\nfile://" + d.folder.Path() + "/d\r\n");
}

TEST(FileListBox, AMenuIsAskedForOnTheFileThatItMakesCurrent) {
    ListDesk d({"a", "b", "c"});
    d.list.SetPath(d.folder.Path());
    std::vector<int> asked;
    d.list.onMenu = [&](int row, QPoint) { asked.push_back(row); };
    const auto rightClick = [&](QPoint at) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, d.list.viewport()->mapToGlobal(at));
        QApplication::sendEvent(d.list.viewport(), &event);
    };
    d.list.Select(0);
    d.list.Select(1);
    rightClick(d.At(1)); // the current one: nothing is loaded for it
    rightClick(d.At(0)); // selected: so stay all
    EXPECT_EQ(d.list.SelectedRows(), (std::vector<int>{0, 1}));
    EXPECT_EQ(d.list.CurrentRow(), 0);
    EXPECT_EQ(d.clicks, 3);
    rightClick(d.At(2));
    EXPECT_EQ(d.list.SelectedRows(), (std::vector<int>{2}));
    rightClick(QPoint(20, 280)); // the blank below
    EXPECT_EQ(d.list.CurrentRow(), 2);
    QTest::keyClick(&d.list, Qt::Key_F10, Qt::ShiftModifier);
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(&d.list, &key);
    EXPECT_EQ(asked, (std::vector<int>{1, 0, 2, -1, 2, 2}));
}

TEST(FileListBox, NarrowedItKeepsItsSnapshotAndTheCurrentFile) {
    ListDesk d({"a1", "b1", "b2", "c2"});
    d.list.SetPath(d.folder.Path());
    d.list.Select(2);
    std::filesystem::remove(d.folder.Path() + "/b2"); // nothing looks there
    d.list.Narrow([](const std::string& name) { return name.back() == '2'; });
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"b2", "c2"}));
    EXPECT_EQ(d.list.CurrentRow(), 0);
    d.list.Refresh();
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"c2"}));
    d.list.Narrow({});
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"a1", "b1", "c2"}));
    EXPECT_EQ(d.clicks, 1);
}

TEST(FileListBox, AShiftClickReachesFromTheRowSelectedInCode) {
    ListDesk d({"a", "b", "c", "d", "e"});
    d.list.SetPath(d.folder.Path());
    QTest::mouseClick(d.list.viewport(), Qt::LeftButton, {}, d.At(0));
    d.list.UnselectAll();
    d.list.Select(2);
    QTest::mouseClick(d.list.viewport(), Qt::LeftButton, Qt::ShiftModifier, d.At(4));
    EXPECT_EQ(d.list.SelectedRows(), (std::vector<int>{2, 3, 4}));
}

TEST(FileListBox, ArrangedRowsKeepWhatIsCurrentAndSelected) {
    ListDesk d({"a.jpg", "b.jpg", "c.jpg", "d.jpg"});
    d.list.SetPath(d.folder.Path());
    d.list.Select(1);
    d.list.Select(3);
    EXPECT_FALSE(d.list.Rearrange()); // nothing asks for another order
    std::string asked;
    bool turned = true;
    d.list.SetArrange([&](const std::string& folder, std::vector<std::string> names) {
        asked = folder;
        if (turned) std::reverse(names.begin(), names.end());
        std::erase(names, "c.jpg");
        return names;
    });
    EXPECT_TRUE(d.list.Rearrange());
    EXPECT_EQ(asked, d.folder.Path());
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"d.jpg", "b.jpg", "a.jpg"}));
    EXPECT_EQ(d.list.CurrentRow(), 0);
    EXPECT_EQ(d.list.SelectedRows(), (std::vector<int>{0, 1}));
    EXPECT_TRUE(d.list.LeavesOut("c.jpg"));
    EXPECT_EQ(d.list.Listed(), (std::vector<std::string>{"a.jpg", "b.jpg", "c.jpg", "d.jpg"}));
    EXPECT_EQ(d.clicks, 2); // by the selections alone
    turned = false;
    d.folder.Write("e.jpg", "x");
    d.list.Refresh(); // each reading is arranged
    EXPECT_EQ(d.Names(), (std::vector<std::string>{"a.jpg", "b.jpg", "d.jpg", "e.jpg"}));
    EXPECT_EQ(d.list.CurrentRow(), 2);
}

TEST(FileListBox, FilesThatComeStandInTheOrderThatTheListHas) {
    using Rows = std::vector<int>;
    using Names = std::vector<std::string>;
    ListDesk d({"b.jpg", "d.jpg", "f.jpg", "g.jpg"});
    d.list.SetPattern("*.jpg");
    d.list.SetPath(d.folder.Path());
    d.list.Select(1);
    d.list.Select(2);
    std::vector<Rows> added;
    QObject::connect(&d.list, &FileListBox::filesAdded,
                     [&](const std::vector<int>& rows) { added.push_back(rows); });
    d.list.AddFiles({"E.jpg", "b.jpg", "a.jpg", "note.txt", "a.jpg"});
    EXPECT_EQ(d.Names(), (Names{"a.jpg", "b.jpg", "d.jpg", "E.jpg", "f.jpg", "g.jpg"}));
    EXPECT_EQ(added, (std::vector<Rows>{{0, 3}}));
    EXPECT_EQ(d.list.CurrentRow(), 4);
    EXPECT_EQ(d.list.SelectedRows(), (Rows{2, 4}));
    EXPECT_EQ(d.list.LeftOut(), Names{"note.txt"});
    // What is found alone is listed, and what is new fits it or does not.
    d.list.Narrow([](const std::string& name) { return name < "e"; });
    d.list.AddFiles({"c.jpg", "z.jpg"});
    EXPECT_EQ(d.Names(), (Names{"a.jpg", "b.jpg", "c.jpg", "d.jpg", "E.jpg"}));
    EXPECT_EQ(added.back(), Rows{2});
    d.list.Narrow({});
    // An order that puts all rows elsewhere keeps what is current by its name.
    d.list.Select(d.list.RowOf("f.jpg"));
    bool turned = false;
    d.list.SetArrange([&](const std::string&, Names names) {
        if (turned) std::reverse(names.begin(), names.end());
        return names;
    });
    turned = true;
    d.list.AddFiles({"h.jpg"});
    EXPECT_EQ(d.Names().front(), "z.jpg");
    EXPECT_EQ(added.back(), Rows());
    EXPECT_EQ(d.list.Text(d.list.CurrentRow()), "f.jpg");
    EXPECT_EQ(d.clicks, 3); // by the selections alone
}

TEST(FileListBox, FilesThatAreNotListedLeaveTheRowsAlone) {
    using Names = std::vector<std::string>;
    ListDesk d({"b.jpg", "c.jpg"});
    d.list.SetPattern("*.jpg");
    d.list.SetNoteMarks([](const std::string& name) { return name != "c.jpg" && name != "e.jpg"; });
    d.list.SetNoteChoice(NoteChoice::WithNote);
    d.list.SetPath(d.folder.Path());
    EXPECT_EQ(d.Names(), Names{"b.jpg"});
    EXPECT_EQ(d.list.NotChosen(), Names{"c.jpg"});
    QSignalSpy added(&d.list, &FileListBox::filesAdded);
    QSignalSpy read(&d.list, &FileListBox::folderRead);
    QSignalSpy looked(&d.list, &FileListBox::leftOutChanged);
    d.list.AddFiles({"note.txt", "c.jpg", "e.jpg", "b.jpg"});
    d.list.AddFiles({"note.txt"});
    EXPECT_EQ(d.list.LeftOut(), Names{"note.txt"});
    EXPECT_EQ(d.list.NotChosen(), (Names{"c.jpg", "e.jpg"}));
    EXPECT_EQ(looked.count(), 2);
    EXPECT_EQ(read.count(), 0);
    // One that is listed and no row yet is measured and read for what may make it one.
    d.list.Narrow([](const std::string& name) { return name < "c"; });
    d.list.AddFiles({"d.jpg"});
    EXPECT_EQ(d.list.Listed(), (Names{"b.jpg", "d.jpg"}));
    EXPECT_EQ(read.count(), 1);
    EXPECT_EQ(added.count(), 0);
}

// How many pixels of a row have about this colour.
int PixelsLike(const QImage& picture, const QRect& place, const QColor& colour) {
    int count = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x) {
            const QColor at = picture.pixelColor(x, y);
            count += std::abs(at.red() - colour.red()) < 40 &&
                     std::abs(at.green() - colour.green()) < 40 &&
                     std::abs(at.blue() - colour.blue()) < 40;
        }
    return count;
}

TEST(FileListBox, MarksAreToldApartInNamesAndPictures) {
    ListDesk d({"a.jpg", "b.jpg", "c.jpg"});
    d.list.SetPath(d.folder.Path());
    d.list.SetMarks([](const std::string& name) {
        if (name == "a.jpg") return ShownMark{{Decision::Keep, 0}};
        if (name == "b.jpg") return ShownMark{{Decision::Reject, 0}};
        return ShownMark();
    });
    const QColor green(0x1E, 0x8E, 0x3E);
    const QColor red(0xC6, 0x28, 0x28);
    const auto look = [&](int row, const QColor& colour) {
        QApplication::processEvents();
        return PixelsLike(d.list.viewport()->grab().toImage(),
                          d.list.visualRect(d.list.model()->index(row, 0)), colour);
    };
    EXPECT_EQ(look(0, green), 0); // no room for marks is asked for
    const int without = d.list.sizeHintForIndex(d.list.model()->index(0, 0)).width();
    d.list.ShowMarks(true);
    EXPECT_GT(d.list.sizeHintForIndex(d.list.model()->index(0, 0)).width(), without);
    EXPECT_GT(look(0, green), 20);
    EXPECT_EQ(look(0, red), 0);
    EXPECT_GT(look(1, red), 20);
    EXPECT_EQ(look(2, green), 0);
    d.list.ShowPictures(true);
    EXPECT_GT(look(0, green), 20);
    EXPECT_GT(look(1, red), 20);
}

} // namespace
} // namespace tarn::testing
