// The main window in the user's hand: its panes, its size, its colours.
#include "AllWindows.h"

#include "widgets/PaneHandle.h"
#include "widgets/Themes.h"

#include <QMenuBar>
#include <QSplitter>

namespace tarn::testing {
namespace {

struct PanesDesk : AppDesk {
    frmMain& window = house.window;

    void Settle() {
        for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
    }
    // In a window of 1920 x 1080, how much of it the pane has.
    double Share() {
        window.resize(1920, 1080);
        Settle();
        return double(c.Picture1->width()) * c.Picture1->height() / (1920 * 1080);
    }
    QWidget& Handle(const char* name) { return *In<QWidget>("frmMain", name); }
    void Send(QWidget& to, QEvent::Type type, QPoint at) {
        QMouseEvent event(type, to.mapFromGlobal(at), at, Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(&to, &event);
    }
    void Drag(const char* name, QPoint by) {
        QWidget& handle = Handle(name);
        const QPoint from = handle.mapToGlobal(handle.rect().center());
        Send(handle, QEvent::MouseButtonPress, from);
        Send(handle, QEvent::MouseMove, from + by / 2);
        Send(handle, QEvent::MouseMove, from + by);
        Send(handle, QEvent::MouseButtonRelease, from + by);
        Settle();
    }
    void DoubleClick(const char* name) {
        QWidget& handle = Handle(name);
        Send(handle, QEvent::MouseButtonDblClick, handle.mapToGlobal(handle.rect().center()));
        Settle();
    }
    std::vector<QRect> Places() const {
        std::vector<QRect> places;
        for (const char* name : {"vbuSplitter", "Panes", "FrameExif", "FrameNotes"})
            places.push_back(In<QWidget>("frmMain", name)->geometry());
        return places;
    }
};

TEST(Panes, ThePictureHasMostOfTheWindowAndAllOfItByOneKey) {
    PanesDesk d;
    d.AddPicture("a.jpg", 3000, 2000);
    d.Start();
    EXPECT_GE(d.Share(), 0.55);
    const std::vector<QRect> before = d.Places();
    d.c.List1->setFocus();
    QTest::keyClick(&d.window, Qt::Key_F12);
    EXPECT_GT(d.Share(), 0.95);
    EXPECT_TRUE(d.c.Picture1->hasFocus());
    QTest::qWait(400);
    const QSize shown = d.c.Picture1->Picture().size();
    EXPECT_TRUE(shown.width() == d.s.PreviewWidth || shown.height() == d.s.PreviewHeight);
    QTest::keyClick(d.c.Picture1, Qt::Key_Escape);
    d.Settle();
    EXPECT_EQ(d.Places(), before);
    EXPECT_FALSE(d.c.PictureOnlyButton->isChecked());
    for (const char* key : {"F12", "F12"})
        QTest::keySequence(&d.window, QKeySequence(QString(key)));
    d.Settle();
    EXPECT_EQ(d.Places(), before);
    EXPECT_GT(d.window.menuBar()->height(), 10);
    EXPECT_TRUE(d.c.FileDateText->isVisible());
}

TEST(Panes, EachHandleSharesTheRoomOutAnewAndGoesBack) {
    PanesDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    d.Share();
    const std::vector<QRect> first = d.Places();
    struct Way {
        const char* handle;
        QPoint by;
        std::size_t grows; // of the places
    };
    for (const Way& way : {Way{"TreeHandle", {120, 0}, 0}, Way{"TreeHandle", {-40, 0}, 1},
                           Way{"StripHandle", {0, -60}, 3}, Way{"NotesHandle", {-200, 0}, 3},
                           Way{"NotesHandle", {100, 0}, 2}}) {
        d.Drag(way.handle, way.by);
        const QSize more = d.Places()[way.grows].size() - first[way.grows].size();
        EXPECT_EQ(QPoint(more.width(), more.height()).manhattanLength(), way.by.manhattanLength())
            << way.handle;
        d.DoubleClick(way.handle);
        EXPECT_EQ(d.Places(), first) << way.handle;
    }
    for (const QPoint& far : {QPoint(5000, 5000), QPoint(-5000, -5000)})
        for (const char* handle : {"TreeHandle", "StripHandle", "NotesHandle"}) {
            d.Drag(handle, far);
            for (const QRect& place : d.Places()) {
                EXPECT_GT(place.width(), 60) << handle;
                EXPECT_GT(place.height(), 40) << handle;
            }
        }
    auto* splitter = d.In<QSplitter>("frmMain", "vbuSplitter");
    d.window.SetPanes({});
    d.window.SetSplitterTop(2240);
    EXPECT_EQ(d.window.SplitterTop(), 2240);
    d.Send(*splitter->handle(1), QEvent::MouseButtonDblClick, QPoint());
    EXPECT_EQ(d.window.SplitterTop(), SnapSplitter(d.window.DesignSplitterTop()));
}

TEST(Panes, ADragReloadsThePictureOnceAndItsPlaceIsKept) {
    PanesDesk d;
    const std::string a = d.AddPicture("a.jpg", 3000, 600);
    d.Start();
    d.Share();
    QTest::qWait(400);
    const QSize before = d.c.Picture1->Picture().size();
    d.Drag("TreeHandle", QPoint(200, 0));
    EXPECT_EQ(d.c.Picture1->Picture().size(), before);
    QTest::qWait(400);
    EXPECT_EQ(d.c.Picture1->Picture().width(), d.s.PreviewWidth);
    const std::vector<QRect> dragged = d.Places();
    d.window.close();

    QuickPump events;
    House next(
        {d.files, *d.settings, events, d.dialogs, d.sound, d.desktop, *d.clipboard, d.printing});
    ASSERT_TRUE(next.Start(a, {}));
    next.window.resize(1920, 1080);
    d.Settle();
    EXPECT_EQ(next.window.findChild<QWidget*>(QStringLiteral("Panes"))->geometry(), dragged[1]);
}

TEST(Panes, AMaximisedWindowComesBackMaximised) {
    PanesDesk d;
    const std::string a = d.AddPicture("a.jpg", 3000, 600);
    d.Start();
    const QRect normal(d.window.pos() + QPoint(3, 4), d.window.size() + QSize(0, 30));
    d.window.setGeometry(normal);
    d.Settle();
    d.window.showMaximized();
    d.Settle();
    const QSize large = d.window.size();
    ASSERT_NE(large, normal.size());
    d.window.close();
    EXPECT_EQ(d.settings->Read("main_maximised", ""), "True");
    EXPECT_EQ(d.settings->Read("main_width", ""), std::to_string(large.width() * 15));

    QuickPump events;
    House next(
        {d.files, *d.settings, events, d.dialogs, d.sound, d.desktop, *d.clipboard, d.printing});
    ASSERT_TRUE(next.Start(a, {}));
    d.Settle();
    EXPECT_TRUE(next.window.isMaximized());
    EXPECT_EQ(next.window.size(), large);
    EXPECT_EQ(next.controls.Picture1->Picture().width(), next.state.PreviewWidth);
    next.window.showNormal();
    d.Settle();
    EXPECT_EQ(next.window.size(), normal.size());
}

TEST(Panes, AFrameShowsWhichOneHasTheKeyboard) {
    PanesDesk d;
    d.AddPicture("a.jpg");
    d.Start();
    auto& frame = d.Handle("FocusFrame");
    const auto framed = [&] {
        d.Settle();
        return frame.isVisible() ? frame.geometry() : QRect();
    };
    const auto around = [&](const QWidget* pane) {
        return QRect(pane->mapTo(frame.parentWidget(), QPoint()), pane->size());
    };
    EXPECT_EQ(framed(), around(d.c.Picture1));
    d.c.NotesBox->setFocus();
    EXPECT_EQ(framed(), around(d.c.NotesBox));
    d.window.resize(d.window.width() + 100, d.window.height() + 100);
    EXPECT_EQ(framed(), around(d.c.NotesBox));
    d.c.NextButton->setFocus(); // buttons show it themselves
    EXPECT_EQ(framed(), QRect());
}

// What shows pictures, pages and paper keeps their colours.
bool ShowsPictures(const QWidget& widget) {
    for (const char* of : {"tarn::PictureBox", "QTextBrowser"})
        if (widget.inherits(of)) return true;
    return widget.objectName() == QLatin1String("GalleryMiniature");
}

// The first pixel with more green or blue than the night allows.
std::string Glare(QWidget& window) {
    QImage image = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    QRegion seen(image.rect());
    for (const QWidget* each : window.findChildren<QWidget*>())
        if (ShowsPictures(*each) && each->isVisible())
            seen -= QRect(each->mapTo(&window, QPoint()), each->size());
    for (const QRect& part : seen)
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int x = part.left(); x <= part.right(); ++x)
                if (const QColor pixel(image.pixel(x, y)); pixel.green() > 40 || pixel.blue() > 40)
                    return pixel.name().toStdString() + " at " + std::to_string(x) + ", " +
                           std::to_string(y) + " in " +
                           (window.childAt(x, y) ? window.childAt(x, y)->objectName().toStdString()
                                                 : std::string());
    return {};
}

struct ThemeDesk : WindowsDesk {
    ~ThemeDesk() { ApplyTheme(Theme::Desktop); }
};

TEST(Themes, TheRedOneShowsNoGreenAndNoBlueInAnyWindow) {
    ThemeDesk d;
    d.settings->Write("theme", "2");
    d.Each([&](const std::string& name, QWidget& window) {
        if (name.rfind("frmSlideShow", 0) == 0 || name == "FrmPic") return; // pictures alone
        if (name == "frmMain-cut" || name == "frmPrintPreview") return;     // small ones, paper
        EXPECT_EQ(Glare(window), "") << name;
    });
}

TEST(Themes, AChoiceReachesWhatIsUpAndIsKept) {
    ThemeDesk d;
    d.Start();
    const QColor ground = d.house.window.palette().color(QPalette::Window);
    const auto shown = [&] {
        return QColor(d.house.window.grab().toImage().pixel(1, d.house.window.height() / 2));
    };
    const auto choose = [&](std::size_t theme) {
        d.c.ThemeButton[theme]->trigger();
        QCoreApplication::processEvents();
    };
    d.c.VersionButton->trigger();
    choose(2);
    EXPECT_LE(shown().green(), 40);
    EXPECT_EQ(Glare(*AppDesk::Up("frmAbout")), "");
    choose(1);
    EXPECT_LT(shown().lightness(), 80);
    EXPECT_EQ(shown().saturation(), 0);
    d.c.Exit->trigger();
    EXPECT_EQ(d.settings->Read("theme", ""), "1");
    choose(0);
    EXPECT_EQ(d.house.window.palette().color(QPalette::Window), ground);
}

} // namespace
} // namespace tarn::testing
