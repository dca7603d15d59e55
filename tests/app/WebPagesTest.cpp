#include "FilesDesk.h"
#include "platform/webpane/PageBrowser.h"
#include "web/PageHead.h"

#include <QCheckBox>
#include <QRadioButton>
#include <QSlider>

namespace tarn::testing {
namespace {

struct WebDesk : FilesDesk {
    using FilesDesk::FilesDesk;
    QWidget* form = nullptr;

    template <class Widget> Widget* In(const char* name) {
        return form->findChild<Widget*>(QString::fromLatin1(name));
    }
    void Press(const char* name) { In<QPushButton>(name)->click(); }
    void OpenPageForm() {
        c.CreateAppendHtmlFile->trigger();
        form = house.window.findChild<QWidget*>(QStringLiteral("frmHtmlLayout"));
    }
    void OpenGallery(const std::string& path) {
        dialogs.answers = {path};
        c.HtmlThumbButton->trigger();
        form = house.window.findChild<QWidget*>(QStringLiteral("frmHtmlThumb"));
    }
    std::string Text(const std::string& name) const {
        return files.Read(folder.Path() + "/" + name, SIZE_MAX, nullptr).value_or("none");
    }
    std::string Page(const char* name) const { return folder.Path() + "/" + name; }
    static int Count(const std::string& page, const std::string& part) {
        int count = 0;
        for (auto at = page.find(part); at != std::string::npos; at = page.find(part, at + 1))
            ++count;
        return count;
    }
};

} // namespace

TEST(WebPages, APageIsLaidByHandAndAppendedTo) {
    WebDesk desk;
    desk.notes.Write("a.enf", "Half moon\r\nclear");
    desk.Start();
    desk.GoTo("a.jpg");
    desk.OpenPageForm();
    EXPECT_FALSE(desk.In<QWidget>("FrameAdd")->isVisible());
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_1");
    EXPECT_EQ(desk.form->windowTitle(), "Opened - page.html");
    EXPECT_EQ(desk.Text("page.html"), "none"); // untouched until the header
    desk.In<QLineEdit>("HtmlTitle")->setText(QStringLiteral("Moon"));
    desk.Press("CommandOk");
    desk.In<QCheckBox>("HtmlIncludeExifInfo")->setChecked(false);
    desk.c.SaveSettingsButton->trigger(); // the form stays open
    EXPECT_EQ(desk.settings->Read("html_exif_info", ""), "0");
    desk.In<QCheckBox>("HtmlIncludeExifInfo")->setChecked(true);
    desk.Press("HtmlAddButton");
    EXPECT_EQ(desk.Said(), "Copied Html data for a.jpg");
    EXPECT_EQ(desk.In<QLabel>("HtmlLastFile")->text(), "a.jpg");
    desk.Press("HtmlCloseButton");
    EXPECT_EQ(desk.Said(), "Closed Html file page.html");
    EXPECT_EQ(desk.form->windowTitle(), "Closed - page.html");
    const std::string first = desk.Text("page.html");
    EXPECT_NE(first.find("<title>Moon</title>"), std::string::npos);
    EXPECT_NE(first.find("<b>Half moon</b></font><br>\r\n"), std::string::npos);
    EXPECT_NE(first.find("href=\"a.jpg\" > <img SRC=\"a.jpg\" height=40 width=60\r\n"),
              std::string::npos);

    desk.s.HtmlTitle = "Forgotten";
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_2");
    EXPECT_EQ(desk.s.HtmlTitle, "Moon"); // the page's own settings
    desk.Press("HtmlAddAllRevButton");
    EXPECT_EQ(desk.Said(), "3 images added to html file, reverse order");
    EXPECT_EQ(desk.Current(), "a.jpg");
    desk.Press("QuitButton");
    EXPECT_FALSE(desk.form->isVisible());
    const std::string page = desk.Text("page.html");
    EXPECT_EQ(WebDesk::Count(page, "</html>"), 1);
    EXPECT_TRUE(page.ends_with("</body>\r\n</html>\r\n"));
    EXPECT_EQ(WebDesk::Count(page, "<!-- Appended data on "), 1);
    EXPECT_LT(page.rfind("SRC=\"c.jpg\""), page.rfind("SRC=\"b.jpg\""));
    EXPECT_EQ(WebDesk::Count(page, "<img SRC="), 4);
}

TEST(WebPages, RulesActOnClicksAndRefusalsAreTold) {
    WebDesk desk;
    desk.Start();
    desk.s.HtmlZoomPan = 1; // together with link mode 1: taken as it stands
    desk.OpenPageForm();
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_1");
    auto* zoom = desk.In<QCheckBox>("CheckZoomPan");
    auto* full = desk.In<QRadioButton>("HtmlLayout1");
    EXPECT_TRUE(zoom->isChecked());
    EXPECT_TRUE(full->isChecked());
    desk.In<QRadioButton>("HtmlLayout3")->click();
    EXPECT_FALSE(zoom->isChecked());
    zoom->click();
    EXPECT_TRUE(desk.In<QRadioButton>("HtmlLayout2")->isChecked());
    desk.In<QRadioButton>("HtmlSizeF")->click();
    EXPECT_TRUE(full->isChecked());
    EXPECT_FALSE(zoom->isChecked());
    desk.In<QRadioButton>("HtmlSizeH")->click();
    EXPECT_TRUE(desk.In<QLineEdit>("HtmlHeight")->isEnabled());
    EXPECT_FALSE(desk.In<QLineEdit>("HtmlWidth")->isEnabled());

    // A question before it overwrites, and a disk that takes no entry.
    desk.Press("HtmlCloseButton");
    desk.folder.Write("page.html", "old");
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_1");
    EXPECT_EQ(desk.dialogs.shown.back(),
              "Confirm Html Overwrite|" + desk.Page("page.html") + "\nWill be overwritten!");
    EXPECT_EQ(desk.form->windowTitle(), "Closed - page.html");
    desk.dialogs.answers = {desk.Page("page.html"), "OK"};
    desk.Press("CreateButton_1");
    desk.Press("CommandOk");
    desk.files.onChange = [](const std::string& verb, const std::string&) {
        return verb == "extend" ? "No space left on device" : "";
    };
    desk.Press("HtmlAddButton");
    EXPECT_EQ(desk.dialogs.shown.back(), "Write html file error|Error writting to html file\n" +
                                             desk.Page("page.html") +
                                             "\n\nError 28, No space left on device");
    EXPECT_EQ(desk.form->windowTitle(), "Closed - page.html");
    desk.files.onChange = {};
    desk.folder.Write("short.html", "short");
    desk.dialogs.answers = {desk.Page("short.html")};
    desk.Press("CreateButton_2");
    EXPECT_EQ(desk.dialogs.shown.back().substr(0, 22), "Write html file error|");
    EXPECT_EQ(desk.Text("short.html"), "short");
    EXPECT_EQ(desk.form->windowTitle(), "Closed - short.html");
    std::filesystem::remove(desk.Page("short.html"));
    for (const char* button : {"ViewHtmlFile", "EditHtmlFile"}) {
        desk.Press(button);
        EXPECT_TRUE(desk.dialogs.shown.back().ends_with(
            "html file error|Error opening html file\n" + desk.Page("short.html") +
            "\n\nError 2, No such file or directory"))
            << desk.dialogs.shown.back();
    }
}

TEST(WebPages, OptionsAreTakenByAHeaderAlone) {
    WebDesk desk;
    desk.Start();
    desk.s.HtmlTitle = "Saved";
    desk.folder.Write("old.html", PageHead(desk.s, "v", "now") + PageClose());
    desk.s.HtmlTitle = "Desk";
    desk.OpenPageForm();
    // Refused after the page's options were read: they stay, and the controls do not undo that.
    desk.dialogs.answers = {desk.Page("old.html"), "Cancel"};
    desk.Press("CreateButton_1");
    EXPECT_EQ(desk.s.HtmlTitle, "Saved");
    desk.In<QCheckBox>("HtmlAppendOptionCheck")->setChecked(false);
    desk.Press("QuitButton");
    EXPECT_EQ(desk.s.HtmlTitle, "Saved");
    EXPECT_EQ(desk.s.HtmlAppendOption, 0);

    desk.OpenPageForm();
    desk.s.HtmlLayout3 = true; // beside the first
    desk.s.HtmlPictureType = 9;
    desk.dialogs.answers = {desk.Page("new.html")};
    desk.Press("CreateButton_1");
    EXPECT_EQ(desk.In<QLineEdit>("HtmlTitle")->text(), "Saved");
    EXPECT_TRUE(desk.In<QRadioButton>("HtmlLayout1")->isChecked());
    desk.In<QLineEdit>("Email")->setText(QStringLiteral("a\r\n-->"));
    desk.Press("CommandOk"); // what none has clicked stands as it was
    EXPECT_TRUE(desk.s.HtmlLayout1 && desk.s.HtmlLayout3);
    EXPECT_EQ(desk.s.HtmlPictureType, 9);
    EXPECT_EQ(desk.s.HtmlEmail, "a  -->");
    desk.In<QCheckBox>("HtmlAddAutoAdvance")->setChecked(desk.s.HtmlAuto == 0);
    const int advance = 1 - desk.s.HtmlAuto;
    QTest::keyClick(desk.form, Qt::Key_Escape);
    EXPECT_EQ(desk.form->windowTitle(), "Opened - new.html");
    desk.dialogs.answers = {desk.Page("new.html"), "OK"};
    desk.Press("CreateButton_1"); // closes it first
    EXPECT_EQ(desk.s.HtmlAuto, advance);
    EXPECT_EQ(desk.In<QCheckBox>("HtmlAddAutoAdvance")->isChecked(), advance == 1);
    desk.In<QRadioButton>("HtmlLayout3")->click();
    desk.In<QAbstractButton>("Picture2")->click();
    desk.Press("CommandOk");
    EXPECT_TRUE(!desk.s.HtmlLayout1 && desk.s.HtmlLayout3);
    EXPECT_EQ(desk.s.HtmlPictureType, 2);
    desk.Press("HtmlCloseButton");
    std::filesystem::remove(desk.Page("new.html"));

    desk.dialogs.answers = {desk.Page("new.html")};
    desk.Press("CreateButton_1");
    desk.In<QLineEdit>("HtmlTitle")->setText(QStringLiteral("Typed"));
    desk.Press("QuitButton"); // before the header
    EXPECT_EQ(desk.Text("new.html"), "none");
    EXPECT_EQ(desk.s.HtmlTitle, "Saved");
}

TEST(WebPages, AddAllKeepsTheNoteInHandAndStopsAtAFault) {
    WebDesk desk;
    desk.notes.Write("b.enf", "note of b");
    desk.Start();
    desk.GoTo("b.jpg");
    desk.OpenPageForm();
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_1");
    desk.Press("CommandOk");
    desk.c.NotesBox->setPlainText(QStringLiteral("in hand"));
    desk.Press("HtmlAddButton");
    EXPECT_NE(desk.Text("page.html").find("<b>in hand</b>"), std::string::npos);
    desk.Press("HtmlAddAllButton");
    EXPECT_EQ(desk.Said(), "4 images added to html file; Unsaved note of 'b.jpg' is in the restore "
                           "buffer");
    EXPECT_EQ(desk.s.NotesSave, "in hand");
    EXPECT_TRUE(desk.c.RestoreNotesButton->isEnabled());
    desk.Press("HtmlAddAllButton"); // nothing is unsaved now: the buffer stays
    EXPECT_EQ(desk.s.NotesSave, "in hand");

    // Cancelled after the second picture.
    int pumps = 0;
    desk.events.onPump = [&] { desk.s.BatchCancelled = ++pumps == 2; };
    desk.Press("HtmlAddAllButton");
    EXPECT_EQ(desk.Said(), "9 images added to html file, cancelled");
    desk.events.onPump = {};
    EXPECT_EQ(desk.Current(), "b.jpg");

    // While the run lasts no box could be answered: it comes at the end.
    int extends = 0;
    desk.files.onChange = [&](const std::string& verb, const std::string&) {
        return verb == "extend" && ++extends == 3 ? "No space left on device" : "";
    };
    bool inRun = false;
    desk.dialogs.onMessage = [&] { inRun = desk.s.BatchRuns; };
    desk.Press("HtmlAddAllButton");
    EXPECT_EQ(desk.dialogs.shown.back().substr(0, 22), "Write html file error|");
    EXPECT_FALSE(inRun);
    EXPECT_EQ(desk.Said(), "11 images added to html file, stopped");
    EXPECT_EQ(desk.form->windowTitle(), "Closed - page.html");
    const std::string page = desk.Text("page.html");
    EXPECT_EQ(WebDesk::Count(page, "<img SRC="), 11);
    EXPECT_TRUE(page.ends_with("</body>\r\n</html>\r\n"));
}

TEST(WebPages, VideosAndTextsHaveEntriesOfTheirOwn) {
    WebDesk desk;
    desk.settings->Write("videotype_filter", "*.mp4;*.log");
    desk.folder.Write("b.mp4", std::string(2000000, 'v'));
    desk.folder.Write("d.log", "a capture");
    desk.folder.Write("e.txt", "one\r\ntwo");
    desk.Start();
    desk.GoTo("a.jpg");
    desk.OpenPageForm();
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_1");
    desk.In<QCheckBox>("CheckZoomPan")->click();
    desk.Press("CommandOk");
    desk.Press("HtmlAddAllButton");
    EXPECT_EQ(desk.Said(), "5 images added to html file"); // the log has none
    const std::string page = desk.Text("page.html");
    const std::string video = page.substr(page.find("href=\"b.mp4\""));
    for (const char* part : {"SRC=\"MP4.jpg\"", "Click to play video\r\n", "File name: b.mp4\r\n"})
        EXPECT_NE(video.substr(0, video.find("</table>")).find(part), std::string::npos)
            << part << video.substr(0, video.find("</table>"));
    EXPECT_EQ(desk.Text("MP4.jpg").substr(0, 2), "\xFF\xD8");
    const std::string text = page.substr(page.find("one<br>\r\ntwo<br>\r\n"));
    EXPECT_NE(text.find("File name: e.txt\r\n"), std::string::npos) << text;
    EXPECT_EQ(page.find("d.log"), std::string::npos);

    desk.In<QCheckBox>("CheckInForm")->click();
    desk.Press("HtmlCloseViewButton");
    EXPECT_EQ(desk.s.CurrentPane, Pane::WebBrowser1);
    EXPECT_EQ(desk.s.Filename, desk.Page("page.html"));
    EXPECT_TRUE(desk.c.WebBrowser1->toPlainText().contains("Created:"));
    desk.GoTo("c.jpg");
    EXPECT_EQ(desk.s.CurrentPane, Pane::Picture1);
    desk.In<QCheckBox>("CheckInForm")->click();
    desk.Press("ViewHtmlFile");
    EXPECT_EQ(desk.calls.back(), "open " + desk.Page("page.html"));
}

TEST(WebPages, NamesThatBrowsersCannotFollowAreTold) {
    WebDesk desk({"a#1.jpg", "b.jpg"});
    desk.Start();
    desk.GoTo("a#1.jpg");
    desk.OpenPageForm();
    desk.dialogs.answers = {desk.Page("page.html")};
    desk.Press("CreateButton_1");
    desk.Press("CommandOk");
    desk.Press("HtmlAddAllButton");
    const QString said = desk.In<QLabel>("LabelError")->text();
    EXPECT_TRUE(said.contains("1 of the entries") && said.endsWith("a#1.jpg"))
        << said.toStdString();
    EXPECT_NE(desk.Text("page.html").find("SRC=\"a#1.jpg\""), std::string::npos);
    desk.Press("QuitButton");

    desk.OpenGallery(desk.Page("index.html"));
    desk.Press("GenThumbButton");
    auto* warnings = desk.In<QLabel>("LabelError");
    EXPECT_TRUE(warnings->text().endsWith("a#1.jpg")) << warnings->text().toStdString();
    desk.In<QRadioButton>("NotesTopOption")->click();
    desk.In<QCheckBox>("NotesTopCheck")->click();
    EXPECT_TRUE(warnings->text().startsWith("Beginning..."));
    desk.In<QCheckBox>("NotesTopCheck")->click();
    EXPECT_FALSE(warnings->text().contains("Beginning..."));
    desk.In<QLineEdit>("ThumbWHtext")->setText(QStringLiteral("abc"));
    desk.In<QCheckBox>("ThumbWHcheck")->click();
    EXPECT_TRUE(warnings->text().startsWith("The limit of the pictures"));
    EXPECT_TRUE(warnings->text().endsWith("a#1.jpg"));
}

TEST(WebPages, AGalleryIsMadeOfTheThumbnails) {
    WebDesk desk;
    desk.notes.Write("b.enf", "\"Old note\"\r\n");
    desk.Start();
    desk.GoTo("b.jpg");
    desk.OpenGallery(desk.Page("index.html"));
    EXPECT_NE(desk.In<QLabel>("LabelError")->text().indexOf("3 pictures have no thumbnail"), -1);
    desk.Press("GenThumbButton");
    EXPECT_EQ(desk.In<QListWidget>("FileThumb")->count(), 3);
    desk.In<QSlider>("SliderColumns")->setValue(2);
    desk.c.SaveSettingsButton->trigger();
    EXPECT_EQ(desk.settings->Read("html_thumb_slider", ""), "2");
    desk.In<QCheckBox>("CheckOrder")->click();
    desk.Press("HtmlThumbnailButton");
    EXPECT_EQ(desk.Said(), "Created Html file 'index.html' with 3 pictures");
    EXPECT_EQ(desk.In<QLabel>("LabelInfo")->text(),
              "Created Html file 'index.html' with 3 pictures");
    const std::string index = desk.Text("index.html");
    EXPECT_NE(index.find("cols=2; align=center>"), std::string::npos);
    EXPECT_NE(index.find("SRC=\"thumbnails/T120_c.jpg\""), std::string::npos);
    EXPECT_NE(index.find("\r\n\"Old note\"\r\n"), std::string::npos);
    EXPECT_NE(desk.Text("ImageT001.html").find("src=\"c.jpg\""), std::string::npos);
    EXPECT_EQ(desk.Current(), "b.jpg");

    // Taken up again from its own page.
    desk.Press("QuitButton");
    EXPECT_FALSE(desk.form->isVisible());
    desk.s.HtmlThumbSlider = 7;
    desk.dialogs.answers = {desk.Page("index.html"), "OK"};
    desk.c.HtmlThumbButton->trigger();
    EXPECT_EQ(desk.dialogs.shown.back(),
              "Confirm Html Overwrite|" + desk.Page("index.html") +
                  "\nWill be overwritten and all Image*.html files deleted!");
    EXPECT_EQ(desk.In<QSlider>("SliderColumns")->value(), 2);
    // A cancelled run leaves the gallery that stands.
    const Tree before = desk.Pictures();
    desk.events.onPump = [&] { desk.s.BatchCancelled = true; };
    desk.Press("HtmlFramesThumbnailButton");
    EXPECT_EQ(desk.Said(), "Gallery cancelled, nothing was written");
    EXPECT_EQ(desk.Pictures(), before);
    desk.events.onPump = {};
    desk.Press("HtmlFramesThumbnailButton");
    EXPECT_EQ(desk.Said(), "Created Html files 'index.html' with 3 pictures & image_*.html frames");
    EXPECT_NE(desk.Text("index_thumbs.html").find("ChangeClass(3)"), std::string::npos);

    // A custom filter looks for the size without its leading zero.
    const Tree made = desk.Pictures();
    desk.s.FilterIsCustom = true;
    desk.s.FileTypes = "*.jpg";
    desk.s.ThumbSize = 64;
    desk.folder.Write("thumbnails/T064_a.jpg", "thumbnail");
    desk.Press("HtmlThumbnailButton");
    EXPECT_EQ(desk.In<QLabel>("LabelInfo")->text(),
              "No gallery was made: there is no picture with a thumbnail");
    std::filesystem::remove(desk.folder.Path() + "/thumbnails/T064_a.jpg");
    EXPECT_EQ(desk.Pictures(), made);
}

TEST(WebPages, DeletesThePagesOfTheFolder) {
    WebDesk desk;
    desk.settings->Write("weblist_check", "1");
    desk.Start();
    for (const char* name : {"x.html", "Y.HTM", "kept.txt", "open.html"})
        desk.folder.Write(name, "page");
    desk.OpenPageForm();
    desk.dialogs.answers = {desk.Page("open.html"), "OK"};
    desk.Press("CreateButton_1");
    desk.Press("CommandOk");
    desk.house.navigation.RefreshDirButton_Click();
    desk.GoTo("x.html");
    desk.dialogs.answers = {};
    desk.c.HtmlDeleteButton->trigger();
    EXPECT_NE(desk.Text("x.html"), "none");
    desk.dialogs.answers = {"OK"};
    desk.c.HtmlDeleteButton->trigger();
    EXPECT_EQ(desk.dialogs.shown.back(), "Confirm Html Delete|2 Html files in '" +
                                             desk.folder.Path() +
                                             "'\nWill be deleted!\nThe page that is open in the "
                                             "form stays.");
    EXPECT_EQ(desk.Said(), "Deleted 2 Html files");
    EXPECT_EQ(desk.Names(), "a.jpg b.jpg c.jpg kept.txt open.html ");
    EXPECT_TRUE(Trashed("x.html").starts_with("page"));
    EXPECT_EQ(desk.s.FileNameOnly, "open.html"); // the last row now
}

} // namespace tarn::testing
