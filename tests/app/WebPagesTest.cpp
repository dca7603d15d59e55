#include "FilesDesk.h"
#include "web/PageHead.h"
#include "widgets/webpane/PageBrowser.h"

#include <QRadioButton>
#include <QSlider>

namespace tarn::testing {
namespace {

struct WebDesk : FilesDesk {
    using FilesDesk::FilesDesk;
    const char* form = nullptr;

    template <class Widget> Widget* In(const char* name) const {
        return AppDesk::In<Widget>(form, name);
    }
    void Press(const char* name, std::vector<std::string> answers = {}) {
        AppDesk::Press(form, name, std::move(answers));
    }
    std::string Title() const { return Form(form)->windowTitle().toStdString(); }
    std::string Label(const char* name) const { return In<QLabel>(name)->text().toStdString(); }
    void OpenPageForm() {
        c.CreateAppendHtmlFile->trigger();
        form = "frmHtmlLayout";
    }
    void OpenGallery(const std::string& path) {
        Answer({path}, c.HtmlThumbButton);
        form = "frmHtmlThumb";
    }
    static int Count(const std::string& page, const std::string& part) {
        int count = 0;
        for (auto at = page.find(part); at != std::string::npos; at = page.find(part, at + 1))
            ++count;
        return count;
    }
};

} // namespace

TEST(WebPages, APageIsLaidByHandAndAppendedTo) {
    WebDesk d;
    d.notes.Write("a.enf", "Half moon\r\nclear");
    d.Start();
    d.GoTo("a.jpg");
    d.OpenPageForm();
    EXPECT_FALSE(d.In<QWidget>("FrameAdd")->isVisible());
    d.Press("CreateButton_1", {d.At("page.html")});
    EXPECT_EQ(d.Title(), "Opened - page.html");
    EXPECT_EQ(d.Text("page.html"), "(none)"); // untouched until the header
    d.In<QLineEdit>("HtmlTitle")->setText("Moon");
    d.Press("CommandOk");
    d.In<QCheckBox>("HtmlIncludeExifInfo")->setChecked(false);
    d.c.SaveSettingsButton->trigger(); // the form stays open
    EXPECT_EQ(d.settings->Read("html_exif_info", ""), "0");
    d.In<QCheckBox>("HtmlIncludeExifInfo")->setChecked(true);
    d.Press("HtmlAddButton");
    EXPECT_EQ(d.Said(), "Copied Html data for a.jpg");
    EXPECT_EQ(d.Label("HtmlLastFile"), "a.jpg");
    d.Press("HtmlCloseButton");
    EXPECT_EQ(d.Said(), "Closed Html file page.html");
    EXPECT_EQ(d.Title(), "Closed - page.html");
    const std::string first = d.Text("page.html");
    EXPECT_NE(first.find("<title>Moon</title>"), std::string::npos);
    EXPECT_NE(first.find("<b>Half moon</b></font><br>\r\n"), std::string::npos);
    EXPECT_NE(first.find("href=\"a.jpg\" > <img SRC=\"a.jpg\" height=40 width=60\r\n"),
              std::string::npos);

    d.s.HtmlTitle = "Forgotten";
    d.Press("CreateButton_2", {d.At("page.html")});
    EXPECT_EQ(d.s.HtmlTitle, "Moon"); // the page's own settings
    d.Press("HtmlAddAllRevButton");
    EXPECT_EQ(d.Said(), "3 images added to html file, reverse order");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.Press("QuitButton");
    EXPECT_FALSE(d.Up(d.form));
    const std::string page = d.Text("page.html");
    EXPECT_EQ(WebDesk::Count(page, "</html>"), 1);
    EXPECT_TRUE(page.ends_with("</body>\r\n</html>\r\n"));
    EXPECT_EQ(WebDesk::Count(page, "<!-- Appended data on "), 1);
    EXPECT_LT(page.rfind("SRC=\"c.jpg\""), page.rfind("SRC=\"b.jpg\""));
    EXPECT_EQ(WebDesk::Count(page, "<img SRC="), 4);
}

TEST(WebPages, RulesActOnClicksAndRefusalsAreTold) {
    WebDesk d;
    d.Start();
    d.s.HtmlZoomPan = 1; // together with link mode 1: taken as it stands
    d.OpenPageForm();
    d.Press("CreateButton_1", {d.At("page.html")});
    auto* zoom = d.In<QCheckBox>("CheckZoomPan");
    auto* full = d.In<QRadioButton>("HtmlLayout1");
    EXPECT_TRUE(zoom->isChecked());
    EXPECT_TRUE(full->isChecked());
    d.In<QRadioButton>("HtmlLayout3")->click();
    EXPECT_FALSE(zoom->isChecked());
    zoom->click();
    EXPECT_TRUE(d.In<QRadioButton>("HtmlLayout2")->isChecked());
    d.In<QRadioButton>("HtmlSizeF")->click();
    EXPECT_TRUE(full->isChecked());
    EXPECT_FALSE(zoom->isChecked());
    d.In<QRadioButton>("HtmlSizeH")->click();
    EXPECT_TRUE(d.In<QLineEdit>("HtmlHeight")->isEnabled());
    EXPECT_FALSE(d.In<QLineEdit>("HtmlWidth")->isEnabled());

    // A question before it overwrites.
    d.Press("HtmlCloseButton");
    d.folder.Write("page.html", "old");
    d.Press("CreateButton_1", {d.At("page.html")});
    EXPECT_EQ(d.dialogs.shown.back(),
              "Confirm Html Overwrite|" + d.At("page.html") + "\nWill be overwritten!");
    EXPECT_EQ(d.Title(), "Closed - page.html");
    std::filesystem::remove(d.At("page.html"));
    for (const char* button : {"ViewHtmlFile", "EditHtmlFile"}) {
        d.Press(button);
        EXPECT_TRUE(d.dialogs.shown.back().ends_with("html file error|Error opening html file\n" +
                                                     d.At("page.html") +
                                                     "\n\nError 2, No such file or directory"))
            << d.dialogs.shown.back();
    }
}

TEST(WebPages, OptionsAreTakenByAHeaderAlone) {
    WebDesk d;
    d.Start();
    d.s.HtmlTitle = "Saved";
    d.folder.Write("old.html", PageHead(d.s, "v", "now") + PageClose());
    d.s.HtmlTitle = "Desk";
    d.OpenPageForm();
    // Refused after the page's options were read: they stay, and the controls do not undo that.
    d.Press("CreateButton_1", {d.At("old.html"), "Cancel"});
    EXPECT_EQ(d.s.HtmlTitle, "Saved");
    d.In<QCheckBox>("HtmlAppendOptionCheck")->setChecked(false);
    d.Press("QuitButton");
    EXPECT_EQ(d.s.HtmlTitle, "Saved");
    EXPECT_EQ(d.s.HtmlAppendOption, 0);

    d.OpenPageForm();
    d.s.HtmlLayout3 = true; // beside the first
    d.s.HtmlPictureType = 9;
    d.Press("CreateButton_1", {d.At("new.html")});
    EXPECT_EQ(d.In<QLineEdit>("HtmlTitle")->text(), "Saved");
    EXPECT_TRUE(d.In<QRadioButton>("HtmlLayout1")->isChecked());
    d.In<QLineEdit>("Email")->setText("a\r\n-->");
    d.Press("CommandOk"); // what none has clicked stands as it was
    EXPECT_TRUE(d.s.HtmlLayout1);
    EXPECT_TRUE(d.s.HtmlLayout3);
    EXPECT_EQ(d.s.HtmlPictureType, 9);
    EXPECT_EQ(d.s.HtmlEmail, "a  -->");
    d.In<QCheckBox>("HtmlAddAutoAdvance")->setChecked(d.s.HtmlAuto == 0);
    const int advance = 1 - d.s.HtmlAuto;
    QTest::keyClick(d.Up(d.form), Qt::Key_Escape);
    EXPECT_EQ(d.Title(), "Opened - new.html");
    d.Press("CreateButton_1", {d.At("new.html"), "OK"}); // closes it first
    EXPECT_EQ(d.s.HtmlAuto, advance);
    EXPECT_EQ(d.In<QCheckBox>("HtmlAddAutoAdvance")->isChecked(), advance == 1);
    d.In<QRadioButton>("HtmlLayout3")->click();
    d.In<QAbstractButton>("Picture2")->click();
    d.Press("CommandOk");
    EXPECT_FALSE(d.s.HtmlLayout1);
    EXPECT_TRUE(d.s.HtmlLayout3);
    EXPECT_EQ(d.s.HtmlPictureType, 2);
    d.Press("HtmlCloseButton");
    std::filesystem::remove(d.At("new.html"));

    d.Press("CreateButton_1", {d.At("new.html")});
    d.In<QLineEdit>("HtmlTitle")->setText("Typed");
    d.Press("QuitButton"); // before the header
    EXPECT_EQ(d.Text("new.html"), "(none)");
    EXPECT_EQ(d.s.HtmlTitle, "Saved");
}

TEST(WebPages, AddAllKeepsTheNoteInHandAndStopsAtAFault) {
    WebDesk d;
    d.notes.Write("b.enf", "note of b");
    d.Start();
    d.GoTo("b.jpg");
    d.OpenPageForm();
    d.Press("CreateButton_1", {d.At("page.html")});
    d.Press("CommandOk");
    d.c.NotesBox->setPlainText("in hand");
    d.Press("HtmlAddButton");
    EXPECT_NE(d.Text("page.html").find("<b>in hand</b>"), std::string::npos);
    d.Press("HtmlAddAllButton");
    EXPECT_EQ(d.Said(), "4 images added to html file; Unsaved note of 'b.jpg' is in the restore "
                        "buffer");
    EXPECT_EQ(d.s.NotesSave, "in hand");
    EXPECT_TRUE(d.c.RestoreNotesButton->isEnabled());
    d.Press("HtmlAddAllButton"); // nothing is unsaved now: the buffer stays
    EXPECT_EQ(d.s.NotesSave, "in hand");

    // Cancelled after the second picture.
    int pumps = 0;
    d.events.onPump = [&] { d.s.BatchCancelled = ++pumps == 2; };
    d.Press("HtmlAddAllButton");
    EXPECT_EQ(d.Said(), "9 images added to html file, cancelled");
    d.events.onPump = {};
    EXPECT_EQ(d.Current(), "b.jpg");

    // While the run lasts no box could be answered: it comes at the end.
    int extends = 0;
    d.files.onChange = [&](const std::string& verb, const std::string&) {
        return verb == "extend" && ++extends == 3 ? "No space left on device" : "";
    };
    bool inRun = false;
    d.dialogs.onMessage = [&] { inRun = d.s.BatchRuns; };
    d.Press("HtmlAddAllButton");
    EXPECT_EQ(d.dialogs.shown.back().substr(0, 22), "Write html file error|");
    EXPECT_FALSE(inRun);
    EXPECT_EQ(d.Said(), "11 images added to html file, stopped");
    EXPECT_EQ(d.Title(), "Closed - page.html");
    const std::string page = d.Text("page.html");
    EXPECT_EQ(WebDesk::Count(page, "<img SRC="), 11);
    EXPECT_TRUE(page.ends_with("</body>\r\n</html>\r\n"));
}

TEST(WebPages, VideosAndTextsHaveEntriesOfTheirOwn) {
    WebDesk d;
    d.settings->Write("videotype_filter", "*.mp4;*.log");
    d.folder.Write("b.mp4", std::string(2000000, 'v'));
    d.folder.Write("d.log", "a capture");
    d.folder.Write("e.txt", "one\r\ntwo");
    d.Start();
    d.GoTo("a.jpg");
    d.OpenPageForm();
    d.Press("CreateButton_1", {d.At("page.html")});
    d.In<QCheckBox>("CheckZoomPan")->click();
    d.Press("CommandOk");
    d.Press("HtmlAddAllButton");
    EXPECT_EQ(d.Said(), "5 images added to html file"); // the log has none
    const std::string page = d.Text("page.html");
    const std::string video = page.substr(page.find("href=\"b.mp4\""));
    for (const char* part : {"SRC=\"MP4.jpg\"", "Click to play video\r\n", "File name: b.mp4\r\n"})
        EXPECT_NE(video.substr(0, video.find("</table>")).find(part), std::string::npos)
            << part << video.substr(0, video.find("</table>"));
    EXPECT_EQ(d.Text("MP4.jpg").substr(0, 2), "\xFF\xD8");
    const std::string text = page.substr(page.find("one<br>\r\ntwo<br>\r\n"));
    EXPECT_NE(text.find("File name: e.txt\r\n"), std::string::npos) << text;
    EXPECT_EQ(page.find("d.log"), std::string::npos);

    d.In<QCheckBox>("CheckInForm")->click();
    d.Press("HtmlCloseViewButton");
    EXPECT_EQ(d.s.Kind, FileKind::Page);
    EXPECT_EQ(d.s.Filename, d.At("page.html"));
    EXPECT_TRUE(d.c.WebBrowser1->toPlainText().contains("Created:"));
    d.GoTo("c.jpg");
    EXPECT_EQ(d.s.Kind, FileKind::Picture);
    d.In<QCheckBox>("CheckInForm")->click();
    d.Press("ViewHtmlFile");
    EXPECT_EQ(d.calls.back(), "open " + d.At("page.html"));
}

TEST(WebPages, NamesThatBrowsersCannotFollowAreTold) {
    WebDesk d({"a#1.jpg", "b.jpg"});
    d.Start();
    d.GoTo("a#1.jpg");
    d.OpenPageForm();
    d.Press("CreateButton_1", {d.At("page.html")});
    d.Press("CommandOk");
    d.Press("HtmlAddAllButton");
    const QString said = d.In<QLabel>("LabelError")->text();
    EXPECT_TRUE(said.contains("1 of the entries")) << said.toStdString();
    EXPECT_TRUE(said.endsWith("a#1.jpg")) << said.toStdString();
    EXPECT_NE(d.Text("page.html").find("SRC=\"a#1.jpg\""), std::string::npos);
    d.Press("QuitButton");

    d.OpenGallery(d.At("index.html"));
    d.Press("GenThumbButton");
    auto* warnings = d.In<QLabel>("LabelError");
    EXPECT_TRUE(warnings->text().endsWith("a#1.jpg")) << warnings->text().toStdString();
    d.In<QRadioButton>("NotesTopOption")->click();
    d.In<QCheckBox>("NotesTopCheck")->click();
    EXPECT_TRUE(warnings->text().startsWith("Beginning..."));
    d.In<QCheckBox>("NotesTopCheck")->click();
    EXPECT_FALSE(warnings->text().contains("Beginning..."));
    d.In<QLineEdit>("ThumbWHtext")->setText("abc");
    d.In<QCheckBox>("ThumbWHcheck")->click();
    EXPECT_TRUE(warnings->text().startsWith("The limit of the pictures"));
    EXPECT_TRUE(warnings->text().endsWith("a#1.jpg"));
}

TEST(WebPages, AGalleryIsMadeOfTheThumbnails) {
    WebDesk d;
    d.notes.Write("b.enf", "\"Old note\"\r\n");
    d.Start();
    d.GoTo("b.jpg");
    d.OpenGallery(d.At("index.html"));
    EXPECT_NE(d.Label("LabelError").find("3 pictures have no thumbnail"), std::string::npos);
    d.Press("GenThumbButton");
    EXPECT_EQ(d.In<QListWidget>("FileThumb")->count(), 3);
    d.In<QSlider>("SliderColumns")->setValue(2);
    d.c.SaveSettingsButton->trigger();
    EXPECT_EQ(d.settings->Read("html_thumb_slider", ""), "2");
    d.In<QCheckBox>("CheckOrder")->click();
    d.Press("HtmlThumbnailButton");
    EXPECT_EQ(d.Said(), "Created Html file 'index.html' with 3 pictures");
    EXPECT_EQ(d.Label("LabelInfo"), "Created Html file 'index.html' with 3 pictures");
    const std::string index = d.Text("index.html");
    EXPECT_NE(index.find("cols=2; align=center>"), std::string::npos);
    EXPECT_NE(index.find("SRC=\"thumbnails/T120_c.jpg\""), std::string::npos);
    EXPECT_NE(index.find("\r\n\"Old note\"\r\n"), std::string::npos);
    EXPECT_NE(d.Text("ImageT001.html").find("src=\"c.jpg\""), std::string::npos);
    EXPECT_EQ(d.Current(), "b.jpg");

    // Taken up again from its own page.
    d.Press("QuitButton");
    EXPECT_FALSE(d.Up(d.form));
    d.s.HtmlThumbSlider = 7;
    d.Answer({d.At("index.html"), "OK"}, d.c.HtmlThumbButton);
    EXPECT_EQ(d.dialogs.shown.back(),
              "Confirm Html Overwrite|" + d.At("index.html") +
                  "\nWill be overwritten and all Image*.html files deleted!");
    EXPECT_EQ(d.In<QSlider>("SliderColumns")->value(), 2);
    // A cancelled run leaves the gallery that stands.
    const Tree before = d.Pictures();
    d.events.onPump = [&] { d.s.BatchCancelled = true; };
    d.Press("HtmlFramesThumbnailButton");
    EXPECT_EQ(d.Said(), "Gallery cancelled, nothing was written");
    EXPECT_EQ(d.Pictures(), before);
    d.events.onPump = {};
    d.Press("HtmlFramesThumbnailButton");
    EXPECT_EQ(d.Said(), "Created Html files 'index.html' with 3 pictures & image_*.html frames");
    EXPECT_NE(d.Text("index_thumbs.html").find("ChangeClass(3)"), std::string::npos);

    // A custom filter looks for the size without its leading zero.
    const Tree made = d.Pictures();
    d.s.FilterIsCustom = true;
    d.s.FileTypes = "*.jpg";
    d.s.ThumbSize = 64;
    d.folder.Write("thumbnails/T064_a.jpg", "thumbnail");
    d.Press("HtmlThumbnailButton");
    EXPECT_EQ(d.Label("LabelInfo"), "No gallery was made: there is no picture with a thumbnail");
    std::filesystem::remove(d.At("thumbnails/T064_a.jpg"));
    EXPECT_EQ(d.Pictures(), made);
}

TEST(WebPages, OfKeptFilesOnly) {
    WebDesk d;
    d.Start();
    d.house.marks.SetMarks({d.At("b.jpg")}, Decide(Decision::Keep));
    d.OpenPageForm();
    d.In<QCheckBox>("KeptOnlyCheck")->setChecked(true);
    d.Press("CreateButton_1", {d.At("page.html")});
    d.Press("CommandOk");
    d.Press("HtmlAddAllButton");
    EXPECT_EQ(d.Said(), "1 images added to html file");
    d.Press("QuitButton");
    EXPECT_EQ(WebDesk::Count(d.Text("page.html"), "<img SRC=\"b.jpg\""), 1);
    EXPECT_EQ(WebDesk::Count(d.Text("page.html"), "<img SRC="), 1);

    d.OpenGallery(d.At("index.html"));
    d.Press("GenThumbButton");
    d.In<QCheckBox>("KeptOnlyCheck")->setChecked(true);
    d.Press("HtmlThumbnailButton");
    EXPECT_EQ(d.Said(), "Created Html file 'index.html' with 1 pictures");
    EXPECT_NE(d.Text("ImageT001.html").find("src=\"b.jpg\""), std::string::npos);
}

TEST(WebPages, DeletesThePagesOfTheFolder) {
    WebDesk d;
    d.settings->Write("weblist_check", "1");
    d.Start();
    for (const char* name : {"x.html", "Y.HTM", "kept.txt", "open.html"})
        d.folder.Write(name, "page");
    d.OpenPageForm();
    d.Press("CreateButton_1", {d.At("open.html"), "OK"});
    d.Press("CommandOk");
    d.house.navigation.RefreshDirButton_Click();
    d.GoTo("x.html");
    d.Answer({}, d.c.HtmlDeleteButton);
    EXPECT_NE(d.Text("x.html"), "(none)");
    d.Answer({"OK"}, d.c.HtmlDeleteButton);
    EXPECT_EQ(d.dialogs.shown.back(), "Confirm Html Delete|2 Html files in '" + d.folder.Path() +
                                          "'\nWill be deleted!\nThe page that is open in the "
                                          "form stays.");
    EXPECT_EQ(d.Said(), "Deleted 2 Html files");
    EXPECT_EQ(d.Names(), "a.jpg b.jpg c.jpg kept.txt open.html ");
    EXPECT_TRUE(Trashed("x.html").starts_with("page"));
    EXPECT_EQ(d.s.FileNameOnly, "open.html"); // the last row now
}

} // namespace tarn::testing
