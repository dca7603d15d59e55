// The window "Night" on a folder of frames, used by mouse and keys; circles, corners and bursts.
#include "FilesDesk.h"
#include "MadeNight.h"

#include "widgets/MeasureGraph.h"

#include <QComboBox>
#include <QItemSelectionModel>
#include <QMenu>
#include <QTableView>

#include <cmath>
#include <map>
#include <set>

namespace tarn::testing {
namespace {

using NameSet = std::set<std::string>;

struct NightDesk : FilesDesk {
    NightDesk() : FilesDesk(std::vector<std::string>()) {}

    void Add(const std::string& name, const MadeFrame& frame) {
        folder.Write(name, FrameBytes(frame, 400, 300, unsigned(name[1])));
    }
    // Twelve frames of L, of which the last two are soft, and two of Ha; a dark and a broken file.
    void AddNight() {
        for (int i = 0; i < 12; ++i) {
            const std::string at = (i < 10 ? "0" : "") + std::to_string(i);
            Add("L" + at + ".fits",
                {.fwhm = i < 10 ? 3 + 0.02 * i : 5.5, .taken = "2024-11-05T20:" + at + ":00"});
        }
        for (const char* name : {"a.fits", "b.fits"})
            Add(name, {.fwhm = 6, .filter = "Ha", .exposure = "600"});
        Add("dark.fits", {.type = "Dark Frame", .stars = 0});
        folder.Write("broken.fits", FrameBytes({}, 400, 300).substr(0, 7000));
    }
    void OpenNight() {
        Start(folder.Path() + "/L00.fits");
        house.window.show();
        Key(Qt::Key_G);
        ASSERT_TRUE(Up("frmNight"));
        Settle();
    }
    // All is measured and judged.
    void Settle() {
        auto* worst = Button("NightWorstButton");
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                return worst->isEnabled() &&
                       !In<QWidget>("frmNight", "NightProgress")->isVisible() &&
                       house.night.AllMeasured();
            },
            60000));
    }
    QPushButton* Button(const char* name) const { return In<QPushButton>("frmNight", name); }
    QTableView* Table() const { return In<QTableView>("frmNight", "NightTable"); }
    MeasureGraph* Graph() const {
        return dynamic_cast<MeasureGraph*>(In<QWidget>("frmNight", "NightGraph"));
    }
    std::string Label(const char* name) const {
        return In<QLabel>("frmNight", name)->text().toStdString();
    }
    int ColumnNamed(const std::string& title) const {
        const auto* model = Table()->model();
        for (int i = 0; i < model->columnCount(); ++i)
            if (model->headerData(i, Qt::Horizontal).toString().toStdString() == title) return i;
        ADD_FAILURE() << title;
        return 0;
    }
    int RowNamed(const std::string& name) const {
        const auto* model = Table()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            if (model->index(row, 0).data().toString().toStdString() == name) return row;
        ADD_FAILURE() << name;
        return 0;
    }
    std::string Cell(const std::string& name, const std::string& title) const {
        return Table()
            ->model()
            ->index(RowNamed(name), ColumnNamed(title))
            .data()
            .toString()
            .toStdString();
    }
    NameSet Chosen() const {
        NameSet names;
        for (const QModelIndex& row : Table()->selectionModel()->selectedRows())
            names.insert(row.data().toString().toStdString());
        return names;
    }
    NameSet Rejected() {
        NameSet names;
        for (int row = 0; row < c.FileListBox->Count(); ++row) {
            const std::string& name = c.FileListBox->Text(row);
            if (house.marks.MarkOf(At(name)).value_or(Mark()).decision == Decision::Reject)
                names.insert(name);
        }
        return names;
    }
    void Click(const std::string& name) {
        const QModelIndex cell = Table()->model()->index(RowNamed(name), 0);
        Table()->scrollTo(cell);
        QTest::mouseClick(Table()->viewport(), Qt::LeftButton, {},
                          Table()->visualRect(cell).center());
    }
};

TEST(Night, FramesAreMeasuredJudgedAndLeftOutWithTheReason) {
    NightDesk d;
    d.AddNight();
    d.OpenNight();
    EXPECT_NEAR(std::stod(d.Cell("L00.fits", "HFR")), 1.5, 0.1);
    EXPECT_NEAR(std::stod(d.Cell("L11.fits", "FWHM")), 5.5, 0.3);
    EXPECT_EQ(d.Cell("a.fits", "Filter"), "Ha");
    EXPECT_EQ(d.Cell("a.fits", "Exposure"), "600 s");
    EXPECT_EQ(d.Cell("L03.fits", "Time"), "11-05 20:03:00");
    EXPECT_LT(std::stod(d.Cell("L10.fits", "Score")), std::stod(d.Cell("L00.fits", "Score")));
    EXPECT_GT(std::stod(d.Cell("a.fits", "Score")), 50); // soft, but as its series is
    EXPECT_EQ(d.Cell("dark.fits", "Remark"), "a dark frame");
    EXPECT_EQ(d.Cell("dark.fits", "HFR"), "");
    EXPECT_EQ(d.Cell("broken.fits", "Remark"), "The file ends too early");
    EXPECT_EQ(d.Label("NightSummary"),
              "15 of 16 measured; not judged: 1 \u00D7 a dark frame; could not be measured: 1 "
              "\u00D7 The file ends too early");
}

TEST(Night, PictureFollowsTheTableAndTheTableThePicture) {
    NightDesk d;
    d.AddNight();
    d.OpenNight();
    d.Click("L05.fits");
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Current() == "L05.fits"; }));
    QTest::keyClick(d.Table(), Qt::Key_Down);
    EXPECT_TRUE(QTest::qWaitFor([&] { return d.Current() == "L06.fits"; }));
    d.GoTo("L02.fits");
    EXPECT_EQ(d.Chosen(), NameSet{"L02.fits"});
    const QPointF point = d.Graph()->PlaceOf(d.Graph()->PointAt(d.Graph()->PlaceOf(0, 0)), 0);
    QTest::mouseClick(d.Graph(), Qt::LeftButton, {}, point.toPoint());
    EXPECT_EQ(d.Chosen(), NameSet{d.Current()});
    EXPECT_NE(d.Current(), "L02.fits");
    d.Graph()->setFocus();
    const std::string before = d.Current();
    QTest::keyClick(d.Graph(), Qt::Key_Right);
    EXPECT_NE(d.Current(), before);
}

TEST(Night, WhatIsWorseThanALineIsRejectedAndTakenBack) {
    NightDesk d;
    d.AddNight();
    d.OpenNight();
    EXPECT_TRUE(d.Button("NightRejectButton")->isEnabled()); // the one that is shown
    MeasureGraph& graph = *d.Graph();
    // From the empty right edge of the plot down to between the sharp and the soft ones.
    int limit = graph.height();
    while (limit > 0 && graph.LimitAt(limit) < 2.2) --limit;
    const QPoint start(graph.width() - 40, limit - 20);
    ASSERT_LT(graph.PointAt(start), 0);
    QTest::mousePress(&graph, Qt::LeftButton, {}, start);
    QTest::mouseMove(&graph, QPoint(start.x(), limit - 8));
    QTest::mouseMove(&graph, QPoint(start.x(), limit));
    QTest::mouseRelease(&graph, Qt::LeftButton, {}, QPoint(start.x(), limit));
    // All series are under one line.
    EXPECT_EQ(d.Chosen(), (NameSet{"L10.fits", "L11.fits", "a.fits", "b.fits"}));
    EXPECT_EQ(d.Label("NightSaid").substr(0, 27), "4 frames are worse than HFR");
    EXPECT_EQ(d.Current(), "L00.fits"); // no picture was stepped to
    EXPECT_EQ(d.Button("NightRejectButton")->text().toStdString(), "&Reject 4 frames");
    d.Button("NightRejectButton")->click();
    EXPECT_EQ(d.Rejected(), (NameSet{"L10.fits", "L11.fits", "a.fits", "b.fits"}));
    EXPECT_EQ(d.Cell("L10.fits", "Mark"), "Rejected");
    EXPECT_FALSE(d.Button("NightRejectButton")->isEnabled());
    QTest::keyClick(d.Up("frmNight"), Qt::Key_Z, Qt::ControlModifier);
    (void)QTest::qWaitFor([&] { return d.Rejected().empty(); }); // their sidecars are read again
    EXPECT_EQ(d.Rejected(), NameSet());
}

TEST(Night, WorstTenthAndSigmasAreOfEachSeries) {
    NightDesk d;
    d.AddNight();
    d.OpenNight();
    d.Button("NightWorstButton")->click();
    EXPECT_EQ(d.Chosen().size(), 1U); // of twelve; two are too few
    EXPECT_EQ(d.Label("NightSaid"), "1 frame is the worst tenth by HFR");
    d.Button("NightSigmaButton")->click();
    EXPECT_EQ(d.Chosen(), (NameSet{"L10.fits", "L11.fits"}));
    EXPECT_EQ(d.Label("NightSaid"), "2 frames are worse than 3 sigma by HFR");
    QTest::keyClick(d.Table(), Qt::Key_J); // not a name that is searched for
    EXPECT_EQ(d.Rejected(), (NameSet{"L10.fits", "L11.fits"}));
}

TEST(Night, ColumnsMeasuresAndPlaceAreKept) {
    NightDesk d;
    d.AddNight();
    d.OpenNight();
    auto* menu = d.In<QMenu>("frmNight", "NightColumnsMenu");
    menu->findChild<QAction*>("NightColumn_exposure")->trigger();
    menu->findChild<QAction*>("NightColumn_noise")->trigger();
    EXPECT_TRUE(d.Table()->isColumnHidden(d.ColumnNamed("Exposure")));
    EXPECT_FALSE(d.Table()->isColumnHidden(d.ColumnNamed("Noise")));
    auto* box = d.In<QComboBox>("frmNight", "NightMeasureCombo");
    box->setCurrentIndex(box->findText("Score"));
    emit box->activated(box->currentIndex());
    d.Up("frmNight")->resize(900, 500);
    QCoreApplication::processEvents();
    QTest::keyClick(d.Up("frmNight"), Qt::Key_Escape);
    EXPECT_FALSE(d.Up("frmNight"));
    d.c.NightButton->trigger();
    EXPECT_EQ(d.Table()->model()->rowCount(), 16);
    d.house.night.BreakOff(); // the end of the program finds it up
    EXPECT_EQ(d.Table()->model()->rowCount(), 0);
    d.Up("frmNight")->close();
    d.c.SaveSettingsButton->trigger();
    EXPECT_EQ(d.settings->Read("night_columns", ""),
              "name,time,filter,stars,hfr,fwhm,eccentricity,background,noise,transparency,score,"
              "mark,remark");
    EXPECT_EQ(d.settings->Read("night_measure", ""), "score");
    EXPECT_EQ(d.settings->Read("night_width", ""), std::to_string(900 * 15));
}

TEST(Night, AnEmptyFolderAndACancelAreTold) {
    NightDesk d;
    d.Start();
    d.c.NightButton->trigger();
    EXPECT_EQ(d.Label("NightSummary"), "This folder lists no pictures");
    EXPECT_FALSE(d.Button("NightWorstButton")->isEnabled());
    EXPECT_FALSE(d.Button("NightRejectButton")->isEnabled());
    d.AddNight();
    d.house.Open(d.At("L00.fits"));
    d.Button("NightCancelButton")->click();
    EXPECT_EQ(d.Button("NightCancelButton")->text().toStdString(), "&Continue");
    d.Button("NightCancelButton")->click();
    d.Settle();
}

TEST(Night, AFrameIsComparedWithTheBestOfItsSeries) {
    NightDesk d;
    d.AddNight();
    d.OpenNight();
    d.Click("L11.fits");
    std::vector<std::string> titles;
    d.events.onPump = [&] {
        if (!d.house.slides.Window() || !titles.empty()) return;
        for (const SlideLine& line : d.house.slides.Window()->Lines())
            titles.push_back(line.text.substr(0, 8));
        if (!titles.empty()) QTest::keyClick(d.house.slides.Window(), Qt::Key_Escape);
    };
    d.Button("NightCompareButton")->click();
    d.events.onPump = nullptr;
    ASSERT_EQ(titles.size(), 2U);
    double best = 0;
    for (int i = 0; i < 10; ++i)
        best = std::max(best, std::stod(d.Cell("L0" + std::to_string(i) + ".fits", "Score")));
    EXPECT_EQ(std::stod(d.Cell(titles[0], "Score")), best);
    EXPECT_EQ(titles[1], "L11.fits");
    EXPECT_EQ(d.Current(), "L11.fits");
    EXPECT_EQ(d.c.FileListBox->SelectedRows().size(), 1U);
}

// How many of the circles lie on something bright, of all.
std::pair<int, int> OnStars(const PictureBox& box) {
    int bright = 0;
    for (const SeenRing& ring : box.Rings()) {
        const QPoint at(int(ring.centre.x()), int(ring.centre.y()));
        bright += box.Picture().valid(at) && qGray(box.Picture().pixel(at)) > 150 ? 1 : 0;
    }
    return {bright, int(box.Rings().size())};
}

TEST(StarCircles, StandOnTheStarsOfTheOneToOneWindow) {
    NightDesk d;
    d.folder.Write("a.fits", FrameBytes({.stars = 150}, 1400, 1000));
    d.Start(d.At("a.fits"));
    d.Key(Qt::Key_0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !d.c.Picture1->Rings().empty(); }, 30000));
    d.Key(Qt::Key_R); // the window opens on the turned picture
    d.c.OneToOneButton->click();
    auto* view = d.In<PictureBox>("frmOnetoOne", "OnePicture2");
    ASSERT_TRUE(view);
    d.c.StarCirclesButton->trigger();
    EXPECT_EQ(view->Rings().size(), 0U);
    QTest::keyClick(view, Qt::Key_0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !view->Rings().empty(); }, 30000));
    const auto [bright, all] = OnStars(*view);
    EXPECT_GT(all, 20);
    EXPECT_GE(bright, all * 8 / 10); // some lie with their middle beyond the edge
}

TEST(StarCircles, StandOnTheStarsHoweverThePictureIsTurned) {
    NightDesk d;
    MadeFrame frame;
    frame.stars = 20;
    d.Add("a.fits", frame);
    d.Start(d.At("a.fits"));
    d.house.window.show();
    d.Key(Qt::Key_0);
    PictureBox& pane = *d.c.Picture1;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !pane.Rings().empty(); }, 30000));
    const auto expectOnStars = [&](const char* how) {
        const auto [bright, all] = OnStars(pane);
        EXPECT_GT(all, 10) << how;
        EXPECT_GE(bright, all * 9 / 10) << how;
    };
    expectOnStars("fitted");
    for (const auto& [key, how] : {std::pair(Qt::Key_R, "right"),
                                   {Qt::Key_M, "mirrored"},
                                   {Qt::Key_I, "flipped"},
                                   {Qt::Key_L, "left"}}) {
        d.Key(key);
        expectOnStars(how);
    }
    d.Key(Qt::Key_Plus);
    expectOnStars("zoomed");
    d.Key(Qt::Key_9);
    d.c.OneXcheck->setChecked(true);
    expectOnStars("cut");
    d.Key(Qt::Key_0);
    EXPECT_EQ(pane.Rings().size(), 0U);
}

TEST(Corners, ShowSizesWhereTheyAreSeenAndFollow) {
    NightDesk d;
    MadeFrame frame;
    frame.stars = 300;
    frame.soft = 1.2; // at the end of the last stored row, which is seen on top
    d.folder.Write("a.fits", FrameBytes(frame, 900, 900));
    d.folder.Write("b.fits", FrameBytes({.stars = 0}, 900, 900));
    d.Start(d.At("a.fits"));
    d.Key(Qt::Key_X);
    ASSERT_TRUE(d.Up("frmCorners"));
    const auto text = [&](int cut) {
        return d.In<QWidget>("frmCorners", ("CornerCut_" + std::to_string(cut)).c_str())
            ->accessibleDescription()
            .toStdString();
    };
    const auto size = [&](int cut) { return std::stod(text(cut).substr(4)); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return text(0).starts_with("HFR"); }, 30000));
    EXPECT_GT(size(2), 1.4 * size(6));
    d.c.MirrorButton->click();
    d.house.navigation.StepBy(1, {});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return d.In<QLabel>("frmCorners", "CornersLine")->text().startsWith("No stars"); },
        30000));
    EXPECT_EQ(text(2), "too few stars");
    QTest::keyClick(d.Up("frmCorners"), Qt::Key_Escape);
    EXPECT_FALSE(d.Up("frmCorners"));
}

TEST(Burst, TheSharpestOfEachIsKeptAndTakenBack) {
    NightDesk d;
    QImage sharp = TellTale(300, 200);
    const QImage soft = sharp.scaled(40, 30, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                            .scaled(300, 200, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    d.folder.Write("a.jpg", Dated("2024:05:01 10:00:00", soft));
    d.folder.Write("b.jpg", Dated("2024:05:01 10:00:01", sharp));
    d.folder.Write("c.jpg", Dated("2024:05:01 10:00:02", soft));
    d.folder.Write("d.jpg", Dated("2024:05:01 11:00:00", sharp)); // alone
    d.Start();
    d.c.BurstButton->trigger();
    EXPECT_EQ(d.Said(), "Sharpest of 1 burst kept, of 4 frames");
    const auto kept = [&] {
        NameSet names;
        for (const char* name : {"a.jpg", "b.jpg", "c.jpg", "d.jpg"})
            if (d.house.marks.MarkOf(d.At(name)).value_or(Mark()).decision == Decision::Keep)
                names.insert(name);
        return names;
    };
    EXPECT_EQ(kept(), NameSet{"b.jpg"});
    d.c.UndoButton->trigger();
    (void)QTest::qWaitFor([&] { return kept().empty(); }); // its sidecar is read again
    EXPECT_EQ(kept(), NameSet());
}

} // namespace
} // namespace tarn::testing
