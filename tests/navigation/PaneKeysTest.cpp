#include "NavDesk.h"

#include "common/keys.h"
#include "navigation/PaneKeys.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <utility>

namespace tarn::testing {
namespace {

struct KeyDesk : NavDesk {
    PaneKeys keys{context};
    KeyDesk() {
        FillWithPictures(10);
        state.ImageLoaded = true;
        window.resize(600, 400);
        controls.Picture1->setGeometry(0, 0, 200, 100);
        controls.Picture1->raise();
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    void Send(QWidget* to, QEvent::Type type, int key, bool repeat = false,
              Qt::KeyboardModifiers with = Qt::NoModifier) {
        QKeyEvent event(type, key, with, QString(), repeat);
        QApplication::sendEvent(to, &event);
    }
    void Type(QWidget* to, int key, Qt::KeyboardModifiers with = Qt::NoModifier) {
        Send(to, QEvent::KeyPress, key, false, with);
        Send(to, QEvent::KeyRelease, key, false, with);
    }
    int RowAfterKey(int key) {
        Type(controls.Picture1, key);
        return Row();
    }
};

TEST(PaneKeys, StepsThroughTheList) {
    KeyDesk d;
    EXPECT_EQ(d.RowAfterKey(Qt::Key_N), 1);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_Space), 2);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_P), 1);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_End), 9);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_Down), 0);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_Up), 9);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_PageDown), 4);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_PageUp), 9);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_Home), 0);
    EXPECT_EQ(d.RowAfterKey(Qt::Key_Comma), 9); // the view before
    EXPECT_EQ(d.RowAfterKey(Qt::Key_Period), 0);
}

TEST(PaneKeys, AKeyCountsOnItsReleaseInThePaneOfItsPress) {
    KeyDesk d;
    d.Send(d.controls.Picture1, QEvent::KeyPress, Qt::Key_N);
    EXPECT_EQ(d.Row(), 0);
    d.Send(d.controls.Picture2, QEvent::KeyRelease, Qt::Key_N);
    EXPECT_EQ(d.Row(), 0); // the press was seen elsewhere
    d.Send(d.controls.Picture1, QEvent::KeyRelease, Qt::Key_N);
    EXPECT_EQ(d.Row(), 0); // and is used up
    for (const auto with : {Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier})
        d.Type(d.controls.Picture1, Qt::Key_N, with);
    EXPECT_EQ(d.Row(), 0);
    d.Type(d.controls.NotesBox, Qt::Key_N);
    EXPECT_EQ(d.Row(), 0);
}

TEST(PaneKeys, OverlappingKeysAllCount) {
    KeyDesk d;
    QWidget* pane = d.controls.Picture1;
    d.Send(pane, QEvent::KeyPress, Qt::Key_N);
    d.Send(pane, QEvent::KeyPress, Qt::Key_R);
    d.Type(pane, Qt::Key_Shift);
    d.Send(pane, QEvent::KeyRelease, Qt::Key_N);
    EXPECT_EQ(d.Row(), 1);
    d.Send(pane, QEvent::KeyRelease, Qt::Key_R);
    EXPECT_EQ(d.calls.back(), "RotateRight");
}

// The window system's own events; a repeat may come as a release and a press of one instant.
TEST(PaneKeys, ARepeatInTwoHalvesIsNoRelease) {
    KeyDesk d;
    const auto send = [&](QEvent::Type type, int key, quint64 at) {
        QKeyEvent event(type, key, Qt::NoModifier);
        event.setTimestamp(at);
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(d.controls.Picture1, &event);
    };
    send(QEvent::KeyPress, Qt::Key_R, 10);
    for (quint64 at = 500; at < 600; at += 30) {
        send(QEvent::KeyRelease, Qt::Key_R, at);
        send(QEvent::KeyPress, Qt::Key_R, at);
    }
    QTest::qWait(20);
    EXPECT_TRUE(d.calls.empty());
    send(QEvent::KeyRelease, Qt::Key_R, 700);
    QTest::qWait(20);
    EXPECT_EQ(d.calls, (Calls{"RotateRight"}));
}

TEST(PaneKeys, AHeldKeyStepsOncePerPaintedPicture) {
    KeyDesk d;
    QWidget* pane = d.controls.Picture1;
    d.Send(pane, QEvent::KeyPress, Qt::Key_N);
    d.Send(pane, QEvent::KeyPress, Qt::Key_N, true);
    EXPECT_EQ(d.Row(), 1);
    d.Send(pane, QEvent::KeyPress, Qt::Key_N, true); // not painted in between: dropped
    EXPECT_EQ(d.Row(), 1);
    pane->repaint();
    d.Send(pane, QEvent::KeyPress, Qt::Key_N, true);
    EXPECT_EQ(d.Row(), 2);
    d.Send(pane, QEvent::KeyRelease, Qt::Key_N); // steps no more
    EXPECT_EQ(d.Row(), 2);
    d.Send(pane, QEvent::KeyPress, Qt::Key_R);
    d.Send(pane, QEvent::KeyPress, Qt::Key_R, true); // only steps repeat
    d.calls.clear();
    d.Send(pane, QEvent::KeyRelease, Qt::Key_R);
    EXPECT_EQ(d.calls, (Calls{"RotateRight"}));
}

TEST(PaneKeys, PictureKeysNeedAPicture) {
    KeyDesk d;
    d.state.ImageLoaded = false;
    d.Type(d.controls.Picture1, Qt::Key_R);
    EXPECT_TRUE(d.calls.empty());
    EXPECT_EQ(d.RowAfterKey(Qt::Key_N), 1); // stepping goes on
}

TEST(PaneKeys, EachKeyPressesItsCommand) {
    KeyDesk d;
    const MainControls& c = d.controls;
    std::string pressed;
    const auto watch = [&](auto* control) {
        Connect(control, [&pressed, control] { pressed += control->objectName().toStdString(); });
        SetEnabled(control, true);
    };
    for (QPushButton* button : {c.ViewButton, c.SlideButton, c.OneToOneButton, c.Slides2Button,
                                c.Slides4Button, c.SlidesC2Button, c.CopyImageButton3, c.CJMButton})
        watch(button);
    for (QAction* entry :
         {c.FixPictureDateButton, c.RenameButton, c.HelpPicNavButton, c.SetFileDatesButton, c.Exit,
          c.PrintButton, c.DeleteButton, c.DuplicateButton, c.AdjustButton, c.PopupOpenButton,
          c.ZoomInButton, c.ZoomOutButton, c.FitToPaneButton})
        watch(entry);
    d.calls.clear();
    const auto after = [&](QWidget* pane, int key) {
        pressed.clear();
        d.Type(pane, key);
        for (const std::string& call : std::exchange(d.calls, {})) pressed += call;
        return pressed;
    };
    const std::pair<int, const char*> picture[] = {{Qt::Key_V, "ViewButton"},
                                                   {Qt::Key_S, "SlideButton"},
                                                   {Qt::Key_F, "OneToOneButton"},
                                                   {Qt::Key_1, "OneToOneButton"},
                                                   {Qt::Key_2, "Slides2Button"},
                                                   {Qt::Key_4, "Slides4Button"},
                                                   {Qt::Key_C, "SlidesC2Button"},
                                                   {Qt::Key_D, "FixPictureDateButton"},
                                                   {Qt::Key_Y, "CopyImageButton3"},
                                                   {Qt::Key_U, "CJMButton"},
                                                   {Qt::Key_Z, "CJMButton"},
                                                   {Qt::Key_F1, "HelpPicNavButton"},
                                                   {Qt::Key_F2, "RenameButton"},
                                                   {Qt::Key_A, "RenameButton"},
                                                   {Qt::Key_F5, "SetSaveCommands"},
                                                   {Qt::Key_F6, "SetFileDatesButton"},
                                                   {Qt::Key_F10, "Exit"},
                                                   {Qt::Key_Print, "PrintButton"},
                                                   {Qt::Key_Delete, "DeleteButton"},
                                                   {Qt::Key_Insert, "DuplicateButton"},
                                                   {Qt::Key_B, "AdjustButton"},
                                                   {Qt::Key_Plus, "ZoomInButton"},
                                                   {Qt::Key_Equal, "ZoomInButton"},
                                                   {Qt::Key_Minus, "ZoomOutButton"},
                                                   {Qt::Key_9, "FitToPaneButton"},
                                                   {Qt::Key_E, "PopupOpenButton"},
                                                   {Qt::Key_R, "RotateRight"},
                                                   {Qt::Key_Right, "RotateRight"},
                                                   {Qt::Key_L, "RotateLeft"},
                                                   {Qt::Key_Left, "RotateLeft"},
                                                   {Qt::Key_M, "Mirror"},
                                                   {Qt::Key_I, "Flip"},
                                                   {Qt::Key_O, "Redraw"},
                                                   {Qt::Key_X, ""}};
    for (const auto& [key, command] : picture)
        EXPECT_EQ(after(c.Picture1, key), command) << QKeySequence(key).toString().toStdString();
    EXPECT_EQ(after(c.Picture1, Qt::Key_T), "");
    EXPECT_TRUE(c.NotesBox->hasFocus());
    // The video pane has a map of its own, with or without a picture, the text pane one key.
    d.state.ImageLoaded = false;
    EXPECT_EQ(after(c.Picture1, Qt::Key_F2), "");
    EXPECT_EQ(after(c.Picture2, Qt::Key_Insert), "RenameButton");
    EXPECT_EQ(after(c.Picture2, Qt::Key_Delete), "DeleteButton");
    EXPECT_EQ(after(c.LogText, Qt::Key_F2), "RenameButton");
    for (const int key : {Qt::Key_Comma, Qt::Key_Period, Qt::Key_R, Qt::Key_F2})
        EXPECT_EQ(after(c.Picture2, key), "");
    d.Type(c.Picture2, Qt::Key_End);
    EXPECT_EQ(d.Row(), 9);
    d.Type(c.LogText, Qt::Key_Comma);
    EXPECT_EQ(d.Row(), 0);
}

TEST(PaneKeys, HalvesOfThePaneStep) {
    KeyDesk d;
    const auto click = [&](int x) {
        QTest::mouseClick(d.controls.Picture1, Qt::LeftButton, {}, QPoint(x, 50));
        return d.Row();
    };
    EXPECT_EQ(click(101), 1);
    EXPECT_EQ(click(100), 0); // the middle belongs to the left
    QTest::mouseRelease(d.controls.Picture1, Qt::LeftButton, {}, QPoint(150, 50));
    EXPECT_EQ(d.Row(), 0); // no press here
    QTest::mouseClick(d.controls.Picture1, Qt::RightButton, {}, QPoint(150, 50));
    EXPECT_TRUE(d.controls.PopupPic->isVisible());
    d.controls.PopupPic->close();
    d.state.ImageLoaded = false;
    EXPECT_EQ(click(150), 0);
}

TEST(PaneMouse, TheWheelStepsANotchAFileAndZoomsWithCtrl) {
    KeyDesk d;
    QWidget* pane = d.controls.Picture1;
    const auto turn = [&](int delta, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QWheelEvent event(QPointF(150, 20), pane->mapToGlobal(QPointF(150, 20)), {}, {0, delta}, {},
                          with, Qt::NoScrollPhase, false);
        QApplication::sendEvent(pane, &event);
        return d.Row();
    };
    d.state.ImageLoaded = false; // what cannot be read is passed over, too
    EXPECT_EQ(turn(-120), 1);
    EXPECT_EQ(turn(-360), 4);
    EXPECT_EQ(turn(120), 3);
    for (int i = 0; i < 3; ++i) turn(-30); // of a touchpad
    EXPECT_EQ(d.Row(), 3);
    EXPECT_EQ(turn(-30), 4);
    EXPECT_FALSE(pane->hasFocus()) << "the keyboard stays where it is";
    d.calls.clear();
    turn(240, Qt::ControlModifier);
    turn(-120, Qt::ControlModifier);
    EXPECT_EQ(d.calls, (Calls{"zoom 2 150,20", "zoom -1 150,20"}));
    EXPECT_EQ(d.Row(), 4);
}

TEST(PaneMouse, ADragMovesWhatIsZoomedAndStepsNothing) {
    KeyDesk d;
    QWidget* pane = d.controls.Picture1;
    const int far = QApplication::startDragDistance();
    const auto drag = [&](Qt::MouseButton button, int way) {
        d.calls.clear();
        const auto send = [&](QEvent::Type type, int x, Qt::MouseButtons held) {
            QMouseEvent event(type, QPointF(x, 50), pane->mapToGlobal(QPointF(x, 50)),
                              type == QEvent::MouseMove ? Qt::NoButton : button, held, {});
            QApplication::sendEvent(pane, &event);
        };
        send(QEvent::MouseButtonPress, 120, button);
        send(QEvent::MouseMove, 120 + way, button);
        send(QEvent::MouseMove, 120 + way + 3, button);
        send(QEvent::MouseButtonRelease, 120 + way + 3, {});
        Calls pans;
        for (const std::string& call : d.calls)
            if (call.starts_with("pan")) pans.push_back(call);
        return pans;
    };
    EXPECT_EQ(drag(Qt::LeftButton, far), Calls{});
    EXPECT_EQ(d.Row(), 1) << "unzoomed it is a click";
    d.display.zoomed = true;
    EXPECT_EQ(drag(Qt::LeftButton, far), (Calls{"pan " + std::to_string(far) + ",0", "pan 3,0"}));
    EXPECT_EQ(d.Row(), 1);
    EXPECT_EQ(drag(Qt::LeftButton, far - 4), Calls{});
    EXPECT_EQ(d.Row(), 2) << "too short";
    EXPECT_EQ(drag(Qt::RightButton, far), Calls{});
    EXPECT_TRUE(d.controls.PopupPic->isVisible());
    d.controls.PopupPic->close();
}

TEST(PaneKeys, TheMarkerFollowsTheFocus) {
    KeyDesk d;
    const MainControls& c = d.controls;
    const auto marked = [&](FileKind kind, QFocusEvent::Type type) {
        d.state.Kind = kind;
        QFocusEvent event(type);
        QApplication::sendEvent(c.Picture1, &event);
        return !c.LabelNavKeys->isHidden();
    };
    EXPECT_TRUE(marked(FileKind::Picture, QEvent::FocusIn));
    EXPECT_FALSE(marked(FileKind::Picture, QEvent::FocusOut));
    EXPECT_TRUE(marked(FileKind::Picture, QEvent::FocusIn));
    EXPECT_TRUE(marked(FileKind::Text, QEvent::FocusOut)); // the text pane has it
}

TEST(PaneKeys, F5InTheListReadsTheFolderAgain) {
    KeyDesk d;
    d.room.SelectRow(3);
    d.folder.Write("a_new.jpg", "x");
    d.calls.clear();
    d.Type(d.controls.FileListBox, Qt::Key_F5);
    EXPECT_EQ(d.controls.FileListBox->Count(), 11);
    EXPECT_EQ(d.Row(), 4); // the same file
    EXPECT_EQ(d.state.TextNumOf, "5 of 11");
    EXPECT_EQ(d.calls, (Calls{"SetSaveCommands"})); // and no click
    EXPECT_EQ(d.RowAfterKey(Qt::Key_N), 5);
}

TEST(PaneKeys, F5ReadsAgainInEveryPaneWhateverItShows) {
    KeyDesk d;
    const MainControls& c = d.controls;
    const std::pair<QWidget*, FileKind> panes[] = {{c.Picture1, FileKind::Picture},
                                                   {c.Picture2, FileKind::Clip},
                                                   {c.LogText, FileKind::Log},
                                                   {c.FolderTreeview1, FileKind::Text},
                                                   {c.List1, FileKind::Picture}};
    int count = d.controls.FileListBox->Count();
    for (const auto& [pane, kind] : panes) {
        d.state.Kind = kind;
        d.state.ImageLoaded = false; // it could not be read
        d.folder.Write("z" + std::to_string(count) + ".jpg", "x");
        d.calls.clear();
        d.Type(pane, Qt::Key_F5);
        EXPECT_EQ(d.controls.FileListBox->Count(), ++count) << pane->objectName().toStdString();
        EXPECT_EQ(d.calls.back(), "DisplayPicture") << pane->objectName().toStdString();
    }
    d.calls.clear();
    d.state.ImageLoaded = true;
    std::filesystem::last_write_time(d.folder.Path() + "/p00.jpg",
                                     std::filesystem::file_time_type::clock::now() -
                                         std::chrono::hours(30));
    d.Type(c.Picture1, Qt::Key_F5); // another program has written it
    EXPECT_EQ(d.calls.back(), "DisplayPicture");
}

TEST(PaneKeys, F5FindsAFolderThatCameBack) {
    KeyDesk d;
    const std::string later = d.folder.Path() + "/later";
    d.controls.FolderTreeview1->SetSelectedPath(later);
    d.Type(d.controls.Picture1, Qt::Key_F5);
    EXPECT_EQ(d.controls.FileListBox->Path(), d.folder.Path());
    std::filesystem::create_directory(later);
    d.folder.Write("later/n.jpg", "x");
    d.Type(d.controls.Picture1, Qt::Key_F5);
    EXPECT_EQ(d.controls.FileListBox->Path(), later);
    EXPECT_EQ(d.state.FileNameOnly, "n.jpg");
    std::filesystem::remove(later + "/n.jpg");
    d.folder.Write("later/o.jpg", "x");
    d.Type(d.controls.Picture1, Qt::Key_F5); // the file has gone: the first one
    EXPECT_EQ(d.state.FileNameOnly, "o.jpg");
}

TEST(PaneKeys, AMenuByKeyIsNoEnd) {
    KeyDesk d;
    d.controls.Exit->setEnabled(true);
    int ends = 0;
    QObject::connect(d.controls.Exit, &QAction::triggered, [&] { ++ends; });
    d.Type(d.controls.Picture1, Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(d.controls.PopupPic->isVisible());
    EXPECT_EQ(ends, 0);
    d.controls.PopupPic->close();
    d.controls.FileListBox->onMenu(-1, {});
    EXPECT_TRUE(d.controls.PopupList->isVisible());
    d.controls.PopupList->close();
}

} // namespace
} // namespace tarn::testing
