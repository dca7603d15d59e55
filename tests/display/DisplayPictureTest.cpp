// From a selected file to the picture on screen: what stands there, and who is told of it.
#include "Desk.h"

#include "common/dates.h"

#include <QAction>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include <gtest/gtest.h>

#include <filesystem>

using namespace tarn;
using namespace tarn::testing;

namespace {

const std::string kGood = JpegBytes(TellTale(640, 400));

class DisplayPicture : public ::testing::Test {
protected:
    bool IsShown(const QWidget* widget) const { return !widget->isHidden(); }

    Desk d;
};

} // namespace

TEST_F(DisplayPicture, ShowsAPictureAndTellsOfItOnceItStands) {
    d.state.ExpOrientation = 6; // of the picture before
    d.state.PictureDate = "old";
    d.state.ImageMirrored = true;
    d.controls.List1->addItem("old");
    d.info.whenRead = [this] {
        EXPECT_EQ(d.state.FileNameOnly, "a.jpg");
        EXPECT_EQ(d.state.ImageWidth, 640);
        EXPECT_EQ(d.state.FileDate,
                  FormatDateText(FromFileTime(*d.files->ModifiedTime(d.state.Filename))));
        EXPECT_EQ(d.state.PictureDate, "");
        EXPECT_EQ(d.state.ExpOrientation, 0);
        EXPECT_EQ(d.state.PanelRows, std::vector<std::string>());
    };
    d.Show("a.jpg", kGood);
    EXPECT_EQ(d.Times("ReadPictureInfo"), 1);
    EXPECT_EQ(d.Times("commands on"), 1);
    EXPECT_EQ(d.Times("told"), 1);
    EXPECT_EQ(d.LastCall(), "FocusPane");
    EXPECT_EQ(d.Error(), "") << "the one before is wiped";
    EXPECT_EQ(d.shownWhenTold, "80x50 rgby");
    EXPECT_EQ(d.Shown(), "80x50 rgby");
    EXPECT_EQ(d.controls.PreviewLabel->text().toStdString(), "Preview picture is reduced");
    EXPECT_EQ(d.controls.PreviewLabel->palette().color(QPalette::WindowText), QColor(255, 128, 0));
    EXPECT_EQ(d.state.SizeText, "640 x 400");
    EXPECT_EQ(d.state.ImgXfull.StatusText(), "640 x 400, 32 bit");
    EXPECT_EQ(Quarters(d.state.ImgXfull.FullPicture()), "rgby");
    EXPECT_FALSE(d.state.ImageMirrored);
    EXPECT_TRUE(d.state.ImageLoaded);
    EXPECT_TRUE(d.state.DeleteNoteToo);
    EXPECT_FALSE(IsShown(d.controls.DeletePicButton));

    d.info.whenRead = nullptr;
    d.Show("b.jpg", JpegBytes(TellTale(60, 40)));
    EXPECT_EQ(d.controls.PreviewLabel->text().toStdString(), "Preview picture is full size");
    EXPECT_EQ(d.Shown(), "60x40 rgby");
    EXPECT_EQ(d.Times("commands on"), 0) << "they are on already";
}

TEST_F(DisplayPicture, TellsAndSetsTheFilesDateWhereItDiffers) {
    d.info.whenRead = [this] { d.state.DatesDiffer = true; };
    d.state.AutoSetFileDates = true;
    d.Show("a.jpg", kGood);
    EXPECT_EQ(d.Times("SetFileDates"), 1);
    EXPECT_EQ(d.Shown(), "80x50 rgby");
    d.state.AutoSetFileDates = false;
    d.Show("a.jpg", kGood);
    EXPECT_EQ(d.Times("SetFileDates"), 0);
    d.info.whenRead = nullptr;
    d.state.AutoSetFileDates = true;
    d.Show("a.jpg", kGood);
    EXPECT_EQ(d.Times("SetFileDates"), 0) << "the flag is of one picture";
}

TEST_F(DisplayPicture, PutsAPlaceholderForWhatCannotBeRead) {
    struct Case {
        std::string name;
        bool deletes, deletesFits;
        std::string error;
    };
    const std::string why = "Not a picture that can be read - ";
    for (const Case& c :
         {Case{"a.fit", true, true, ""}, Case{"a.fits", true, true, ""},
          Case{"a.cr2", false, false, ""}, Case{"a.mp4", false, false, ""},
          Case{"a.jpg", true, false, why + "a.jpg"}, Case{"a.tif", true, false, why + "a.tif"}}) {
        d.Show("good.jpg", kGood);
        d.controls.DeleteFitsButton->hide();
        d.Show(c.name, "only words, no picture");
        EXPECT_EQ(d.Error(), c.error) << c.name;
        EXPECT_EQ(d.Times("commands off"), 1) << c.name;
        EXPECT_EQ(d.Times("ReadPictureInfo"), 0) << c.name;
        EXPECT_EQ(d.Times("told"), 1) << c.name;
        EXPECT_EQ(IsShown(d.controls.DeletePicButton), c.deletes) << c.name;
        EXPECT_EQ(IsShown(d.controls.DeleteFitsButton), c.deletesFits) << c.name;
        EXPECT_EQ(d.controls.Picture1->Picture().width(), 75) << c.name;
        EXPECT_EQ(d.state.ImageWidth, 640) << "of the program's own picture";
        EXPECT_EQ(d.state.SizeText, "") << c.name;
        EXPECT_TRUE(d.state.NoExif) << c.name;
        EXPECT_FALSE(d.state.ImageLoaded) << c.name;
        EXPECT_FALSE(d.state.DeleteNoteToo) << c.name;
    }
    d.Show("real.cr2", kGood);
    EXPECT_EQ(d.Shown(), "80x50 rgby") << "a readable file is shown whatever its name";
}

TEST_F(DisplayPicture, ShowsWhatThereIsOfAFileCutShortAndSaysSo) {
    d.Show("cut.jpg", kGood.substr(0, kGood.size() - kGood.size() / 4));
    EXPECT_EQ(d.Error(), "Premature end of JPEG file - cut.jpg");
    EXPECT_EQ(d.Times("ReadPictureInfo"), 1);
    EXPECT_EQ(d.Shown().substr(0, 8), "80x50 rg");
    EXPECT_TRUE(d.state.ImageLoaded);
}

TEST_F(DisplayPicture, AFileThatWentAwayInAnEmptyListOffersNothingToDelete) {
    d.Show("a.jpg", kGood);
    d.state.Filename = d.folder.Path() + "/missing.jpg";
    d.controls.FileListBox->SetPattern("*.none");
    d.room.DisplayPicture();
    EXPECT_EQ(d.state.FileDate, "");
    EXPECT_FALSE(IsShown(d.controls.DeletePicButton));
    EXPECT_EQ(d.state.FileIndex, -1);
}

TEST_F(DisplayPicture, TurnsByOrientationOnceTheProgramHasStarted) {
    struct Case {
        int orientation;
        std::string shown, size;
        bool right, left;
    };
    for (const Case& c : {Case{1, "80x50 rgby", "640 x 400", false, false},
                          Case{3, "80x50 ybgr", "640 x 400", false, false},
                          Case{6, "31x50 bryg", "400 x 640", true, false},
                          Case{8, "31x50 gyrb", "400 x 640", false, true},
                          Case{2, "80x50 rgby", "640 x 400", false, false}}) {
        d.info.whenRead = [&] { d.state.ExpOrientation = std::int16_t(c.orientation); };
        d.Show("a.jpg", kGood);
        EXPECT_EQ(d.Shown(), c.shown) << c.orientation;
        EXPECT_EQ(d.state.SizeText, c.size) << c.orientation;
        EXPECT_EQ(d.state.ImageRotatedRight, c.right) << c.orientation;
        EXPECT_EQ(d.state.ImageRotatedLeft, c.left) << c.orientation;
    }
    d.info.whenRead = [this] { d.state.ExpOrientation = 6; };
    d.state.FormLoadDone = false;
    d.Show("a.jpg", kGood);
    EXPECT_EQ(d.Shown(), "80x50 rgby") << "the first picture stays as stored";
}

TEST_F(DisplayPicture, ComesBackInTheTurnThatItHadBefore) {
    struct Case {
        bool PreviewTurns::*flag;
        std::string shown, size;
    };
    for (const Case& c : {Case{&PreviewTurns::ImageRotatedRight, "31x50 bryg", "400 x 640"},
                          Case{&PreviewTurns::ImageRotatedLeft, "31x50 gyrb", "400 x 640"},
                          Case{&PreviewTurns::ImageMirrored, "80x50 gryb", "640 x 400"},
                          Case{&PreviewTurns::ImageFliped, "80x50 byrg", "640 x 400"}}) {
        d.Choose("a.jpg", kGood);
        PreviewTurns turns;
        turns.*c.flag = true;
        d.room.DisplayPicture({.turns = turns});
        EXPECT_EQ(d.Shown(), c.shown);
        EXPECT_EQ(d.state.SizeText, c.size);
        EXPECT_TRUE(d.state.*c.flag) << c.shown;
        d.Show("a.jpg", kGood);
        EXPECT_EQ(d.Shown(), "80x50 rgby") << "only once";
        EXPECT_FALSE(d.state.*c.flag) << c.shown;
    }
    d.room.DisplayPicture({.turns = PreviewTurns()});
    EXPECT_EQ(d.Shown(), "80x50 rgby") << "no turn shows the picture, too";
}

TEST_F(DisplayPicture, MarksTheLastRowAndPlaysItsSound) {
    d.Choose("b.jpg", kGood);
    const auto sound = [this](const std::string& name) {
        d.Show(name, kGood);
        for (const std::string& call : d.calls)
            if (call.rfind("play", 0) == 0) return call.substr(5);
        return std::string();
    };
    EXPECT_EQ(sound("b.jpg"), "");
    EXPECT_TRUE(IsShown(d.controls.LastLabel));
    d.state.BeepAllSlide = true;
    EXPECT_EQ(sound("b.jpg"), "picture.wav");
    d.state.BeepLastSlide = true;
    EXPECT_EQ(sound("b.jpg"), "picture_last.wav");
    EXPECT_EQ(sound("a.jpg"), "picture.wav");
    EXPECT_FALSE(IsShown(d.controls.LastLabel));
    EXPECT_EQ(d.state.FileIndex, 0);
    d.state.BeepAllSlide = false;
    EXPECT_EQ(sound("a.jpg"), "");
}

TEST_F(DisplayPicture, LeavesTheFocusToWhoKeepsIt) {
    d.Choose("a.jpg", kGood);
    for (const PictureRequest& request : {KeepingKeyboard(), InPassing()}) {
        d.calls.clear();
        d.room.DisplayPicture(request);
        EXPECT_EQ(d.LastCall(), "told");
    }
}
