#include "support/TestFolder.h"
#include "widgets/FileListBox.h"
#include "widgets/FolderTreeview.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

struct TreeDesk {
    TestFolder folder;
    std::unique_ptr<Files> files = MakeFiles();
    FolderTreeview tree{*files};
    std::vector<std::string> events;
    bool refuse = false;

    TreeDesk() {
        for (const char* name : {"b", "A", ".hidden", "c"})
            std::filesystem::create_directories(folder.Path() + "/" + name + "/inner");
        tree.onSelection = [this](const std::string& path, bool& cancel) {
            events.push_back(path);
            cancel = refuse;
        };
    }
    void ShowOn(const std::string& name) {
        tree.resize(300, 400);
        tree.show();
        tree.SetSelectedPath(folder.Path() + "/" + name);
        tree.Reveal(folder.Path() + "/" + name);
    }
    QPoint At(const std::string& name) {
        const QModelIndex above = tree.currentIndex().parent();
        for (int row = 0; row < tree.model()->rowCount(above); ++row) {
            const QModelIndex index = tree.model()->index(row, 0, above);
            if (index.data().toString().toStdString() == name)
                return tree.visualRect(index).center();
        }
        return {};
    }
    std::string Current() const { return tree.currentIndex().data().toString().toStdString(); }
};

TEST(FolderTree, ASetPathAlwaysRaisesTheEvent) {
    TreeDesk d;
    const std::string b = d.folder.Path() + "/b";
    d.tree.SetSelectedPath(b + "/");
    d.tree.SetSelectedPath(b);
    d.tree.SetSelectedPath(b + "/gone");
    d.tree.SetSelectedPath("/");
    EXPECT_EQ(d.events, (std::vector<std::string>{b, b, b + "/gone", "/"}));
    d.tree.SetSelectedPath(d.folder.Path() + "/.hidden/inner"); // hidden ones are shown when asked
    EXPECT_EQ(d.Current(), "inner");
}

TEST(FolderTree, ACancelledChangeGoesBack) {
    TreeDesk d;
    const std::string b = d.folder.Path() + "/b";
    d.tree.SetSelectedPath(b);
    d.refuse = true;
    d.tree.SetSelectedPath(d.folder.Path() + "/c");
    EXPECT_EQ(d.tree.SelectedPath(), b);
    EXPECT_EQ(d.Current(), "b");
}

TEST(FolderTree, AMenuNeedsNoChangeOfTheFolder) {
    TreeDesk d;
    d.ShowOn("A");
    std::vector<std::string> asked;
    d.tree.onMenu = [&](const std::string& folder, QPoint) { asked.push_back(folder); };
    const QPoint at = d.At("c");
    QTest::mousePress(d.tree.viewport(), Qt::RightButton, {}, at);
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, d.tree.viewport()->mapToGlobal(at));
    QApplication::sendEvent(d.tree.viewport(), &event);
    QTest::keyClick(&d.tree, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(asked, (std::vector<std::string>{d.folder.Path() + "/c", d.folder.Path() + "/A"}));
    EXPECT_EQ(d.Current(), "A");
}

TEST(FolderTree, AFolderTakesFilesOfOursAlone) {
    TreeDesk d;
    d.ShowOn("A");
    d.folder.Write("x.jpg", "x");
    FileListBox list(*d.files);
    list.SetPath(d.folder.Path());
    list.Select(0);
    std::vector<std::string> dropped;
    d.tree.onDrop = [&](const std::vector<std::string>& paths, const std::string& folder,
                        bool copy) {
        for (const std::string& path : paths)
            dropped.push_back((copy ? "copy " : "move ") + path + " to " + folder);
    };
    const auto drop = [&](const QMimeData& data, Qt::KeyboardModifiers keys) {
        const QPoint at = d.At("c");
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, keys);
        QApplication::sendEvent(d.tree.viewport(), &enter);
        QDragMoveEvent move(at, Qt::CopyAction, &data, Qt::LeftButton, keys);
        QApplication::sendEvent(d.tree.viewport(), &move);
        if (!move.isAccepted()) return false;
        QDropEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, keys);
        QApplication::sendEvent(d.tree.viewport(), &event);
        return event.isAccepted();
    };
    const std::unique_ptr<QMimeData> ours(list.DragData());
    EXPECT_TRUE(drop(*ours, Qt::NoModifier));
    EXPECT_TRUE(drop(*ours, Qt::ControlModifier));
    const std::string file = d.folder.Path() + "/x.jpg to " + d.folder.Path() + "/c";
    EXPECT_EQ(dropped, (std::vector<std::string>{"move " + file, "copy " + file}));
    QMimeData theirs; // the window opens them
    theirs.setUrls({QUrl::fromLocalFile(QStringLiteral("/x.jpg"))});
    EXPECT_FALSE(drop(theirs, Qt::NoModifier));
    EXPECT_EQ(dropped.size(), 2U);
}

TEST(FolderTree, AFreshLookFindsFoldersOfOtherPrograms) {
    TreeDesk d;
    d.ShowOn("b");
    std::filesystem::create_directory(d.folder.Path() + "/a_new");
    std::filesystem::remove_all(d.folder.Path() + "/c");
    d.tree.Refresh();
    EXPECT_EQ(d.Current(), "b");
    EXPECT_EQ(d.events, (std::vector<std::string>{d.folder.Path() + "/b"})); // of the first choice
    std::vector<std::string> names;
    const QModelIndex above = d.tree.currentIndex().parent();
    for (int row = 0; row < d.tree.model()->rowCount(above); ++row)
        names.push_back(d.tree.model()->index(row, 0, above).data().toString().toStdString());
    EXPECT_EQ(names, (std::vector<std::string>{"A", "a_new", "b"}));
}

TEST(FolderTree, RevealOpensTheWayAndKeysMove) {
    TreeDesk d;
    d.tree.resize(300, 300);
    d.tree.show();
    const std::string a = d.folder.Path() + "/A";
    d.tree.SetSelectedPath(a);
    d.tree.Reveal(a);
    EXPECT_TRUE(d.tree.isExpanded(d.tree.currentIndex().parent()));
    QTest::keyClick(&d.tree, Qt::Key_Down); // sorted in any case: A, b, c
    EXPECT_EQ(d.events.back(), d.folder.Path() + "/b");
    EXPECT_EQ(d.tree.SelectedPath(), d.folder.Path() + "/b");
}

} // namespace
} // namespace tarn::testing
