// Notes that write themselves: the composer filled from the picture shown, the kit list, and all
// frames of a night at once.
#include "FilesDesk.h"
#include "FitsFiles.h"

#include <QComboBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTableWidget>

namespace tarn::testing {
namespace {

std::string Frame(const std::string& hour, const char* filter, const char* type = "'Light'") {
    return NightSky(60, 40,
                    {{"DATE-OBS", "'2024-11-05T" + hour + ":00:00'"},
                     {"EXPTIME", "60"},
                     {"OBJECT", "'M 1'"},
                     {"TELESCOP", "'EQMOD HEQ5'"},
                     {"INSTRUME", "'ASI 2600'"},
                     {"FILTER", "'" + std::string(filter) + "'"},
                     {"IMAGETYP", type}});
}

struct NotesOfNight : FilesDesk {
    NotesOfNight() : FilesDesk(std::vector<std::string>()) {
        folder.Write("a.fit", Frame("21", "Ha"));
        folder.Write("b.fit", Frame("22", "OIII"));
        folder.Write("dark.fit", Frame("23", "", "'Dark'"));
        folder.Write("kept.fit", Frame("20", "Ha"));
        notes.Write("kept.enf", "mine");
        settings->Write("sky_sites", "Garden|48.125|11.525|520|60");
        settings->Write("sky_site", "Garden");
        notes.Write("Kit_List.txt",
                    "Telescope:TEC APO 140:EQMOD HEQ5\r\nMount:HEQ5:EQMOD HEQ5\r\n");
        Start(At("a.fit"));
        house.window.show();
    }
    QComboBox& Box(const char* name) const { return *In<QComboBox>("FrmNewNotes", name); }
    bool Await(const char* box, const char* value) const {
        return QTest::qWaitFor([&] { return Box(box).currentText() == QString::fromLatin1(value); },
                               5000);
    }
    std::string Source(const char* of) const {
        return In<QLabel>("FrmNewNotes", of)->toolTip().toStdString();
    }
    std::string NoteBytes(const char* name) const { return BytesOf(notes.Path() + "/" + name); }
};

TEST(FilledComposer, HasTheFactsOfThePictureAndAChoiceStays) {
    NotesOfNight d;
    d.c.CommandNotesNew->click();
    ASSERT_TRUE(d.Up("FrmNewNotes"));
    d.Press("FrmNewNotes", "CommandFill");
    ASSERT_TRUE(d.Await("ComboTelescope", "TEC APO 140"));
    EXPECT_EQ(d.Source("SourceTelescope"), "kit list, for 'EQMOD HEQ5'");
    EXPECT_EQ(d.Box("ComboMount").currentText(), "HEQ5");
    EXPECT_EQ(d.Box("ComboCamera").currentText(), "ASI 2600");
    EXPECT_EQ(d.Box("ComboFilter").currentText(), "Ha");
    EXPECT_EQ(d.Box("ComboExp").currentText(), "60 s");
    EXPECT_EQ(d.Box("ComboLoc").currentText(), "Garden");
    EXPECT_EQ(d.Box("ComboDate").currentText(), "05-Nov-2024");
    d.In<QAbstractButton>("FrmNewNotes", "CheckFillEach")->click();
    QTest::keyClicks(d.Box("ComboCamera").lineEdit(), " cold"); // the user's own from now on
    EXPECT_EQ(d.Source("SourceCamera"), "");
    d.Press("FrmNewNotes", "CommandNext");
    ASSERT_TRUE(d.Await("ComboFilter", "OIII"));
    EXPECT_EQ(d.Box("ComboCamera").currentText(), "ASI 2600 cold");
    d.Press("FrmNewNotes", "CommandFill"); // asked for: all of it
    ASSERT_TRUE(d.Await("ComboCamera", "ASI 2600"));
}

TEST(FillNotes, WritesWhereNoneIsAndGoesBack) {
    NotesOfNight d;
    const Tree before = ReadTree(d.notes.Path());
    d.c.FillNotesButton->trigger();
    ASSERT_TRUE(d.Up("frmFillNotes"));
    EXPECT_EQ(
        d.In<QLabel>("frmFillNotes", "FillNotesLabel")->text().toStdString(),
        "2 pictures without a note get one; 1 have one, 1 tell nothing or are no light frames");
    const std::string note = "M 1\r\nTelescope: TEC APO 140\r\nMount: HEQ5\r\nCamera: ASI 2600\r\n"
                             "Filter: Ha\r\nExposure: 60 s\r\nLocation: Garden\r\n"
                             "Date: 05-Nov-2024";
    d.Press("frmFillNotes", "FillNotesWriteButton");
    EXPECT_EQ(d.NoteBytes("a.enf"), note);
    EXPECT_EQ(d.NoteBytes("kept.enf"), "mine");
    EXPECT_EQ(d.s.NoteText, note);
    EXPECT_EQ(ReadTree(d.notes.Path()).count("dark.enf"), 0U);
    d.c.UndoButton->trigger();
    EXPECT_EQ(ReadTree(d.notes.Path()), before);
    EXPECT_EQ(d.s.NoteText, "");
}

TEST(FillNotes, ANoteThatCameMeanwhileStaysAndIsTold) {
    NotesOfNight d;
    d.c.FillNotesButton->trigger();
    d.notes.Write("A.enf", "of another program");
    d.In<QListWidget>("frmFillNotes", "FillNotesList")->item(1)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(d.In<QPushButton>("frmFillNotes", "FillNotesWriteButton")->text().toStdString(),
              "&Write 1 Note");
    d.Press("frmFillNotes", "FillNotesWriteButton");
    EXPECT_EQ(d.NoteBytes("A.enf"), "of another program");
    EXPECT_EQ(ReadTree(d.notes.Path()).count("b.enf"), 0U);
    EXPECT_TRUE(d.Up("frmFaults"));
}

TEST(Kits, AreCheckedAndKeptBesideWhatElseStands) {
    NotesOfNight d;
    d.c.KitsButton->trigger();
    ASSERT_TRUE(d.Up("frmKits"));
    auto* table = d.In<QTableWidget>("frmKits", "KitsTable");
    ASSERT_EQ(table->rowCount(), 2);
    d.Press("frmKits", "KitsPictureButton"); // the camera and the filter are new
    ASSERT_EQ(table->rowCount(), 4);
    table->item(2, 1)->setText(QStringLiteral("My: camera"));
    d.Press("frmKits", "KitsKeepButton");
    EXPECT_EQ(d.In<QLabel>("frmKits", "KitsFault")->text().toStdString(),
              "'My: camera': a name has no colon");
    table->item(2, 1)->setText(QStringLiteral("My camera"));
    d.Press("frmKits", "KitsKeepButton");
    EXPECT_FALSE(d.Up("frmKits"));
    EXPECT_EQ(d.NoteBytes("Kit_List.txt"),
              "Telescope:TEC APO 140:EQMOD HEQ5\r\nMount:HEQ5:EQMOD HEQ5\r\n"
              "Camera:My camera:ASI 2600\r\nFilter:Ha:Ha\r\n");
    d.c.KitsButton->trigger();
    d.notes.Write("Kit_List.txt", "Camera:of another program\n");
    d.Press("frmKits", "KitsKeepButton");
    EXPECT_TRUE(d.Up("frmKits"));
    EXPECT_EQ(d.NoteBytes("Kit_List.txt"), "Camera:of another program\n");
}

} // namespace
} // namespace tarn::testing
