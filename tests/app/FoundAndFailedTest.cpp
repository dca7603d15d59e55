// What is found in the list narrows it alone, and a batch tells which files failed.
#include "FilesDesk.h"

namespace tarn::testing {
namespace {

TEST(Batch, EndsWithTheFilesThatFailedAndWhy) {
    FilesDesk d({"a.jpg"});
    for (int i = 0; i < 12; ++i) d.folder.Write("bad" + std::to_string(i) + ".jpg", "no picture");
    d.Start();
    d.c.GenerateThumbButton->trigger();
    const QWidget* list = AppDesk::Up("frmFaults");
    ASSERT_TRUE(list);
    EXPECT_FALSE(list->isActiveWindow()); // the keyboard stays where it is
    const auto* box = d.In<QPlainTextEdit>("frmFaults", "FaultsBox");
    EXPECT_EQ(box->blockCount(), 10);
    EXPECT_EQ(box->toPlainText().section('\n', 0, 0), "bad0.jpg - Not a picture that can be read");
    d.Press("frmFaults", "FaultsCopyButton");
    const QString copied = QString::fromStdString(d.clipboard->Text());
    EXPECT_EQ(copied.count('\n'), 12);
    EXPECT_TRUE(copied.startsWith(QString::fromStdString(d.At("bad0.jpg")) + "\tNot a picture"));
    std::filesystem::remove(d.At("bad1.jpg"));
    d.Press("frmFaults", "FaultsCloseButton");
    for (int i = 2; i < 12; ++i) std::filesystem::remove(d.At("bad" + std::to_string(i) + ".jpg"));
    d.c.GenerateThumbButton->trigger(); // one is named by the message alone
    EXPECT_FALSE(AppDesk::Up("frmFaults"));
}

TEST(FindLine, LeavesTheShownPictureItsNoteAndRunsTheirFiles) {
    FilesDesk d({"m31.jpg", "moon.jpg"});
    d.Start();
    d.GoTo("m31.jpg");
    d.c.FindButton->trigger();
    d.c.FindLine->setText("moon");
    d.c.NotesBox->setPlainText("Clear night");
    EXPECT_TRUE(d.c.SaveNotesButton->isEnabled());
    d.c.SaveNotesButton->click();
    EXPECT_TRUE(d.c.DeleteNotesButton->isEnabled());
    d.c.GenerateThumbButton->trigger();
    EXPECT_EQ(ReadTree(d.At("thumbnails")).size(), 2U);
    d.c.FindButton->trigger();
    d.c.FindLine->setText("moon");
    d.GoTo("moon.jpg");
    d.c.DeleteOnlyButton->trigger();
    EXPECT_EQ(d.Current(), "m31.jpg"); // not "nothing to display"
}

} // namespace
} // namespace tarn::testing
