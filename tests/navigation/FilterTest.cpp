#include "NavDesk.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>

namespace tarn::testing {
namespace {

struct FilterDesk : NavDesk {
    FilterDesk() {
        for (const char* name : {"a.jpg", "b.avi", "c.html", "d.fit", "e.txt", "f.jpg"})
            folder.Write(name, "x");
        state.PictureTypes = "*.jpg";
        state.VideoTypes = "*.avi";
        state.WebTypes = "*.html";
        state.FileTypes = "*.jpg;*.avi";
        controls.FileListBox->SetPattern(state.FileTypes);
        for (QCheckBox* box : {controls.PCheck, controls.VCheck}) {
            const QSignalBlocker loading(box);
            box->setChecked(true);
        }
        Enter();
        Select("f.jpg");
    }
    void Select(const char* name) {
        room.ClearMultiselect();
        room.SelectRow(controls.FileListBox->RowOf(name));
        state.FileNameOnly = name;
        calls.clear();
    }
    const std::string& Pattern() const { return controls.FileListBox->Pattern(); }
    std::string Current() const {
        return NavDesk::Row() < 0 ? "none" : controls.FileListBox->Text(NavDesk::Row());
    }
    template <typename Widget> Widget* Find(const char* name) const {
        return window.findChild<Widget*>(QString::fromLatin1(name));
    }
};

TEST(ClassBoxes, AChangePutsThePatternOnTheListAndKeepsTheFile) {
    FilterDesk d;
    d.state.ImageLoaded = true;
    d.controls.VCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg");
    EXPECT_EQ(d.Current(), "f.jpg");
    EXPECT_EQ(d.calls.back(), "DisplayPicture"); // by way of the click
    EXPECT_EQ(d.state.VideoListCheck, 0);
    d.controls.PCheck->click(); // a class must stay
    EXPECT_TRUE(d.controls.PCheck->isChecked());
    EXPECT_EQ(d.state.PictureListCheck, 1);
    d.controls.VCheck->setChecked(true); // also in code
    EXPECT_EQ(d.Pattern(), "*.avi;*.jpg");
    d.controls.WCheck->click();
    EXPECT_EQ(d.Pattern(), "*.html;*.jpg;*.avi");
    d.controls.PCheck->click();
    EXPECT_EQ(d.Pattern(), "*.avi"); // which leaves the web files out
    EXPECT_EQ(d.Current(), "b.avi"); // the file is not listed any more
    d.controls.VCheck->click();
    EXPECT_TRUE(d.controls.VCheck->isChecked()); // web files alone do not count
}

TEST(ClassBoxes, TextsAreLostToARebuildAndFitsGoesBackToItsTick) {
    FilterDesk d;
    const std::string fits = "*.fits;*.fit;*.xisf;*.fit*.gz;*.fz";
    d.controls.TCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi;*.txt");
    d.controls.VCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg");
    EXPECT_TRUE(d.controls.TCheck->isChecked());
    d.controls.FCheck->click();
    d.controls.CCheck->click();
    d.controls.WCheck->click();
    EXPECT_EQ(d.Pattern(), "*.html;*.jpg;" + fits + ";*.cr2");
    d.controls.WCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg;" + fits + ";*.cr2");
    d.controls.FCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg");
    EXPECT_TRUE(d.controls.CCheck->isChecked());
    d.controls.CCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg;" + fits);
}

TEST(ClassBoxes, SlideCommandsNeedPicturesAndAPicture) {
    FilterDesk d;
    for (QPushButton* button : {d.controls.SlideButton, d.controls.ViewButton})
        Connect(button, [] {});
    const auto on = [&] {
        const bool view = d.controls.ViewButton->isEnabled();
        EXPECT_EQ(d.controls.SlideButton->isEnabled(), view);
        return view;
    };
    d.state.ImageLoaded = true;
    d.controls.FileListBox->onClick = [] {}; // which would set them anew
    d.controls.PCheck->click();
    EXPECT_FALSE(on());
    d.state.ImageLoaded = false;
    d.controls.PCheck->click();
    EXPECT_FALSE(on());
    d.controls.PCheck->click();
    d.state.ImageLoaded = true;
    d.controls.PCheck->click();
    EXPECT_TRUE(on());
    // Without a list of pictures the videos leave them as they are.
    d.state.PictureTypes.clear();
    d.state.ImageLoaded = false;
    d.controls.VCheck->click();
    EXPECT_EQ(d.Pattern(), "");
    EXPECT_TRUE(on());
}

TEST(ClassBoxes, AnEmptyClassListsAllFilesAndASeparatorInFrontIsDropped) {
    FilterDesk d;
    d.state.VideoTypes.clear();
    d.controls.PCheck->click();
    EXPECT_EQ(d.Pattern(), "");
    EXPECT_EQ(d.controls.FileListBox->Count(), 6);
    d.state.PictureTypes = ";*.fit";
    d.controls.PCheck->click();
    EXPECT_EQ(d.Pattern(), "*.fit");
    d.state.PictureTypes = "*.none";
    d.controls.VCheck->click();
    EXPECT_EQ(d.controls.FileListBox->Count(), 0);
    EXPECT_EQ(d.state.TextNumOf, "");
}

struct HiddenDesk : FilterDesk {
    std::string Said() const {
        return controls.HiddenFilesLabel->isHidden()
                   ? std::string()
                   : controls.HiddenFilesLabel->text().toStdString();
    }
    void ShowThem() { emit controls.HiddenFilesLabel->linkActivated(QStringLiteral("show")); }
};

TEST(HiddenFiles, OneClickListsWhatTheBoxesHide) {
    HiddenDesk d;
    EXPECT_EQ(d.Said(), "<a href=\"show\">1 web file, 1 FITS file and 1 text file are not listed: "
                        "show them</a>");
    d.ShowThem();
    EXPECT_EQ(d.Said(), "");
    EXPECT_EQ(d.controls.FileListBox->Count(), 6);
    EXPECT_EQ(d.Current(), "f.jpg");
    d.controls.VCheck->click(); // which leaves out the texts, though their box is ticked
    EXPECT_TRUE(d.controls.TCheck->isChecked());
    EXPECT_NE(d.Said().find("1 text file"), std::string::npos);
    d.ShowThem();
    EXPECT_EQ(d.Said(), "");
    EXPECT_EQ(d.controls.FileListBox->Count(), 6);
    d.controls.FCheck->click();
    EXPECT_NE(d.Said(), "");
    d.controls.FilesFilterButton2->click(); // the window says what it hides
    EXPECT_EQ(d.Said(), "");
    d.controls.FilesFilterButton2->click();
    EXPECT_NE(d.Said(), "");
}

TEST(HiddenFiles, AnEmptyListSaysThemInThePane) {
    HiddenDesk d;
    TestFolder sky;
    for (const char* name : {"a.fit", "b.fits", "c.dat"}) sky.Write(name, "x");
    d.controls.FolderTreeview1->SetSelectedPath(sky.Path());
    const auto hint = [&] { return d.controls.Picture1->accessibleDescription().toStdString(); };
    EXPECT_NE(hint().find("2 FITS files are not listed"), std::string::npos) << hint();
    d.ShowThem();
    EXPECT_EQ(d.Current(), "a.fit");
    EXPECT_EQ(d.Said(), "");
    d.folder.Write("g.fit", "x");
    d.controls.FCheck->click();
    d.controls.FolderTreeview1->SetSelectedPath(d.folder.Path());
    QSignalSpy looked(d.controls.FileListBox, &FileListBox::leftOutChanged);
    d.folder.Write("h.fit", "x"); // by another program
    ASSERT_TRUE(looked.wait(5000));
    EXPECT_NE(d.Said().find("3 FITS files"), std::string::npos) << d.Said();
}

TEST(HiddenFiles, OneClickListsTypesThatNoClassHas) {
    HiddenDesk d;
    TestFolder phone;
    for (const char* name : {"a.heic", "b.jpeg", "c.mov", "d.dat"}) phone.Write(name, "x");
    d.controls.FolderTreeview1->SetSelectedPath(phone.Path());
    EXPECT_NE(d.Said().find("2 picture files of other types (heic, jpeg)"), std::string::npos)
        << d.Said();
    d.ShowThem();
    EXPECT_EQ(d.controls.FileListBox->Count(), 3);
    EXPECT_EQ(d.Said(), "");
    EXPECT_EQ(d.state.VideoTypes, "*.avi;*.mov");
    EXPECT_TRUE(d.controls.VCheck->isChecked());
}

struct TypesDesk : FilterDesk {
    TypesDesk() { controls.SetFileTypesButton->trigger(); }
    bool IsUp() const { return Find<QDialog>("frmFileTypes")->isVisible(); }
    bool Refused() const { return Find<QLabel>("Label2")->isVisible(); }
    void Set(const char* pictures, const char* videos) {
        Find<QLineEdit>("FileTypesText")->setText(QString::fromLatin1(pictures));
        Find<QLineEdit>("VideoTypesText")->setText(QString::fromLatin1(videos));
        Find<QPushButton>("SetButton")->click();
    }
};

TEST(FileTypes, SetTakesTheThreeTexts) {
    TypesDesk d;
    EXPECT_TRUE(d.IsUp());
    EXPECT_TRUE(d.Find<QDialog>("frmFileTypes")->isModal());
    EXPECT_EQ(d.Find<QLineEdit>("WebTypesText")->text(), QStringLiteral("*.html"));
    d.Set("*.jpg;*.txt", "*.ser");
    EXPECT_FALSE(d.IsUp());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.txt;*.ser"); // the web box is not ticked
    EXPECT_EQ(d.state.FileTypes, d.Pattern());
    EXPECT_EQ(d.state.PictureTypes, "*.jpg;*.txt");
    EXPECT_EQ(d.state.VideoTypes, "*.ser");
    EXPECT_EQ(d.Current(), "f.jpg");
}

TEST(FileTypes, ThoseThatGoWithFitsAreKeptForItsBox) {
    TypesDesk d;
    auto* xisf = d.Find<QLineEdit>("XisfTypesText");
    auto* packed = d.Find<QLineEdit>("PackedFitsTypesText");
    EXPECT_EQ(xisf->text(), QStringLiteral("*.xisf"));
    EXPECT_EQ(packed->text(), QStringLiteral("*.fit*.gz;*.fz"));
    xisf->setText(QStringLiteral("sub/*.xisf"));
    d.Set("*.jpg", "*.avi");
    EXPECT_TRUE(d.Refused());
    EXPECT_EQ(d.state.XisfTypes, "*.xisf");
    xisf->setText(QStringLiteral("*.xsf"));
    packed->clear();
    d.Set("*.jpg", "*.avi");
    EXPECT_FALSE(d.IsUp());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
    d.controls.FCheck->click();
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi;*.fits;*.fit;*.xsf");
}

TEST(FileTypes, ASeparatorIsRefusedAndCancelChangesNothing) {
    TypesDesk d;
    d.Set("*.bmp;sub/*.jpg", "*.ser");
    EXPECT_TRUE(d.IsUp());
    EXPECT_TRUE(d.Refused());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
    EXPECT_EQ(d.state.PictureTypes, "*.jpg");
    EXPECT_EQ(d.state.VideoTypes, "*.avi");
    d.Find<QPushButton>("CancelButton")->click();
    EXPECT_FALSE(d.IsUp());
    d.controls.SetFileTypesButton->trigger();
    EXPECT_FALSE(d.Refused());
    EXPECT_EQ(d.Find<QLineEdit>("FileTypesText")->text(), QStringLiteral("*.jpg"));
}

TEST(FileTypes, AGoodPatternIsTakenThoughTheFolderIsGone) {
    TypesDesk d;
    std::filesystem::remove_all(d.folder.Path());
    d.Set("*.bmp", "*.ser");
    EXPECT_FALSE(d.IsUp());
    EXPECT_FALSE(d.Refused());
    EXPECT_EQ(d.Pattern(), "*.bmp;*.ser");
    EXPECT_EQ(d.state.PictureTypes, "*.bmp");
}

TEST(FileTypes, FitsIsCleared) {
    FilterDesk d;
    d.controls.FCheck->click();
    d.controls.SetFileTypesButton->trigger();
    d.Find<QPushButton>("SetButton")->click();
    EXPECT_FALSE(d.controls.FCheck->isChecked());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
}

// The filter window by its own controls.
struct WindowDesk : FilterDesk {
    WindowDesk() { Toggle(); }
    void Toggle() { controls.FilesFilterButton2->click(); }
    QDialog* Window() const { return Find<QDialog>("frmFilter"); }
    QCheckBox* Box(int i) const {
        return Find<QCheckBox>(("CheckFilter_" + std::to_string(i)).c_str());
    }
    QCheckBox* Custom() const { return Find<QCheckBox>("CheckCustom"); }
    QLineEdit* Text() const { return Find<QLineEdit>("TextFilter"); }
    QComboBox* Presets() const { return Find<QComboBox>("ComboFilter"); }
    void Press(const char* button) { Find<QPushButton>(button)->click(); }
    void Type(const char* text, Qt::Key key) {
        Text()->setText(QString::fromLatin1(text));
        QTest::keyClick(Text(), key);
    }
};

TEST(Filter, BoxesNarrowTheListWhileTheWindowIsOpen) {
    WindowDesk d;
    EXPECT_TRUE(d.state.FilterActive);
    EXPECT_TRUE(d.Window()->windowFlags() & Qt::WindowStaysOnTopHint);
    EXPECT_FALSE(d.Window()->isModal());
    EXPECT_FALSE(d.controls.PCheck->isEnabled());
    EXPECT_TRUE(d.controls.FCheck->isEnabled());
    EXPECT_TRUE(d.Box(0)->isVisible());
    EXPECT_TRUE(d.Box(1)->isVisible());
    EXPECT_FALSE(d.Box(2)->isVisible());
    EXPECT_EQ(d.Box(1)->text(), QStringLiteral("*.avi"));
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi"); // opening changes nothing
    d.Box(0)->click();
    EXPECT_EQ(d.Pattern(), "*.avi");
    EXPECT_TRUE(d.calls.empty()); // no file is shown for it
    d.Box(1)->click();
    EXPECT_EQ(d.Pattern(), "*.none");
    EXPECT_EQ(d.controls.FileListBox->Count(), 0);
    d.state.BatchRuns = true; // counts the rows: it is cancelled first
    d.Toggle();
    EXPECT_TRUE(d.state.FilterActive);
    EXPECT_TRUE(d.state.BatchCancelled);
    d.state.BatchRuns = false;
    d.Toggle();
    EXPECT_FALSE(d.state.FilterActive);
    EXPECT_FALSE(d.Window()->isVisible());
    EXPECT_TRUE(d.controls.PCheck->isEnabled());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
    EXPECT_EQ(d.Current(), "f.jpg");
}

TEST(Filter, AFolderThatIsGoneLeavesNoFilterBehind) {
    WindowDesk d;
    d.Box(0)->click();
    std::filesystem::remove_all(d.folder.Path());
    d.Toggle();
    TestFolder other;
    other.Write("a.jpg", "x");
    d.controls.FolderTreeview1->SetSelectedPath(other.Path());
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Filter, TheWindowTakesUpItsLastClosing) {
    WindowDesk d;
    d.Box(1)->click();
    d.Toggle();
    d.Toggle();
    EXPECT_EQ(d.Pattern(), "*.jpg");
    EXPECT_TRUE(d.Box(0)->isChecked());
    EXPECT_FALSE(d.Box(1)->isChecked());
    d.Type("b*", Qt::Key_Return);
    d.Toggle();
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
    d.Toggle();
    EXPECT_TRUE(d.Custom()->isChecked());
    EXPECT_FALSE(d.Box(0)->isEnabled());
    EXPECT_EQ(d.Pattern(), "b*");
    d.state.FileNameOnly = "gone.jpg";
    d.Toggle();
    EXPECT_EQ(d.Current(), "none"); // no row is the current file
}

TEST(Filter, TheKeysOfTheText) {
    WindowDesk d;
    d.Custom()->click(); // without a text
    EXPECT_FALSE(d.Custom()->isChecked());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
    d.Type("a*", Qt::Key_Return);
    EXPECT_TRUE(d.Custom()->isChecked());
    EXPECT_FALSE(d.Box(0)->isEnabled());
    EXPECT_EQ(d.Pattern(), "a*");
    d.Type("f*", Qt::Key_Enter);
    EXPECT_EQ(d.Pattern(), "f*");
    d.Type("../*", Qt::Key_Return); // refused without a message
    EXPECT_EQ(d.Pattern(), "f*");
    QTest::keyClick(d.Text(), Qt::Key_Escape);
    EXPECT_TRUE(d.Window()->isVisible());
    EXPECT_FALSE(d.Custom()->isChecked());
    EXPECT_TRUE(d.Box(0)->isEnabled());
    EXPECT_EQ(d.Pattern(), "*.jpg;*.avi");
    EXPECT_EQ(d.state.FilterCustom, "../*"); // on the desk as it is typed
    QTest::keyClick(d.Window(), Qt::Key_Escape);
    EXPECT_FALSE(d.state.FilterActive);
    d.Toggle();
    QTest::keyClick(d.Text(), Qt::Key_Escape); // nothing to take off: the window goes
    EXPECT_FALSE(d.state.FilterActive);
}

TEST(Filter, AWordIsFoundAnywhereAndNothingFoundIsSaid) {
    WindowDesk d;
    const auto found = [&] { return d.Find<QLabel>("FoundLabel")->text().toStdString(); };
    EXPECT_EQ(found(), "3 files fit");
    d.Type("JP", Qt::Key_Return);
    EXPECT_EQ(d.Pattern(), "*JP*");
    EXPECT_EQ(found(), "2 files fit");
    d.Type("nebula", Qt::Key_Return);
    EXPECT_EQ(found(), "No file fits the filter");
    TestFolder other;
    other.Write("nebula.jpg", "x");
    d.controls.FolderTreeview1->SetSelectedPath(other.Path()); // it stays for the next folder
    EXPECT_TRUE(d.Window()->isVisible());
    EXPECT_EQ(d.Current(), "nebula.jpg");
    EXPECT_EQ(found(), "1 file fits");
    TestFolder none;
    none.Write("a.jpg", "x");
    d.controls.FolderTreeview1->SetSelectedPath(none.Path());
    EXPECT_NE(d.controls.Picture1->accessibleDescription().toStdString().find("fits the filter"),
              std::string::npos);
}

TEST(Filter, PresetsAreAddedChosenAndDeleted) {
    WindowDesk d;
    EXPECT_EQ(d.Presets()->itemText(0), QStringLiteral("*VMC*"));
    d.Press("CommandAdd"); // no text
    EXPECT_EQ(d.Presets()->count(), 1);
    d.Text()->setText(QStringLiteral("a*"));
    d.Press("CommandAdd");
    EXPECT_EQ(d.calls.back(), "message Entry added to ComboFilter box");
    EXPECT_EQ(d.state.FilterPresets, "*VMC*;a*;");
    d.Press("CommandDelete"); // none is chosen
    EXPECT_EQ(d.Presets()->count(), 2);
    d.Custom()->click();
    d.Presets()->setCurrentIndex(0);
    emit d.Presets()->activated(0);
    EXPECT_EQ(d.Text()->text(), QStringLiteral("*VMC*"));
    EXPECT_EQ(d.Pattern(), "*VMC*");
    d.Press("CommandDelete");
    EXPECT_EQ(d.calls.back(), "message *VMC* - removed from ComboFilter box");
    d.Press("CommandDelete"); // no other has been chosen
    d.Toggle();
    EXPECT_EQ(d.state.FilterPresets, "a*;");
    d.Toggle();
    EXPECT_EQ(d.Presets()->itemText(0), QStringLiteral("a*"));
}

TEST(Filter, APatternPastTheSixteenthComesBackAtTheEnd) {
    FilterDesk d;
    std::string pattern = "*.jpg";
    for (int i = 1; i < 17; ++i) pattern += ";*." + std::to_string(i);
    d.controls.FileListBox->SetPattern(pattern);
    d.controls.FilesFilterButton2->click();
    const auto box = [&](const char* name) { return d.Find<QCheckBox>(name); };
    EXPECT_EQ(box("CheckFilter_15")->text(), QStringLiteral("*.15"));
    box("CheckFilter_1")->click();
    EXPECT_EQ(d.Pattern().find("*.16"), std::string::npos);
    d.controls.FilesFilterButton2->click();
    EXPECT_EQ(d.Pattern(), pattern);
}

} // namespace
} // namespace tarn::testing
