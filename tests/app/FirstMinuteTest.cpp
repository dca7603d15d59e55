// What a new user sees first: the card of first steps, and the strip about dates that were set.
#include "AppDesk.h"

#include "common/dates.h"

#include <QRadioButton>
#include <QScrollArea>

namespace tarn::testing {
namespace {

struct CardDesk : AppDesk {
    QScrollArea* Card() const { return In<QScrollArea>("frmMain", "StartCard"); }
    QWidget* InCard(const char* name) const {
        return Card()->findChild<QWidget*>(QString::fromLatin1(name));
    }
    std::string Reads(const char* name) const {
        return static_cast<QLabel*>(InCard(name))->text().toStdString();
    }
    void Click(const char* name, std::vector<std::string> answers = {}) {
        dialogs.answers = std::move(answers);
        auto* button = qobject_cast<QAbstractButton*>(InCard(name));
        ASSERT_TRUE(button) << name;
        button->click(); // a card that is not laid out yet has no place to be hit
    }
};

TEST(StartCard, StandsInTheEmptyPaneAndSetsEachFolderOnTheSpot) {
    CardDesk d;
    TestFolder notes;
    TestFolder copies;
    TestFolder pictures;
    pictures.Write("a.jpg", JpegBytes(TellTale(60, 40)));
    d.Start();
    ASSERT_TRUE(d.Card()->isVisible());
    EXPECT_EQ(d.Reads("FirstStepsHint"), d.c.Picture1->accessibleDescription().toStdString());
    EXPECT_EQ(d.Reads("FirstStepsPictures"), d.folder.Path());
    EXPECT_EQ(d.Reads("FirstStepsNotes"), "not set");
    d.Click("FirstStepsNotesButton"); // cancelled
    EXPECT_EQ(d.Reads("FirstStepsNotes"), "not set");
    d.Click("FirstStepsNotesButton", {notes.Path()});
    EXPECT_EQ(d.s.NotesFolder, notes.Path());
    EXPECT_EQ(d.Said(), "Notes folder set to '" + notes.Path() + "'");
    EXPECT_EQ(d.Reads("FirstStepsNotes"), notes.Path());
    EXPECT_EQ(d.InCard("FirstStepsNotes")->toolTip().toStdString(), notes.Path());
    d.Click("FirstStepsCopiesButton", {copies.Path()});
    EXPECT_EQ(d.s.CopyImageFolder, copies.Path());
    EXPECT_EQ(d.Reads("FirstStepsCopies"), copies.Path());
    d.c.ClearNotesFolderButton->trigger(); // from elsewhere
    EXPECT_EQ(d.Reads("FirstStepsNotes"), "not set");
    d.Click("FirstStepsPicturesButton", {pictures.Path()});
    EXPECT_EQ(d.s.Filename, pictures.Path() + "/a.jpg");
    EXPECT_FALSE(d.Card()->isVisible());
    EXPECT_EQ(d.house.window.focusWidget(), d.c.Picture1);
}

TEST(StartCard, AnswersTheQuestionOfDatesByTheSwitchOfTheMenu) {
    CardDesk d;
    d.Start();
    const auto chosen = [&](const char* name) {
        return static_cast<QRadioButton*>(d.InCard(name))->isChecked();
    };
    EXPECT_TRUE(chosen("FirstStepsDatesYes"));
    EXPECT_FALSE(d.s.FileDatesAnswered);
    d.Click("FirstStepsDatesNo");
    EXPECT_FALSE(d.s.AutoSetFileDates);
    EXPECT_FALSE(d.c.AutoSetFileDatesButton->isChecked());
    EXPECT_TRUE(d.s.FileDatesAnswered);
    d.c.AutoSetFileDatesButton->trigger();
    EXPECT_TRUE(chosen("FirstStepsDatesYes"));
}

TEST(StartCard, TheAnswerThatHoldsAlreadyIsOneToo) {
    CardDesk same;
    same.Start();
    same.Click("FirstStepsDatesYes");
    EXPECT_TRUE(same.s.AutoSetFileDates);
    same.c.Exit->trigger();
    EXPECT_EQ(same.settings->Read("filedate_auto_answered", ""), "True");
}

TEST(StartCard, LeavesTheKeyboardWhereItIsAndGoesWithTheEmptiness) {
    CardDesk d;
    d.Start();
    d.c.FileListBox->setFocus();
    TestFolder empty;
    d.house.navigation.OpenFolder(empty.Path(), {});
    EXPECT_TRUE(d.Card()->isVisible());
    EXPECT_EQ(d.house.window.focusWidget(), d.c.FileListBox);
    EXPECT_EQ(d.Reads("FirstStepsPictures"), empty.Path());
    EXPECT_TRUE(d.InCard("FirstStepsCloseButton")->isHidden()); // nothing lies below
    empty.Write("a.jpg", JpegBytes(TellTale(60, 40)));
    QTest::keyClick(d.c.FileListBox, Qt::Key_F5);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !d.Card()->isVisible(); }));
}

TEST(StartCard, WelcomesAtTheVeryFirstStartUntilAnotherPictureComes) {
    CardDesk d;
    d.AddPictures({"a.jpg", "b.jpg"});
    d.files.home = d.folder.Path();
    d.Start("");
    EXPECT_EQ(d.s.FileNameOnly, "a.jpg");
    EXPECT_TRUE(d.Card()->isVisible());
    EXPECT_TRUE(d.InCard("FirstStepsHint")->isHidden());
    d.house.display.Redraw();
    EXPECT_TRUE(d.Card()->isVisible());
    d.Key(Qt::Key_N);
    EXPECT_FALSE(d.Card()->isVisible());
    d.Key(Qt::Key_P);
    EXPECT_FALSE(d.Card()->isVisible());
    CardDesk again;
    again.AddPicture("a.jpg");
    again.settings->Write("filespec_default", again.At("a.jpg"));
    again.Start("");
    EXPECT_FALSE(again.Card()->isVisible());
}

TEST(StartCard, StandsInAWindowOfItsOwnFromTheHelpMenu) {
    AppDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    d.c.FirstStepsButton->trigger();
    TestFolder notes;
    d.Press("frmFirstSteps", "FirstStepsNotesButton", {notes.Path()});
    EXPECT_EQ(d.s.NotesFolder, notes.Path());
    d.Press("frmFirstSteps", "FirstStepsCloseButton");
    EXPECT_FALSE(d.Up("frmFirstSteps"));
}

struct StripDesk : AppDesk {
    StripDesk() {
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg"})
            folder.Write(name, Dated("2004:06:22 20:15:30", TellTale(600, 400)));
        folder.Write("0.jpg", JpegBytes(TellTale(60, 40))); // has no date
    }
    QWidget* Strip() const { return In<QWidget>("frmMain", "DateStrip"); }
    std::string Reads() const {
        return Strip()->isVisible() ? In<QLabel>("frmMain", "DateStripText")->text().toStdString()
                                    : "";
    }
    void Click(const char* name) {
        QTest::mouseClick(In<QPushButton>("frmMain", name), Qt::LeftButton);
    }
    std::pair<std::int64_t, std::int64_t> Time(const char* name) const {
        const auto look = files.Look(At(name), nullptr).value();
        return {look.seconds, look.nanoseconds};
    }
};

constexpr char kOne[] = "The date of 'a.jpg' was set to its picture date, as Control > Auto "
                        "Synchronize says";

TEST(DateStrip, SaysOnceThatADateWasSetAndGivesItBack) {
    StripDesk d;
    const auto before = d.Time("a.jpg");
    const auto untouched = d.Time("b.jpg");
    d.Start();
    EXPECT_EQ(d.Reads(), "");
    const QRect message = d.c.FileDateText->geometry();
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Reads(), kOne);
    EXPECT_EQ(d.c.FileDateText->geometry(), message);
    EXPECT_EQ(d.Strip()->geometry().bottom() + 1, message.top());
    EXPECT_NE(d.Time("a.jpg"), before);
    d.Click("DateStripUndoButton");
    EXPECT_EQ(d.Time("a.jpg"), before);
    EXPECT_EQ(d.Time("b.jpg"), untouched);
    EXPECT_EQ(d.Said(), "Undone: the date of 'a.jpg' is what it was");
    EXPECT_EQ(d.Reads(), "");
    QTest::qWait(400);
    EXPECT_EQ(d.Said(), "Undone: the date of 'a.jpg' is what it was");
    d.house.display.Redraw();
    EXPECT_EQ(d.Time("a.jpg"), before); // also when it is shown again
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Reads().substr(0, 19), "The date of 'b.jpg'"); // nothing was answered
}

TEST(DateStrip, NeverTurnsTheSwitchOffAndGivesBackWhatWasSetMeanwhile) {
    StripDesk d;
    const auto a = d.Time("a.jpg");
    const auto b = d.Time("b.jpg");
    d.Start(d.At("a.jpg"));
    d.Key(Qt::Key_N);
    EXPECT_EQ(d.Reads(), "The dates of 'a.jpg' and one more file were set to their picture dates, "
                         "as Control > Auto Synchronize says");
    d.Click("DateStripNeverButton");
    EXPECT_EQ(d.Time("a.jpg"), a);
    EXPECT_EQ(d.Time("b.jpg"), b);
    EXPECT_FALSE(d.s.AutoSetFileDates);
    EXPECT_FALSE(d.c.AutoSetFileDatesButton->isChecked());
    EXPECT_EQ(d.Said(), "Auto Synchronize is off; the dates of 'a.jpg' and one more file are what "
                        "they were");
    EXPECT_EQ(d.Reads(), "");
    d.Key(Qt::Key_N);
    d.c.Exit->trigger();
    EXPECT_EQ(d.settings->Read("filedate_auto", ""), "False");
    EXPECT_EQ(d.settings->Read("filedate_auto_answered", ""), "True");
}

TEST(DateStrip, ClosedItKeepsTheSwitchAndIsNotShownAgain) {
    StripDesk d;
    d.Start(d.At("a.jpg"));
    EXPECT_EQ(d.Reads(), kOne);
    d.house.window.resize(1600, 1100);
    for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
    const QRect pane = d.In<QWidget>("frmMain", "Panes")->geometry();
    d.In<QPushButton>("frmMain", "DateStripUndoButton")->setFocus();
    QTest::keyClick(d.house.window.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(d.Reads(), "");
    EXPECT_EQ(d.house.window.focusWidget(), d.c.Picture1);
    EXPECT_EQ(d.In<QWidget>("frmMain", "Panes")->geometry(), pane); // it stands
    const auto b = d.Time("b.jpg");
    d.Key(Qt::Key_N);
    EXPECT_NE(d.Time("b.jpg"), b);
    EXPECT_EQ(d.Reads(), "");
    EXPECT_TRUE(d.s.AutoSetFileDates);
    EXPECT_FALSE(d.s.FileDatesAnswered); // the next start asks again
}

TEST(DateStrip, WhatAnotherProgramDatedSinceStays) {
    StripDesk d;
    d.Start(d.At("a.jpg"));
    SetFileTime(d.At("a.jpg"), 2001, 2, 3, 4, 5, 6);
    const auto now = d.Time("a.jpg");
    d.Click("DateStripUndoButton");
    EXPECT_EQ(d.Time("a.jpg"), now);
    EXPECT_EQ(d.Said(), "NOT undone: 'a.jpg' - it has been changed since");
    d.Key(Qt::Key_N);
    d.files.Refuse("time back", "Permission denied");
    d.Click("DateStripUndoButton");
    EXPECT_EQ(d.Said(), "NOT undone: 'b.jpg' - Permission denied");
}

TEST(DateStrip, WaitsForTheEndOfABatch) {
    StripDesk d;
    d.Start();
    d.s.BatchRuns = true;
    d.GoTo("a.jpg");
    EXPECT_EQ(d.Reads(), "");
    d.s.BatchRuns = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Reads() == kOne; }));
}

} // namespace
} // namespace tarn::testing
