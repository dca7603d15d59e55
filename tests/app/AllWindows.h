// Every window of the program, one after the other, filled as in use.
#pragma once

#include "AppDesk.h"

#include "print/frmPrintPreview.h"

#include <QTimer>

#include <set>

namespace tarn::testing {

inline QPalette InColours(const QColor& ground, const QColor& text) {
    QPalette palette(text, ground);
    palette.setColor(QPalette::Base, ground);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(role, text);
    return palette;
}

struct WindowsDesk : AppDesk {
    using Visit = std::function<void(const std::string& name, QWidget& window)>;

    TestFolder notes;
    TestFolder paper;

    WindowsDesk() {
        const std::string dated = Behind(CanonPicture(), TellTale(1800, 1200));
        for (const char* name : {"M31_0421.jpg", "M31_0422.jpg", "M42_0431.jpg", "Saturn_0007.jpg"})
            folder.Write(name, dated);
        folder.Write("broken.jpg", "no picture at all");
        folder.Write("guiding.log", "12:00:01 guiding started\n12:00:03 dither\n");
        folder.Write("page.html", "<html><body><h1>A page</h1></body></html>");
        notes.Write("M31_0421.enf", "Andromeda, 12 x 300 s\r\nGood seeing, moon 20%\r\n");
        settings->Write("notes_folder", notes.Path());
    }

    // Opens each window, hands it over when it stands, and puts it away.
    void Each(const Visit& visit) {
        Start(folder.Path() + "/M31_0421.jpg");
        QCoreApplication::processEvents();
        visit("frmMain", house.window);
        m_visit = &visit;
        ShowMarks();
        ShowFaults();
        house.shell.ShowFaults("118 thumbnails made, 2 failed",
                               {{At("a.jpg"), "No space left on device"},
                                {At("b.jpg"), "Not a picture that can be read"}});
        Hand("frmFaults");
        ShowEmpty();
        Entry("frmBrightness", c.AdjustButton);
        Button("FrmPic", c.ViewButton);
        Button("frmOnetoOne", c.OneToOneButton);
        Button("frmFilter", c.FilesFilterButton2);
        Entry("frmFileTypes", c.SetFileTypesButton);
        Button("FrmNewNotes", c.CommandNotesNew, false);
        Press("FrmNewNotes", "CommandCalcExposure");
        Hand("frmExpCalc");
        Put("FrmNewNotes");
        Entry("frmNight", c.NightButton);
        Entry("frmCorners", c.CornersButton);
        Entry("frmNightReport", c.NightReportButton);
        Entry("frmSites", c.SitesButton);
        Entry("frmKits", c.KitsButton);
        Entry("frmFillNotes", c.FillNotesButton);
        Entry("frmBlink", c.BlinkButton);
        Entry("frmMovers", c.MoversButton);
        Entry("frmSum", c.SumButton);
        Entry("frmBestFrames", c.BestFramesButton);
        Entry("frmNotesFolder", c.DisplayNotesFolderButton);
        Entry("frmRename", c.RenameButton);
        Entry("frmDuplicate", c.DuplicateButton);
        Entry("frmRenameFiles", c.RenamePicturesButton);
        Entry("frmDate", c.FixPictureDateButton);
        Entry("frmClock", c.SetClockButton);
        Entry("frmCaption", c.ConvertJpgSetText);
        c.CreateAppendHtmlFile->trigger();
        Hand("frmHtmlLayout", false);
        Press("frmHtmlLayout", "CreateButton_1", {folder.Path() + "/page_of_pictures.html"});
        Hand("frmHtmlLayout");
        dialogs.answers = {folder.Path() + "/gallery.html"};
        Entry("frmHtmlThumb", c.HtmlThumbButton);
        Entry("frmThumbFolder", c.ThumbFolderButton);
        Entry("frmHistory", c.HistoryButton);
        Entry("frmLogs", c.ShowLogsButton);
        Entry("frmHelp", c.HelpSlideButton);
        Entry("frmHelp-keys", c.HelpKeysButton);
        Entry("frmAbout", c.VersionButton);
        Entry("frmFirstSteps", c.FirstStepsButton);
        Waiting("frmSlideDelay", c.SetSlideShowAutoUpdateButton);
        Preview();
        Show("frmSlideShow", c.SlideButton);
        Show("frmSlideShow-4", c.Slides4Button);
        m_visit = nullptr;
    }

private:
    // The main window with a file that cannot be shown, then with a cut picture.
    void ShowFaults() {
        house.navigation.ClearMultiselect();
        GoTo("broken.jpg");
        QCoreApplication::processEvents();
        (*m_visit)("frmMain-error", house.window);
        house.navigation.ClearMultiselect();
        GoTo("M31_0421.jpg");
        c.OneXcheck->setChecked(true);
        c.ListPicturesButton->click();
        QCoreApplication::processEvents();
        (*m_visit)("frmMain-cut", house.window);
        c.ListPicturesButton->click();
        c.OneXcheck->setChecked(false);
        QCoreApplication::processEvents();
    }
    void ShowMarks() {
        house.marks.SetMarks({At("M31_0421.jpg")}, SetTo({Decision::Keep, 4}));
        house.marks.SetMarks({At("M31_0422.jpg")}, SetTo({Decision::Reject, 0}));
        QCoreApplication::processEvents();
        (*m_visit)("frmMain-marks", house.window);
    }
    // With a folder that has nothing to show.
    void ShowEmpty() {
        house.navigation.OpenFolder(paper.Path(), {});
        QCoreApplication::processEvents();
        (*m_visit)("frmMain-empty", house.window);
        house.navigation.OpenFolder(folder.Path(), "M31_0421.jpg");
        QCoreApplication::processEvents();
    }
    void Hand(const std::string& name, bool close = true) {
        for (int i = 0; i < 3; ++i) QCoreApplication::processEvents(); // sizes settle
        QWidget* window = Up(name.substr(0, name.find('-')));
        ASSERT_TRUE(window) << name << " did not come up";
        (*m_visit)(name, *window);
        if (close) Put(name);
    }
    void Put(const std::string& name) {
        if (QWidget* window = Up(name.substr(0, name.find('-')))) window->close();
        QCoreApplication::processEvents();
    }
    void Entry(const std::string& name, QAction* entry) {
        ASSERT_TRUE(entry->isEnabled()) << name;
        entry->trigger();
        Hand(name);
    }
    void Button(const std::string& name, QPushButton* button, bool close = true) {
        ASSERT_TRUE(button->isEnabled()) << name;
        button->click();
        Hand(name, close);
    }
    // A window that is answered before its command returns.
    void Waiting(const std::string& name, QAction* entry) {
        QTimer::singleShot(0, [this, name] { Hand(name); });
        entry->trigger();
    }
    void Preview() {
        c.PrintPreviewButton->trigger();
        Answer({paper.Path() + "/sheet.pdf"}, c.Printc4Button);
        Hand("frmPrintPreview");
    }
    void Show(const std::string& name, QPushButton* button) {
        RunShow(button, {[this, name] {
                    house.slides.Window()->repaint();
                    (*m_visit)(name, *house.slides.Window());
                }});
    }

    const Visit* m_visit = nullptr;
};

} // namespace tarn::testing
