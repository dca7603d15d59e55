// Files that are no pictures, in the whole window.
#include "FilesDesk.h"
#include "clips/ClipFiles.h"

#include "widgets/FolderTreeview.h"
#include "widgets/webpane/PageBrowser.h"

#include <QScrollBar>
#include <QSlider>

namespace tarn::testing {
namespace {

constexpr int kFrames = 30;

struct VideoDesk : FilesDesk {
    std::string clip = folder.Path() + "/v.avi";

    VideoDesk() {
        EXPECT_TRUE(MakeClip(clip, kFrames, "-c:v mjpeg -q:v 2 -pix_fmt yuvj422p"));
        folder.Write("bad.avi", "no clip");
        folder.Write("l.log", "first\r\nsecond");
        folder.Write("m.mp4", std::string(1500000, 'm'));
        folder.Write("p.html", "<html><body>A page</body></html>");
        folder.Write("s.css", "body {}");
        settings->Write("videotype_filter", "*.avi;*.ser;*.log;*.mp4;*.mov");
        settings->Write("weblist_check", "1");
        Start();
    }
    void Press(int index) { c.VideoButton[std::size_t(index)]->click(); }
    // The frame in the pane and what is said of it.
    std::string Frame() const {
        return std::to_string(NumberOf(c.Picture2->Picture())) + "|" + Said();
    }
};

} // namespace

TEST(Video, EveryButtonShowsTheFrameThatIsTold) {
    VideoDesk d;
    d.GoTo("v.avi");
    EXPECT_TRUE(d.c.VideoFrame->isVisible());
    EXPECT_EQ(d.Frame(), "4|Video frame 4");
    EXPECT_NE(d.Panel().find("  Dimensions: 128 x 64\n  Frame rate: 25.0 fps\n      Frames: 30\n"),
              std::string::npos);
    EXPECT_NE(d.Panel().find("Playing time: 1.2 seconds\n     Picture: Video\n"),
              std::string::npos);
    d.Press(5);
    d.Press(5); // two quick steps are two frames
    EXPECT_EQ(d.Frame(), "6|Video frame 6");
    d.Press(1);
    EXPECT_EQ(d.Frame(), "5|Video frame 5");
    d.Press(6);
    EXPECT_EQ(d.Frame(), "29|Video frame 30 end");
    d.Press(1);
    EXPECT_EQ(d.Frame(), "29|Video frame 29");
    d.Press(0);
    EXPECT_EQ(d.Frame(), "0|Video frame 0");
    d.Press(1);
    EXPECT_EQ(d.Frame(), "0|Video frame 0");
    QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::ControlModifier);
    QApplication::sendEvent(d.c.Picture2, &right);
    EXPECT_EQ(d.Frame(), "1|Video frame 1");

    // From the end it plays from the start; pausing shows what it tells.
    d.Press(6);
    d.Press(3);
    EXPECT_EQ(d.c.VideoButton[3]->text(), "Pause");
    QTest::qWait(300);
    d.Press(3);
    EXPECT_EQ(d.c.VideoButton[3]->text(), "Play");
    EXPECT_LT(d.house.video.Position(), kFrames);
    EXPECT_EQ(NumberOf(d.c.Picture2->Picture()), d.house.video.Position());
    d.Press(4);
    d.house.video.VideoTimer_Timer();
    EXPECT_EQ(d.Said(), ""); // it is followed no longer

    d.GoTo("a.jpg");
    EXPECT_FALSE(d.house.video.ClipIsOpen());
    EXPECT_FALSE(d.c.VideoFrame->isVisible());
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Video, NothingOfTheFileBeforeStandsUnderAnotherName) {
    VideoDesk d;
    std::filesystem::remove(d.At("c.jpg"));
    for (const char* before : {"v.avi", "m.mp4", "l.log", "p.html", "a.jpg"}) {
        d.GoTo(before);
        EXPECT_NE(d.s.PanelRows.size(), 0U);
        d.GoTo("c.jpg");
        EXPECT_EQ(d.Error(), std::string("No such file or directory - ") + before);
        EXPECT_EQ(d.s.Kind, FileKind::Picture) << before;
        EXPECT_TRUE(d.c.Picture1->Picture().isNull());
        EXPECT_TRUE(d.c.VideoFrame->isHidden());
        EXPECT_FALSE(d.house.video.ClipIsOpen()) << before;
        EXPECT_FALSE(d.s.VideoImage()) << before;
        EXPECT_FALSE(d.s.WebImage()) << before;
        EXPECT_FALSE(d.s.ImageLoaded) << before;
        EXPECT_EQ(d.Panel(), "") << before;
        EXPECT_EQ(d.Said(), "") << before;
        EXPECT_EQ(d.s.ExpMegapixels, "") << before;
        EXPECT_EQ(d.s.FileDate, "") << before;
        EXPECT_TRUE(d.s.PanelRows.empty());
        EXPECT_EQ(d.s.FileType, ".JPG");
        EXPECT_EQ(d.c.EditButton2->text(), "Edit");
    }
    // An empty folder keeps the file that is shown, a clip with its buttons.
    d.GoTo("v.avi");
    const std::string panel = d.Panel();
    TestFolder empty;
    d.c.FolderTreeview1->SetSelectedPath(empty.Path());
    EXPECT_EQ(d.s.Kind, FileKind::Clip);
    EXPECT_TRUE(d.c.VideoFrame->isVisible());
    EXPECT_TRUE(d.house.video.ClipIsOpen());
    EXPECT_EQ(d.Panel(), panel);
    EXPECT_EQ(d.s.FileNameOnly, "v.avi");
}

TEST(Video, TextsPagesAndSummariesHaveTheirPanes) {
    VideoDesk d;
    d.GoTo("a.jpg");
    d.c.NotesBox->setPlainText(QStringLiteral("unsaved"));
    d.GoTo("p.html");
    EXPECT_TRUE(d.s.WebImage());
    EXPECT_EQ(d.s.Kind, FileKind::Page);
    EXPECT_EQ(d.c.WebBrowser1->toPlainText(), "A page");
    EXPECT_EQ(d.c.NotesBox->toPlainText(), "");
    EXPECT_EQ(d.s.NotesSave, "unsaved");
    EXPECT_EQ(d.c.EditButton2->text(), "Web");
    EXPECT_EQ(d.c.NotesFrame->text(), "Notes:");
    // Text written beside the page is no note of the file that comes next.
    d.c.NotesBox->setPlainText(QStringLiteral("about the page"));
    d.GoTo("s.css");
    EXPECT_EQ(d.c.NotesBox->toPlainText(), "");
    EXPECT_EQ(d.s.NotesSave, "about the page");
    d.folder.Write("p.html", "<html><body>Another page</body></html>");
    d.GoTo("p.html");
    EXPECT_EQ(d.c.WebBrowser1->toPlainText(), "Another page");
    EXPECT_EQ(d.house.window.focusWidget(), d.c.WebBrowser1);
    EXPECT_FALSE(d.c.SlideButton->isEnabled());
    d.GoTo("l.log");
    EXPECT_EQ(d.s.Kind, FileKind::Log);
    EXPECT_EQ(d.c.LogText->toPlainText(), "first\nsecond");
    EXPECT_TRUE(d.s.VideoImage());
    EXPECT_FALSE(d.s.WebImage());
    EXPECT_TRUE(d.Panel().starts_with("File name: l.log\n     Date: "));
    d.GoTo("s.css");
    EXPECT_EQ(d.c.LogText->toPlainText(), "body {}");
    EXPECT_FALSE(d.s.VideoImage());
    d.GoTo("m.mp4");
    EXPECT_EQ(d.s.Kind, FileKind::Clip);
    EXPECT_FALSE(d.c.Picture2->Picture().isNull());
    EXPECT_TRUE(d.c.QTplayButton->isVisible());
    EXPECT_NE(d.Panel().find("   Camera: MP4 video\n"
                             "     Size: 1,500,000   1,465 KB   1 MB\n"
                             "           Video format not supported\n"),
              std::string::npos);
    EXPECT_EQ(d.c.FileSizeText->text(), "1.43 MB");
    d.c.CopyExif1LineButton->trigger(); // with nothing of the picture before
    EXPECT_EQ(d.clipboard->Text(), d.s.FileModifiedText + " m.mp4");
    d.GoTo("a.jpg");
    EXPECT_FALSE(d.c.QTplayButton->isVisible());
    EXPECT_EQ(d.s.Kind, FileKind::Picture);
    EXPECT_TRUE(d.c.SlideButton->isEnabled());
    EXPECT_EQ(d.Current(), "a.jpg");
}

TEST(Video, TextsOfAnyLengthComeInParts) {
    VideoDesk d;
    std::string text;
    for (int i = 0; text.size() < 3000000; ++i) text += "line " + std::to_string(i) + "\n";
    d.folder.Write("l.log", text);
    d.folder.Write("long.log", "short\n" + std::string(3000000, 'x') + "\xC3\xA9");
    d.house.navigation.RefreshDirButton_Click();
    QScrollBar& bar = *d.c.LogText->verticalScrollBar();
    d.GoTo("l.log");
    auto shown = d.c.LogText->toPlainText().size();
    EXPECT_LT(shown, 1100000);
    for (int part = 0; part < 2; ++part) {
        bar.setValue(bar.maximum());
        EXPECT_GT(d.c.LogText->toPlainText().size(), shown);
        shown = d.c.LogText->toPlainText().size();
    }
    bar.setValue(bar.maximum());
    EXPECT_TRUE(d.c.LogText->toPlainText().toStdString() == text);
    d.GoTo("long.log");
    for (int part = 0; part < 3; ++part) bar.setValue(bar.maximum());
    QString line = d.c.LogText->toPlainText();
    for (const QString& part : line.split(QLatin1Char('\n'))) EXPECT_LE(part.size(), 4000);
    EXPECT_EQ(line.remove(QLatin1Char('\n')).size(), 3000006);
}

TEST(Video, TheCheckSendsAllClipsDownTheSameRoad) {
    VideoDesk d;
    d.folder.Write("sun.ser", NumberedSer(20));
    d.house.navigation.RefreshDirButton_Click();
    d.GoTo("sun.ser");
    EXPECT_TRUE(d.c.QTplayButton->isVisible());
    EXPECT_NE(d.Panel().find("   Camera: Canon DSLR Video\n"), std::string::npos);
    d.c.VideoInWindowButton->trigger();
    d.GoTo("v.avi");
    d.GoTo("sun.ser");
    EXPECT_FALSE(d.c.QTplayButton->isVisible());
    EXPECT_EQ(d.Frame(), "4|Video frame 4");
    d.Press(6);
    EXPECT_EQ(d.Frame(), "19|Video frame 20 end");
    d.GoTo("m.mp4"); // no clip
    EXPECT_NE(d.Error(), "");
    EXPECT_FALSE(d.c.VideoFrame->isVisible());
}

TEST(Video, AnOpenClipIsRenamedAndGoesAway) {
    VideoDesk d;
    d.GoTo("v.avi");
    d.Rename("w.avi");
    EXPECT_TRUE(std::filesystem::exists(d.At("w.avi")));
    EXPECT_EQ(d.Current(), "w.avi");
    d.GoTo("w.avi");
    EXPECT_EQ(d.Frame(), "4|Video frame 4");
    // A note that cannot be saved: nothing is begun.
    d.files.onChange = [](const std::string&, const std::string&) { return "refused"; };
    d.c.NotesBox->setPlainText(QStringLiteral("unsaved"));
    d.Rename("x.avi");
    EXPECT_TRUE(d.house.video.ClipIsOpen());
    d.c.NotesBox->clear();
    // A command that comes to nothing has closed the clip: any button opens it again.
    d.Rename("x.avi");
    d.files.onChange = {};
    EXPECT_FALSE(d.house.video.ClipIsOpen());
    d.Press(5);
    EXPECT_EQ(d.Frame(), "4|Video frame 4");
    d.c.VideoFrame->findChild<QSlider*>()->setValue(20);
    EXPECT_EQ(d.Frame(), "20|Video frame 20");
    // Another program takes it away: the frames go on or it is said, and the next file shows.
    std::filesystem::remove(d.At("w.avi"));
    d.Press(5);
    EXPECT_TRUE(d.Frame() == "21|Video frame 21" || !d.Error().empty()) << d.Frame();
    d.GoTo("a.jpg");
    EXPECT_EQ(d.Current(), "a.jpg");
    d.house.navigation.RefreshDirButton_Click();
    EXPECT_EQ(d.c.FileListBox->RowOf("w.avi"), -1);
}

TEST(Video, APageReadsNothingOutsideItsFolder) {
    VideoDesk d;
    TestFolder outside;
    d.AddPicture("in.jpg", 40);
    std::filesystem::copy(d.At("in.jpg"), outside.Path() + "/out.jpg");
    std::string page = "<html><body>Some text<img src=\"in.jpg\"><img src=\"" + outside.Path() +
                       "/out.jpg\"><img src=\"http://localhost/x.jpg\">";
    for (int i = 0; i < 1000; ++i) page += "<img src=\"none" + std::to_string(i) + ".jpg\">";
    d.folder.Write("p.html", page);
    d.GoTo("p.html");
    const auto resource = [&d](const std::string& url) {
        return d.c.WebBrowser1->document()->resource(QTextDocument::ImageResource,
                                                     QUrl(QString::fromStdString(url)));
    };
    EXPECT_EQ(resource("in.jpg").value<QImage>().width(), 40);
    for (const std::string& url :
         {"file://" + outside.Path() + "/out.jpg", ".." + outside.Path().substr(4) + "/out.jpg"}) {
        EXPECT_EQ(resource(url).value<QImage>().size(), QSize(16, 16)) << url; // a blank
    }
    EXPECT_TRUE(d.c.WebBrowser1->toPlainText().startsWith(QLatin1String("Some text")));
    EXPECT_TRUE(d.Said().starts_with("Plain view of the page: ")) << d.Said();
}

} // namespace tarn::testing
