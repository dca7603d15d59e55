// A night's pictures from opening to quitting, in the order in which they are worked through, with
// a look at the outcome at each station.
#include "FitsFiles.h"
#include "app/FilesDesk.h"
#include "clips/ClipFiles.h"

#include "widgets/FolderTreeview.h"
#include "widgets/webpane/PageBrowser.h"

#include <QComboBox>

namespace tarn::testing {
namespace {

namespace fs = std::filesystem;

struct DayDesk : FilesDesk {
    TestFolder copies;
    TestFolder paper;
    std::string night = At("\xC3\x89vening one");

    DayDesk() : FilesDesk(std::vector<std::string>{}) {
        fs::create_directory(night);
        for (const char* name : {"M31 a.jpg", "M31 b.jpg", "M42.JPG", "Saturn.jpg"})
            Add(name, Photo(ExifBuilder(Endian::Little).Short(0x112, name[1] == '4' ? 6 : 1),
                            TellTale(600, 400)));
        Add("broken.jpg", "no picture");
        Add("scan.tif", PictureBytes(TellTale(80, 60), "TIFF"));
        Add("sky.fits", NightSky(90, 60, {{"OBJECT", "'M 31'"}}));
        EXPECT_TRUE(MakeClip(night + "/clip.avi", 12, "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p"));
        settings->Write("copy_folder", copies.Path());
    }
    void Add(const std::string& name, const std::string& bytes) const {
        folder.Write("\xC3\x89vening one/" + name, bytes);
    }
    void GoTo(const char* name) {
        house.navigation.ClearMultiselect();
        FilesDesk::GoTo(name);
    }
    std::string Shown() const { return Quarters(c.Picture1->Picture()); }
    std::string Bytes(const std::string& name) const { return BytesOf(night + "/" + name); }
    bool Stands(const std::string& name) const { return fs::exists(night + "/" + name); }

    void Look();
    void WriteNotes();
    void RunShows();
    void WorkOnFiles();
    void MakePages();
    void SeeClips();
};

// Open, tree, filter.
void DayDesk::Look() {
    Start();
    EXPECT_EQ(c.FileListBox->Count(), 0);
    c.FolderTreeview1->SetSelectedPath(night);
    GoTo("M31 a.jpg");
    EXPECT_EQ(Shown(), "rgby");
    EXPECT_EQ(s.TextNumOf, "3 of 7");
    GoTo("M42.JPG");
    EXPECT_EQ(Shown(), "bryg"); // upright
    c.FilesFilterButton2->click();
    In<QLineEdit>("frmFilter", "TextFilter")->setText("*M31*");
    In<QAbstractButton>("frmFilter", "CheckCustom")->click();
    EXPECT_EQ(c.FileListBox->Count(), 2);
    c.FilesFilterButton2->click();
    EXPECT_EQ(c.FileListBox->Count(), 7);
}

// Note and composer.
void DayDesk::WriteNotes() {
    GoTo("M31 a.jpg");
    c.NotesBox->setPlainText("Half moon");
    c.SaveNotesButton->click();
    EXPECT_EQ(Notes().at("M31 a.enf"), "Half moon");
    GoTo("M42.JPG");
    c.CommandNotesNew->click();
    In<QComboBox>("FrmNewNotes", "ComboDate")->setEditText("tonight");
    Press("FrmNewNotes", "CommandSet");
    Press("FrmNewNotes", "CommandSave");
    EXPECT_TRUE(Notes().at("M42.enf").ends_with("Date: tonight"));
    In<QWidget>("FrmNewNotes", "ComboDate")->window()->close();
}

// Show, 4-up, compare.
void DayDesk::RunShows() {
    GoTo("M31 a.jpg");
    RunShow(c.SlideButton, {Qt::Key_R, Qt::Key_N, Qt::Key_Escape});
    EXPECT_EQ(s.FileNameOnly, "M31 b.jpg");
    EXPECT_EQ(s.NoteText, "");
    RunShow(c.Slides4Button, {Qt::Key_Down, Qt::Key_Escape});
    EXPECT_EQ(s.FileNameOnly, "M42.JPG");
    RunShow(c.SlidesC2Button, {Qt::Key_Down, Qt::Key_Escape});
    EXPECT_FALSE(s.SlideViewing);
}

// Convert, move, rename, and back.
void DayDesk::WorkOnFiles() {
    GoTo("scan.tif");
    c.ConvertButton->trigger();
    EXPECT_EQ(Said(), "'scan.jpg' file created");
    EXPECT_TRUE(Bytes("scan.jpg").starts_with("\xFF\xD8"));
    GoTo("M31 a.jpg");
    const std::string moved = Bytes("M31 a.jpg");
    c.MoveToButton->click();
    EXPECT_FALSE(Stands("M31 a.jpg"));
    EXPECT_EQ(BytesOf(copies.Path() + "/M31 a.jpg"), moved);
    c.UndoButton->trigger();
    EXPECT_EQ(Bytes("M31 a.jpg"), moved);
    GoTo("M42.JPG");
    Rename("Orion.JPG");
    EXPECT_TRUE(Stands("Orion.JPG")) << Said();
    EXPECT_TRUE(Notes().contains("Orion.enf"));
}

// Thumbnails, sheet, page, gallery.
void DayDesk::MakePages() {
    c.GenerateThumbButton->trigger();
    EXPECT_TRUE(fs::exists(night + "/thumbnails/T120_Orion.JPG")) << Said();
    Answer({paper.Path() + "/sheet.pdf"}, c.PrintCButton);
    EXPECT_TRUE(BytesOf(paper.Path() + "/sheet.pdf").starts_with("%PDF")) << Said();
    EXPECT_EQ(s.FileNameOnly, "Orion.JPG");
    c.CreateAppendHtmlFile->trigger();
    Press("frmHtmlLayout", "CreateButton_1", {night + "/page.html"});
    Press("frmHtmlLayout", "CommandOk");
    Press("frmHtmlLayout", "HtmlAddButton");
    Press("frmHtmlLayout", "HtmlCloseButton");
    Press("frmHtmlLayout", "QuitButton");
    EXPECT_NE(Bytes("page.html").find("Orion.JPG"), std::string::npos);
    Answer({night + "/index.html"}, c.HtmlThumbButton);
    Press("frmHtmlThumb", "HtmlThumbnailButton");
    EXPECT_NE(Bytes("index.html").find("T120_Orion.JPG"), std::string::npos) << Said();
    Press("frmHtmlThumb", "QuitButton");
    EXPECT_EQ(s.FileNameOnly, "Orion.JPG");
}

// Clip and FITS.
void DayDesk::SeeClips() {
    GoTo("clip.avi");
    EXPECT_EQ(NumberOf(c.Picture2->Picture()), 4) << Said();
    c.VideoButton[5]->click();
    EXPECT_EQ(NumberOf(c.Picture2->Picture()), 5);
    c.FCheck->setChecked(true);
    GoTo("sky.fits");
    EXPECT_EQ(s.Kind, FileKind::Picture);
    EXPECT_EQ(c.Picture1->Picture().size(), QSize(90, 60));
    c.StretchButton->trigger();
    EXPECT_TRUE(In<QWidget>("frmStretch", "")->window()->isVisible());
}

TEST(Day, EveryStationHasItsOutcome) {
    DayDesk d;
    d.Look();
    d.WriteNotes();
    d.RunShows();
    d.WorkOnFiles();
    d.MakePages();
    d.SeeClips();
    d.GoTo("Saturn.jpg");
    d.house.window.close();
    EXPECT_TRUE(d.events.ProgramEnds());
    EXPECT_TRUE(d.settings->Read("filespec_default", "").ends_with("Saturn.jpg"));
}

} // namespace
} // namespace tarn::testing
