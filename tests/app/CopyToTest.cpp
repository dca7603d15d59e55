// The copy-to folder, conversions and clipboard texts in the whole window.
#include "FilesDesk.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSlider>

namespace tarn::testing {
namespace {

struct CopyDesk : FilesDesk {
    TestFolder target;

    CopyDesk() {
        settings->Write("copy_folder", target.Path());
        settings->Write("convert_jpg_add_filename", "False");
    }
    Tree Target() const { return ReadTree(target.Path()); }
    std::string TargetNames() const { return NamesOf(Target()); }
};

TEST(CopyTo, CopiesAndStepsOnWhereThatIsWished) {
    CopyDesk d;
    d.target.Write("a.jpg", "stood there");
    d.Start();
    d.Key(Qt::Key_Y);
    EXPECT_EQ(d.Said(), "Copied 'a.jpg'");
    EXPECT_EQ(d.Target().at("a.jpg"), d.Pictures().at("a.jpg"));
    EXPECT_EQ(Trashed("a.jpg"), "stood there");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.c.CopyAutoButton->trigger();
    d.Key(Qt::Key_Y);
    EXPECT_EQ(d.Said(), "Copied+ 'a.jpg'");
    EXPECT_EQ(d.Current(), "b.jpg");
    EXPECT_EQ(d.house.copies.CMImage().text, "CM+ 'b.jpg'");
    EXPECT_EQ(d.TargetNames(), "a.jpg b.jpg ");
    EXPECT_EQ(d.Current(), "c.jpg");
    d.Key(Qt::Key_U); // the key itself steps nowhere
    EXPECT_EQ(d.Said(), "'c.jpg' file created");
    EXPECT_EQ(d.Current(), "c.jpg");
}

TEST(CopyTo, SaysWhyItIsRefused) {
    CopyDesk d;
    d.Start();
    d.house.navigation.OpenFolder(d.target.Path(), {});
    EXPECT_FALSE(d.c.MoveToButton->isEnabled());
    EXPECT_EQ(d.house.copies.CopyImage().text, "'Copy to' folder is same as current folder");
    d.c.CJMButton->click();
    EXPECT_EQ(d.Said(), "'Copy to' folder same as current folder");
    d.s.CopyImageFolder.clear();
    d.Key(Qt::Key_Y);
    EXPECT_EQ(d.Said(), "'Copy to' folder has not been set");
    EXPECT_EQ(d.house.copies.CMImage().text, "'Copy to' folder has must be set");
}

TEST(CopyTo, MoveTakesThePictureAlongAndComesBack) {
    CopyDesk d;
    const Tree before = d.Pictures();
    d.notes.Write("b.enf", "of b");
    d.Start();
    EXPECT_TRUE(d.c.MoveToButton->isEnabled());
    d.GoTo("b.jpg");
    d.c.MoveToButton->click();
    EXPECT_EQ(d.Said(), "Moved 'b.jpg'");
    EXPECT_EQ(d.Names(), "a.jpg c.jpg ");
    EXPECT_EQ(d.Target().at("b.jpg"), before.at("b.jpg"));
    EXPECT_EQ(d.Notes().size(), 1U); // the note stays
    EXPECT_EQ(d.Current(), "a.jpg");
    d.c.UndoButton->trigger();
    EXPECT_EQ(d.Pictures(), before);
    EXPECT_TRUE(d.Target().empty());
    d.notes.Write("c.enf", "of c"); // which is passed on the way back
    d.GoTo("b.jpg");
    d.c.NotesBox->setPlainText(QStringLiteral("not saved"));
    d.c.MoveToButton->click();
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_EQ(d.Said(), "Moved 'b.jpg'; Unsaved note of 'b.jpg' is in the restore buffer");
    EXPECT_EQ(d.Notes().at("b.enf"), "of b"); // only the user saves
    EXPECT_EQ(d.s.NotesSave, "not saved");
    d.c.CopyAutoButton->trigger();
    d.GoTo("a.jpg");
    d.c.MoveToButton->click();
    EXPECT_EQ(d.Current(), "c.jpg"); // slid into the row
}

TEST(CopyTo, TheFolderIsChosenOnce) {
    CopyDesk d;
    TestFolder other;
    d.Start();
    d.Answer({"", other.Path() + "/"}, d.c.SetImageCopyButton);
    EXPECT_EQ(d.s.CopyImageFolder, d.target.Path());
    d.c.SetImageCopyButton->trigger();
    EXPECT_EQ(d.Said(), "Copy image folder set to '" + other.Path() + "'");
    EXPECT_EQ(d.c.CopyImageButton3->toolTip().toStdString(), other.Path());
}

TEST(Convert, MakesAJpegBesideWithTheNote) {
    CopyDesk d;
    d.notes.Write("b.enf", "of b");
    d.Start();
    d.GoTo("b.jpg");
    d.c.NotesBox->insertPlainText("more "); // nothing saves it but the user
    d.c.ConvertButton->trigger();
    EXPECT_EQ(d.Said(), "'b-1.jpg' file created; Unsaved note of 'b.jpg' is in the restore buffer");
    EXPECT_EQ(d.Current(), "b-1.jpg");
    EXPECT_EQ(d.Notes().at("b-1.enf"), "of b");
    EXPECT_EQ(d.Notes().at("b.enf"), "of b");
    EXPECT_EQ(d.s.NotesSave, "more of b");
    d.GoTo("b.jpg");
    d.c.ConvertButton->trigger();
    EXPECT_EQ(d.Said(), "'b-1.jpg' already exists, aborted");
    EXPECT_EQ(Decoded(d.Pictures().at("b-1.jpg")).size(), QSize(61, 40));
    TestFolder other; // the note comes from the folder that was set last
    other.Write("b.enf", "elsewhere");
    d.target.Write("b.jpg", "stood there");
    d.Answer({other.Path()}, d.c.SetNotesButton);
    d.c.CJMButton->click();
    EXPECT_EQ(BytesOf(other.Path() + "/b-CM.enf"), "elsewhere");
}

TEST(Convert, ThePictureIsAsTheEyeSeesIt) {
    CopyDesk d;
    d.folder.Write("b.jpg", Photo(ExifBuilder(Endian::Big).Short(274, 6)));
    d.Start();
    d.GoTo("b.jpg");
    d.c.CJMButton->click();
    EXPECT_EQ(Decoded(d.Target().at("b.jpg")).size(), QSize(40, 60));
    EXPECT_EQ(QSize(d.s.ImageWidth, d.s.ImageHeight), QSize(40, 60));
    EXPECT_EQ(d.s.ImgXfull.Width(), 60); // which the other windows turn by themselves
    d.s.ConvertJpgMaxWidth = "1";
    d.s.ConvertJpgMaxSize = "20";
    d.c.CJMButton->click();
    EXPECT_EQ(Decoded(d.Target().at("b-CM.jpg")).size(), QSize(20, 30));
    EXPECT_EQ(QSize(d.s.ImageWidth, d.s.ImageHeight), QSize(20, 30));
}

TEST(Convert, ATurnedPictureStaysAsItIsShown) {
    CopyDesk d;
    d.Start();
    d.Key(Qt::Key_R);
    const auto size = [&] { return QSize(d.s.ImageWidth, d.s.ImageHeight); };
    EXPECT_EQ(size(), QSize(40, 60));
    d.c.CJMButton->click();
    EXPECT_EQ(size(), QSize(40, 60));
    d.s.ConvertJpgMaxWidth = "1";
    d.s.ConvertJpgMaxSize = "30";
    d.c.CJMButton->click();
    EXPECT_EQ(d.s.ImgXfull.Width(), 30);
    EXPECT_EQ(size(), QSize(20, 30));
}

TEST(Convert, FollowsItsControlPanel) {
    CopyDesk d;
    d.notes.Write("a.enf", "first line\r\nsecond line\r\nthird line");
    d.Start();
    d.c.ConvertJpgSetText->trigger();
    const auto* form = d.Up("frmCaption");
    ASSERT_TRUE(form);
    const auto press = [&](const char* name) { d.Press("frmCaption", name); };
    form->findChild<QLineEdit*>("TextFirstLines")->setText("2");
    press("CommandUseNote");
    EXPECT_EQ(form->findChild<QLineEdit*>("TextCaption")->text(), "first line  second line");
    form->findChild<QCheckBox*>("CheckAddText")->click();
    EXPECT_TRUE(d.s.ConvertJpgAddFN);
    EXPECT_TRUE(d.c.ConvertJpgAddFilename->isChecked());
    form->findChild<QSlider*>("SliderJpgQ")->setValue(50);
    EXPECT_EQ(form->findChild<QLabel*>("LabelJpgQ")->text(), "JPG Quality 50%");
    auto* size = form->findChild<QLineEdit*>("TextMaxSize");
    form->findChild<QCheckBox*>("CheckMaxHeight")->click();
    form->findChild<QCheckBox*>("CheckMaxWidth")->click();
    EXPECT_FALSE(form->findChild<QCheckBox*>("CheckMaxHeight")->isChecked());
    size->setText("9");
    press("CommandMoveTo");
    EXPECT_EQ(d.Said(), "Convert to Jpg max width too small, must be > 9.");
    EXPECT_EQ(d.TargetNames(), "");
    size->setText("30");
    press("CommandMoveTo");
    EXPECT_EQ(d.Said(), "'a.jpg' file created, width = 30");
    EXPECT_EQ(Decoded(d.Target().at("a.jpg")).size(), QSize(30, 20));
    press("NextButton");
    EXPECT_EQ(d.Current(), "b.jpg");
    press("CommandUseText");
    form->findChild<QLineEdit*>("TextCaption")->setText("typed");
    EXPECT_EQ(d.s.ConvertJpgText, "typed");
    press("CloseButton");
    EXPECT_FALSE(form->isVisible());
    d.c.ConvertJpgSetText->trigger();
    QTest::keyClick(const_cast<QWidget*>(form), Qt::Key_Escape);
    d.house.copies.SetCaptionShown(true); // the end of a show puts up what was open alone
    EXPECT_FALSE(form->isVisible());
}

TEST(Convert, SaysWhatIsNotCreated) {
    CopyDesk d;
    d.folder.Write("0.jpg", "no picture");
    d.folder.Write("z.avi", "no clip");
    d.Start();
    EXPECT_EQ(d.s.FileNameOnly, "0.jpg");
    d.c.ConvertButton->trigger();
    EXPECT_EQ(d.Said(), "'0.jpg' is not valid to convert to JPG");
    const std::string whole = JpegBytes(TellTale(600, 400));
    d.folder.Write("y.jpg", whole.substr(0, whole.size() / 2));
    d.house.navigation.RefreshDirButton_Click();
    d.GoTo("y.jpg");
    const std::string damage = d.Error();
    EXPECT_NE(damage, "");
    d.c.ConvertButton->trigger();
    EXPECT_EQ(d.Said(), "ImgX Error - 'y-1.jpg' NOT created");
    EXPECT_EQ(d.Error(), damage);
    EXPECT_FALSE(d.Pictures().contains("y-1.jpg"));
    d.c.CJMButton->click();
    EXPECT_EQ(d.Said(), "ImgX Error - 'y.jpg' NOT created");
    EXPECT_FALSE(d.Target().contains("y.jpg"));
    d.GoTo("z.avi");
    d.c.ConvertButton->trigger();
    EXPECT_EQ(d.Said(), "'z.avi' is not valid to convert to JPG");
}

TEST(Clipboard, TextsOfTheCurrentPicture) {
    CopyDesk d;
    d.notes.Write("a.enf", "M31");
    d.Start();
    d.c.CopyNotesButton->trigger();
    EXPECT_EQ(d.clipboard->Text(), "M31\r\n");
    d.c.CopyFilenameButton->trigger();
    EXPECT_EQ(d.clipboard->Text(), d.At("a.jpg"));
    d.c.CopyAutoButton->trigger();
    d.c.CopyFilenameButton->trigger(); // never advances
    EXPECT_EQ(d.Current(), "a.jpg");
    d.c.CopyExifButton->trigger();
    EXPECT_EQ(d.clipboard->Text().find("M31File name: a.jpg\r\n"), 0U);
    EXPECT_EQ(d.Current(), "b.jpg");
    d.c.CopyCameraButton[1]->trigger();
    EXPECT_EQ(d.clipboard->Text().find("   File name: b.jpg\r\n"), 0U);
    EXPECT_EQ(d.Current(), "c.jpg");
    d.GoTo("a.jpg");
    d.c.CopyCameraButton[0]->trigger();
    EXPECT_EQ(d.clipboard->Text().find("File name: a.jpg\r\n"), 0U);
    EXPECT_EQ(d.Current(), "b.jpg");
    d.c.CopyPictureButton->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), QSize(61, 40));
    EXPECT_EQ(d.Current(), "c.jpg");
}

TEST(Convert, WhatIsReplacedIsKeptAndNothingIsInventedForAFileThatWentAway) {
    CopyDesk d;
    d.target.Write("a.jpg", "first");
    d.target.Write("a-CM.jpg", "second");
    d.notes.Write("a.enf", "of a");
    d.notes.Write("a-CM.enf", "kept");
    d.Start();
    d.c.CJMButton->click();
    EXPECT_EQ(d.Said(), "'a-CM.jpg' file created");
    EXPECT_EQ(Trashed("a-CM.jpg"), "second");
    EXPECT_EQ(d.Target().at("a.jpg"), "first");
    EXPECT_EQ(d.Notes().at("a-CM.enf"), "kept");
    d.folder.Write("big.jpg", JpegBytes(TellTale(3000, 2000)));
    d.house.navigation.RefreshDirButton_Click();
    d.GoTo("big.jpg");
    d.c.ConvertJpgAddFilename->trigger();
    std::filesystem::remove(d.At("big.jpg"));
    d.c.CJMButton->click(); // only its screen size is at hand
    EXPECT_EQ(d.Said(), "ImgX Error - 'big.jpg' NOT created");
    EXPECT_EQ(d.Target().count("big.jpg"), 0U);
}

TEST(CopyTo, NothingHappensInAnEmptyFolder) {
    FilesDesk d{std::vector<std::string>{}};
    TestFolder target;
    target.Write("kept.jpg", "kept");
    d.settings->Write("copy_folder", target.Path());
    d.Start();
    int changes = 0;
    d.files.onChange = [&](const std::string&, const std::string&) {
        ++changes;
        return std::string();
    };
    d.c.CopyImageButton3->click();
    d.c.MoveToButton->click();
    d.c.CJMButton->click();
    d.c.ConvertButton->trigger();
    d.c.DeleteButton->trigger();
    d.c.RenameButton->trigger();
    d.c.DuplicateButton->trigger();
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace tarn::testing
