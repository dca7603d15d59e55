// Thumbnails in the whole window.
#include "AppDesk.h"
#include "support/Trees.h"

#include <QAction>
#include <QCheckBox>

#include <filesystem>

namespace tarn::testing {
namespace {

TEST(Thumbnails, TheFolderIsRunFromAPicture) {
    AppDesk d;
    d.folder.Write("a.jpg", "no picture");
    d.AddPicture("b.jpg");
    d.Start();
    const MainControls& c = d.house.controls;
    EXPECT_FALSE(c.GenerateThumbCButton->isEnabled() || c.GenerateThumbButton->isEnabled());
    d.Key(Qt::Key_N); // a placeholder was up
    EXPECT_TRUE(c.GenerateThumbCButton->isEnabled() && c.GenerateThumbButton->isEnabled());
    EXPECT_EQ(c.GenerateThumbButton->text(), "Create Thumbnail Pictures in .../thumbnails");
    c.GenerateThumbButton->trigger();
    EXPECT_EQ(d.house.state.MessageText.find("1 thumbnails, sized 120 pixels created in "
                                             "...\\thumbnails sub folder, 1 failed: 'a.jpg' - "),
              0U);
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_FALSE(c.BatchCancelButton->isVisible());
}

TEST(Thumbnails, ClosingTheWindowInARunKeepsTheSettings) {
    AppDesk d;
    for (int i = 0; i < 20; ++i) d.AddPicture(std::to_string(i) + ".jpg");
    d.Start();
    ASSERT_TRUE(d.house.controls.VCheck->isChecked());
    d.events.onPump = [&d] {
        if (!d.house.state.BatchRuns) return;
        EXPECT_FALSE(d.house.controls.VCheck->isChecked());
        d.events.onPump = {};
        d.house.window.close();
    };
    d.house.controls.GenerateThumbButton->trigger();
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_EQ(d.settings->Read("videolist_check", ""), "1");
    EXPECT_LT(ReadTree(d.folder.Path() + "/thumbnails").size(), 20U);
}

} // namespace
} // namespace tarn::testing
