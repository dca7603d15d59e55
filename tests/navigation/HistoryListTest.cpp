#include "NavDesk.h"

#include <QListWidget>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

// Three folders of three pictures each, entered in turn; the last has a name of blanks and ";".
struct HistoryDesk : NavDesk {
    std::string folders[3]{folder.Path() + "/a", folder.Path() + "/b", folder.Path() + "/c  ;2 "};
    QListWidget& list = *controls.List1;
    HistoryDesk() {
        for (const std::string& path : folders) {
            std::filesystem::create_directory(path);
            for (int i = 0; i < 3; ++i) folder.Write(LastPart(path) + "/" + PictureName(i), "x");
        }
        for (int i = 0; i < 3; ++i) {
            controls.FolderTreeview1->SetSelectedPath(folders[i]);
            room.SelectRow(i);
        }
        Settle();
        window.resize(600, 400);
        list.setGeometry(0, 0, 500, 300);
        list.raise();
        window.show();
    }
    static std::string LastPart(const std::string& path) {
        return path.substr(path.rfind('/') + 1);
    }
    void Show() { controls.FileHistoryButton->trigger(); }
    std::string Row(int row) const {
        return list.item(row) ? list.item(row)->text().toStdString() : "none";
    }
    void DoubleClick(int row) {
        list.setCurrentRow(row);
        const QPoint at = list.visualItemRect(list.item(row)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
    }
    std::string Place() const {
        return LastPart(controls.FileListBox->Path()) + " " + std::to_string(NavDesk::Row()) +
               " entry " + std::to_string(state.HistCur) + " of " + std::to_string(state.HistHigh);
    }
};

TEST(HistoryList, ARowGoesToItsEntry) {
    HistoryDesk d;
    d.Show();
    ASSERT_EQ(d.list.count(), 4);
    EXPECT_EQ(d.Row(0), "Double click here to clear history, next entries to view image.");
    EXPECT_EQ(d.Row(2), d.folders[1] + "  ;1");
    EXPECT_EQ(d.Row(3), d.folders[2] + "  ;2");
    d.DoubleClick(1);
    EXPECT_EQ(d.Place(), "a 0 entry 1 of 3");
    EXPECT_FALSE(d.controls.FolderBackButton->isEnabled());
    EXPECT_EQ(d.controls.FolderFwdButton->toolTip().toStdString(), d.folders[1]);
    EXPECT_EQ(d.list.count(), 0); // given up to the file shown
    d.Show();
    d.DoubleClick(3);
    EXPECT_EQ(d.Place(), "c  ;2  2 entry 3 of 3");
}

TEST(HistoryList, XTakesARowOutOfTheViewAlone) {
    HistoryDesk d;
    d.Show();
    d.list.setCurrentRow(0);
    QTest::keyClick(&d.list, Qt::Key_X);
    EXPECT_EQ(d.Row(0), d.folders[0] + "  ;0");
    QTest::keyClicks(&d.list, "X");
    EXPECT_EQ(d.Row(0), d.folders[1] + "  ;1");
    EXPECT_EQ(d.state.HistHigh, 3);
    d.DoubleClick(0); // still its own entry, and no clearing
    EXPECT_EQ(d.Place(), "b 1 entry 2 of 3");
}

TEST(HistoryList, TheFirstRowClearsTheHistory) {
    HistoryDesk d;
    d.Show();
    d.DoubleClick(0);
    EXPECT_EQ(d.Place(), "c  ;2  2 entry 1 of 1");
    EXPECT_EQ(d.state.HistFolderPath[1], d.folders[2]);
    EXPECT_EQ(d.state.HistFileIndex[1], 2);
    EXPECT_EQ(d.calls.back(), "message File/Folder history cleared");
    EXPECT_EQ(d.list.count(), 0);
    EXPECT_FALSE(d.controls.FolderBackButton->isEnabled());
    TestFolder empty;
    d.controls.FolderTreeview1->SetSelectedPath(empty.Path());
    d.Show();
    d.DoubleClick(0);
    EXPECT_EQ(d.state.HistHigh, 0);
    EXPECT_EQ(d.state.HistCur, 0);
}

TEST(HistoryList, OtherRowsInList1AreNoHistory) {
    HistoryDesk d;
    d.list.addItems({"File name: p00.jpg", "Date"});
    d.DoubleClick(0);
    d.list.setCurrentRow(1);
    QTest::keyClick(&d.list, Qt::Key_X);
    EXPECT_EQ(d.list.count(), 2);
    EXPECT_EQ(d.state.HistHigh, 3);
    d.Show();
    d.room.SelectRow(0);
    EXPECT_FALSE(d.state.HistoryListed);
}

TEST(HistoryList, AFolderThatIsGoneSelectsNothing) {
    HistoryDesk d;
    std::filesystem::remove_all(d.folders[0]);
    d.Show();
    d.DoubleClick(1);
    EXPECT_EQ(d.Place(), "c  ;2  2 entry 3 of 3");
    EXPECT_EQ(d.list.count(), 4);
    EXPECT_EQ(d.calls.back(), "status Nothing to display in current folder.");
}

TEST(Folders, BackAndFwdTellWhereTheyGo) {
    HistoryDesk d;
    d.controls.FolderBackButton->click();
    EXPECT_EQ(d.Place(), "b 1 entry 2 of 3");
    EXPECT_EQ(d.controls.FolderBackButton->toolTip().toStdString(), d.folders[0]);
    EXPECT_EQ(d.controls.FolderFwdButton->toolTip().toStdString(), d.folders[2]);
    d.controls.FolderFwdButton->click();
    EXPECT_EQ(d.Place(), "c  ;2  2 entry 3 of 3");
    std::filesystem::remove(d.folders[1] + "/p01.jpg");
    std::filesystem::remove(d.folders[1] + "/p02.jpg");
    d.controls.FolderBackButton->click(); // fewer files than the row remembered
    EXPECT_EQ(d.Place(), "b -1 entry 2 of 3");
    d.state.CopyImageFolder = d.folders[0];
    d.controls.GotoCopyFolderButton->click();
    EXPECT_EQ(d.Place(), "a 0 entry 3 of 4");
    d.controls.FolderFwdButton->click();
    EXPECT_EQ(d.Place(), "c  ;2  2 entry 4 of 4"); // with its row
}

TEST(Folders, LettersJumpInTreeAndList) {
    HistoryDesk d;
    d.controls.FolderTreeview1->SetSelectedPath(d.folders[0]);
    d.controls.FolderTreeview1->Reveal(d.folders[0]);
    QTest::keyClicks(d.controls.FolderTreeview1, "b");
    EXPECT_EQ(d.controls.FileListBox->Path(), d.folders[1]);
    d.folder.Write("b/zoom.jpg", "x");
    d.room.RefreshDirButton_Click();
    d.calls.clear();
    QTest::keyClicks(d.controls.FileListBox, "z");
    EXPECT_EQ(d.NavDesk::Row(), 3);
    EXPECT_EQ(d.calls.back(), "DisplayPicture");
}

} // namespace
} // namespace tarn::testing
