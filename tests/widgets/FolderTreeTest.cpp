#include "support/TestFolder.h"
#include "widgets/FolderTreeview.h"

#include <QTest>

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
