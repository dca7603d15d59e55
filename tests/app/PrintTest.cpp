// Printing from the menu, down to the recorded pages.
#include "AppDesk.h"

#include "../print/Orders.h"
#include "print/frmPrintPreview.h"
#include "widgets/printing/clsPrintDialog.h"

#include <QDate>

#include <cmath>

namespace tarn::testing {
namespace {

struct PrintDesk : AppDesk {
    TestFolder paper;
    std::string pdf = paper.Path() + "/out.pdf";

    void Fill(int count) {
        for (int i = 0; i < count; ++i)
            AddPicture("p" + std::to_string(100 + i) + ".jpg", 60 + i, 40);
    }
    void Print(QAction* entry) { Answer({pdf}, entry); }
    std::string Message() const { return Said(); }
    bool Has(std::size_t page, const std::string& text) const {
        return page < printing.pages.size() && PlaceOf(printing.pages[page], text) != "none";
    }
};

TEST(Print, EveryPictureIsPrintedAndTheScreenIsAsBefore) {
    PrintDesk d;
    d.Fill(13);
    d.Start();
    d.house.navigation.SelectRow(4);
    std::vector<std::string> progress;
    d.events.onPump = [&] {
        if (d.s.BatchRuns) progress.push_back(d.Message() + "|" + d.s.TextNumOf);
    };
    d.Print(d.c.PrintCButton);
    ASSERT_EQ(d.printing.pages.size(), 2U);
    EXPECT_TRUE(d.Has(0, "Page 1 of 2"));
    const std::string heading = All<PaperText>(d.printing.pages[0]).at(0).text;
    EXPECT_TRUE(heading.starts_with("Tarn_View " + d.s.Version + " ")) << heading;
    EXPECT_TRUE(heading.ends_with("/" + std::to_string(QDate::currentDate().year()) + " - " +
                                  d.folder.Path()))
        << heading;
    EXPECT_TRUE(d.Has(0, "1.  p100.jpg"));
    EXPECT_TRUE(d.Has(0, "12.  p111.jpg"));
    EXPECT_TRUE(d.Has(1, "13.  p112.jpg"));
    EXPECT_TRUE(d.Has(1, "0.0 Mp 72 x 40 - 1 KB")); // each its own data
    EXPECT_EQ(All<PaperPicture>(d.printing.pages[0]).size(), 12U);
    ASSERT_EQ(progress.size(), 13U);
    EXPECT_EQ(progress[12], "Printing 12 picture thumbnail sheets page (2 of 2) # 1|13 of 13");
    EXPECT_TRUE(std::filesystem::exists(d.pdf));
    EXPECT_EQ(d.Message(), "'" + d.pdf + "' file created");
    EXPECT_EQ(d.Current(), "p104.jpg");
    EXPECT_EQ(d.s.TextNumOf, "5 of 13");
    EXPECT_EQ(d.c.Picture1->Picture().size(), QSize(64, 40));
    EXPECT_FALSE(d.c.PrintCancelButton->isVisible());
    EXPECT_EQ(d.dialogs.shown, Calls{"print"});
    // The next dialog begins with what was chosen.
    d.Answer({}, d.c.PrintSetup);
    EXPECT_TRUE(d.dialogs.asked.toFile);
    EXPECT_EQ(d.dialogs.asked.pdf, d.paper.Path() + "/print.pdf");
}

TEST(Print, OnePageBeginsWithTheCurrentPicture) {
    PrintDesk d;
    d.Fill(5);
    d.folder.Write("p105.jpg", Photo(ExifBuilder(Endian::Big).Short(274, 6)));
    d.Start();
    d.c.Print1stTButton->trigger();
    d.house.navigation.SelectRow(5);
    std::string counter;
    d.events.onPump = [&] {
        if (d.s.BatchRuns) counter = d.s.TextNumOf;
    };
    d.Print(d.c.Printc4Button);
    EXPECT_EQ(counter, "6 of 4");
    ASSERT_EQ(d.printing.pages.size(), 1U);
    EXPECT_EQ(All<PaperBox>(d.printing.pages[0]).size(), 1U);
    EXPECT_TRUE(d.Has(0, "6.  p105.jpg"));
    EXPECT_TRUE(d.Has(0, "Page 1 of 1"));
    const auto picture = All<PaperPicture>(d.printing.pages[0]).at(0);
    EXPECT_EQ(Quarters(Decoded(picture.jpeg)), "bryg");
}

TEST(Print, SheetsOfKeptFilesLeaveTheOthersOut) {
    PrintDesk d;
    d.Fill(13);
    d.Start();
    const auto caption = [&] {
        emit d.c.PrintMenu->aboutToShow();
        return d.c.PrintCButton->text().toStdString();
    };
    EXPECT_TRUE(caption().ends_with("  (2 pages)")) << caption();
    d.c.PrintKeptButton->trigger();
    EXPECT_TRUE(caption().ends_with("  (0 pages)")) << caption();
    d.Print(d.c.PrintCButton);
    EXPECT_EQ(d.Message(), "No kept files in this list");
    d.house.marks.SetMarks({d.At("p102.jpg"), d.At("p111.jpg")}, Decide(Decision::Keep));
    EXPECT_TRUE(caption().ends_with("  (1 pages)")) << caption();
    d.Print(d.c.PrintCButton);
    ASSERT_EQ(d.printing.pages.size(), 1U);
    EXPECT_TRUE(d.Has(0, "Page 1 of 1"));
    EXPECT_TRUE(d.Has(0, "1.  p102.jpg"));
    EXPECT_TRUE(d.Has(0, "2.  p111.jpg"));
    EXPECT_EQ(All<PaperPicture>(d.printing.pages[0]).size(), 2U);
}

TEST(Print, CancelDropsThePages) {
    for (const bool byKey : {false, true}) {
        PrintDesk d;
        d.Fill(5);
        d.Start();
        int pumps = 0;
        d.events.onPump = [&] {
            if (!d.s.BatchRuns || ++pumps != 3) return;
            EXPECT_TRUE(d.c.PrintCancelButton->isVisible());
            if (byKey)
                QTest::keyClick(d.c.PrintCancelButton, Qt::Key_Escape);
            else
                d.c.PrintCancelButton->click();
        };
        d.Print(d.c.PrintCSButton);
        EXPECT_EQ(pumps, 3);
        EXPECT_TRUE(d.printing.pages.empty());
        EXPECT_EQ(d.printing.killed, 1);
        EXPECT_FALSE(std::filesystem::exists(d.pdf));
        EXPECT_EQ(d.Message(), "Printing cancelled");
        EXPECT_EQ(d.Current(), "p100.jpg");
        EXPECT_FALSE(d.s.BatchRuns);
        EXPECT_FALSE(d.c.PrintCancelButton->isVisible());
    }
}

TEST(Print, CancelledDialogAndEnlargedWindowPrintNothing) {
    PrintDesk d;
    d.Fill(2);
    d.Start();
    d.c.PrintCMButton->trigger();
    PrinterChoice current;
    clsPrintDialog dialog(d.dialogs, current);
    EXPECT_FALSE(dialog.ShowPrinter());
    dialog.CancelError = true;
    EXPECT_THROW(dialog.ShowPrinter(), PrintDialogError);
    d.dialogs.shown.resize(1);
    EXPECT_EQ(d.dialogs.shown, Calls{"print"});
    d.house.window.resize(d.house.window.width() + 1, d.house.window.height());
    d.Print(d.c.PrintCMButton);
    EXPECT_EQ(d.Message(),
              "Sheets are printed with the main window no larger than at the start (" +
                  std::to_string(d.house.window.width() - 1) + " x " +
                  std::to_string(d.house.window.height()) +
                  "): make it smaller, or end the program and start it again at this size");
    EXPECT_EQ(d.dialogs.shown.size(), 1U);
    EXPECT_TRUE(d.printing.pages.empty());
    // The data sheet is never refused; the picture takes its fixed box.
    d.Print(d.c.PrintButton);
    ASSERT_EQ(d.printing.pages.size(), 1U);
    EXPECT_EQ(Place(All<PaperBox>(d.printing.pages[0]).at(0)), "1961 1200 7985 5323");
}

TEST(Print, NotesOfEachPictureAndTheOneInHand) {
    PrintDesk d;
    TestFolder notes;
    notes.Write("p101.enf", "second's note");
    d.Fill(2);
    d.settings->Write("notes_folder", notes.Path());
    d.Start();
    d.house.navigation.SelectRow(1);
    d.c.NotesBox->setPlainText(QStringLiteral("unsaved"));
    d.Print(d.c.PrintCButton);
    EXPECT_TRUE(d.Has(0, "second's note")); // as saved
    EXPECT_EQ(d.s.NotesSave, "unsaved");
    EXPECT_TRUE(d.c.RestoreNotesButton->isEnabled());
    d.c.PrintNotesOnThumbnailsButton->trigger();
    d.Print(d.c.PrintCButton);
    EXPECT_FALSE(d.Has(0, "second's note"));
    d.c.NotesBox->setPlainText(QStringLiteral("unsaved again"));
    d.c.PrintPreviewButton->trigger();
    d.Print(d.c.PrintCButton);
    EXPECT_EQ(d.Message(), "Pages shown in the preview; Unsaved note of 'p101.jpg' is in the "
                           "restore buffer");
}

TEST(Print, FilesThatAreNoPicturesAndExtremeOnes) {
    PrintDesk d;
    d.AddPicture("a.jpg");
    d.folder.Write("b.jpg", "no picture");
    d.AddPicture("c.jpg", 1, 30000);
    d.folder.Write("d.txt", "text");
    d.Start();
    d.Print(d.c.PrintCButton);
    ASSERT_EQ(d.printing.pages.size(), 1U);
    const auto boxes = All<PaperBox>(d.printing.pages[0]);
    ASSERT_EQ(boxes.size(), 4U);
    // One pixel beside as many as the pane has.
    const auto width = std::to_string(std::lround(1995.0 / d.s.PreviewHeight));
    EXPECT_EQ(Place(boxes[2]), "7900 550 " + width + " 1995");
    EXPECT_EQ(d.Current(), "a.jpg");
    EXPECT_TRUE(d.s.ImageLoaded);
    EXPECT_EQ(d.s.FileType, ".JPG");
    EXPECT_EQ(d.Error(),
              "Not a picture that can be read - b.jpg"); // the text is none, and no fault
    const auto* list = d.In<QPlainTextEdit>("frmFaults", "FaultsBox");
    EXPECT_EQ(list->toPlainText(), QStringLiteral("b.jpg - Not a picture that can be read"));
    const std::string whole = JpegBytes(TellTale(600, 400));
    d.folder.Write("b2.jpg", whole.substr(0, whole.size() / 2));
    d.house.navigation.RefreshDirButton_Click();
    d.Print(d.c.PrintCButton);
    const std::string faults = list->toPlainText().toStdString();
    EXPECT_TRUE(faults.starts_with("b.jpg - Not a picture that can be read\nb2.jpg - ")) << faults;
    EXPECT_EQ(std::count(faults.begin(), faults.end(), '\n'), 1) << faults;
}

TEST(Print, TurnsAreOnTheDataSheet) {
    PrintDesk d;
    d.Fill(1);
    d.Start();
    d.Key(Qt::Key_R);
    d.Print(d.c.PrintButton);
    ASSERT_EQ(d.printing.pages.size(), 1U);
    const PaperPage& page = d.printing.pages[0];
    // 40 x 60 pixels are 600 x 900 twips of the screen.
    EXPECT_EQ(Place(All<PaperBox>(page).at(0)), "4986 1200 1933 2900");
    const auto pictures = All<PaperPicture>(page);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(Quarters(Decoded(pictures[0].jpeg)), "bryg");
    EXPECT_TRUE(d.Has(0, d.s.Filename));
    EXPECT_TRUE(d.Has(0, d.Row(0)));
}

TEST(Print, PicturesAreInTheColoursOfTheirProfile) {
    PrintDesk d;
    d.folder.Write("p.jpg", WithProfile(JpegBytes(TellTale(60, 40)), SwappedProfile()));
    d.folder.Write("q.jpg", WithProfile(JpegBytes(TellTale(60, 40)), "broken"));
    d.Start();
    EXPECT_EQ(Quarters(d.c.Picture1->Picture()), "bgr?");
    d.Print(d.c.PrintCButton);
    const auto pictures = All<PaperPicture>(d.printing.pages.at(0));
    EXPECT_EQ(Quarters(Decoded(pictures.at(0).jpeg)), "bgr?");
    EXPECT_EQ(d.Status(), d.At("p.jpg")); // the remark on the second does not stay
    d.house.navigation.NextButton_Click();
    EXPECT_TRUE(d.Status().ends_with("broken and was ignored"));
}

TEST(Print, ThePreviewShowsThePagesBeforeTheyAreSent) {
    PrintDesk d;
    d.Fill(5);
    d.Start();
    d.c.PrintPreviewButton->trigger();
    d.Print(d.c.Printc4Button);
    frmPrintPreview* preview = d.house.print.Preview();
    ASSERT_TRUE(preview);
    ASSERT_TRUE(preview->isVisible());
    EXPECT_TRUE(d.printing.pages.empty());
    const auto press = [&](const char* name) { d.Press("frmPrintPreview", name); };
    press("PreviewNextButton");
    EXPECT_EQ(d.In<QLabel>("frmPrintPreview", "PageLabel")->text(), "2 of 2");
    const double whole = preview->Zoom();
    press("PreviewLargerButton");
    EXPECT_GT(preview->Zoom(), whole);
    d.Press("frmPrintPreview", "PreviewPdfButton", {d.paper.Path() + "/copy.pdf"});
    EXPECT_TRUE(std::filesystem::exists(d.paper.Path() + "/copy.pdf"));
    EXPECT_FALSE(std::filesystem::exists(d.pdf));
    press("PreviewPrintButton");
    EXPECT_TRUE(std::filesystem::exists(d.pdf));
    EXPECT_EQ(d.printing.pages.size(), 2U);
    EXPECT_FALSE(preview->isVisible());
    // Closed, it sends nothing.
    std::filesystem::remove(d.pdf);
    d.Print(d.c.Printc4Button);
    preview->close();
    EXPECT_FALSE(std::filesystem::exists(d.pdf));
}

} // namespace
} // namespace tarn::testing
