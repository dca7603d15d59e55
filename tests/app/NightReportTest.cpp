// The report of a night, the sites and the panel "Sky", used by mouse and keys.
#include "FilesDesk.h"
#include "FitsFiles.h"

#include <QComboBox>
#include <QTableWidget>

namespace tarn::testing {
namespace {

struct ReportDesk : FilesDesk {
    ReportDesk() : FilesDesk(std::vector<std::string>()) {
        for (const char* hour : {"21", "22"})
            folder.Write(std::string("f") + hour + ".fits",
                         NightSky(60, 40,
                                  {{"DATE-OBS", std::string("'2024-11-05T") + hour + ":00:00'"},
                                   {"EXPTIME", "60"},
                                   {"RA", "83.633"},
                                   {"DEC", "22.0145"},
                                   {"OBJECT", "'M 1'"}}));
    }
    std::vector<std::string> SkyRows() const {
        std::vector<std::string> rows;
        for (int row = 0; row < c.SkyList->count(); ++row)
            rows.push_back(c.SkyList->item(row)->text().toStdString());
        return rows;
    }
    bool AwaitRow(const std::string& row) const {
        return QTest::qWaitFor(
            [&] {
                const auto rows = SkyRows();
                return std::find(rows.begin(), rows.end(), row) != rows.end();
            },
            10000);
    }
    std::string Said() const {
        return In<QLabel>("frmNightReport", "ReportLabel")->text().toStdString();
    }
};

TEST(SkyPanel, FollowsThePictureOnDemand) {
    ReportDesk d;
    d.Start(d.At("f21.fits"));
    d.house.window.show();
    EXPECT_FALSE(d.c.SkyList->isVisible());
    d.Key(Qt::Key_W);
    EXPECT_TRUE(d.c.SkyList->isVisible());
    EXPECT_TRUE(d.AwaitRow("      Middle: 2024-11-05 21:00:30 UTC"));
    EXPECT_TRUE(d.AwaitRow("     Missing: no site"));
    d.Key(Qt::Key_N);
    EXPECT_TRUE(d.AwaitRow("      Middle: 2024-11-05 22:00:30 UTC"));
    d.Key(Qt::Key_W);
    EXPECT_FALSE(d.c.SkyList->isVisible());
    EXPECT_EQ(d.SkyRows(), std::vector<std::string>());
}

TEST(Sites, AreCheckedKeptAndUsed) {
    ReportDesk d;
    d.Start(d.At("f22.fits"));
    d.house.window.show();
    d.Key(Qt::Key_W);
    d.c.SitesButton->trigger();
    ASSERT_TRUE(d.Up("frmSites"));
    d.Press("frmSites", "SitesAddButton");
    auto* table = d.In<QTableWidget>("frmSites", "SitesTable");
    ASSERT_EQ(table->rowCount(), 1);
    const char* const cells[] = {"Garden", "148.1", "11 31 30", "520", "1"};
    for (int column = 0; column < 5; ++column)
        table->item(0, column)->setText(QString::fromLatin1(cells[column]));
    d.In<QComboBox>("frmSites", "SitesOtherwise")->setCurrentText(QStringLiteral("Garden"));
    d.Press("frmSites", "SitesKeepButton");
    EXPECT_EQ(d.In<QLabel>("frmSites", "SitesFault")->text().toStdString(),
              "Garden: the latitude is from -90 to 90 degrees");
    EXPECT_EQ(d.s.SkySites, "");
    table->item(0, 1)->setText(QStringLiteral("48.125"));
    d.Press("frmSites", "SitesKeepButton");
    EXPECT_FALSE(d.Up("frmSites"));
    EXPECT_EQ(d.s.SkySites, "Garden|48.125|11.525|520|60");
    EXPECT_EQ(d.s.SkySite, "Garden");
    EXPECT_TRUE(d.AwaitRow("        Site: 48.1250, 11.5250, 520 m"));
}

TEST(NightReport, IsSavedAndTakenBack) {
    ReportDesk d;
    d.Start(d.At("f21.fits"));
    d.house.window.show();
    d.house.marks.SetMarks({d.At("f21.fits")}, Decide(Decision::Keep));
    d.c.NightReportButton->trigger();
    ASSERT_TRUE(d.Up("frmNightReport"));
    d.In<QAbstractButton>("frmNightReport", "ReportGraphsCheck")->click();
    EXPECT_FALSE(d.s.ReportGraphs);
    d.Press("frmNightReport", "ReportPageButton", {d.At("report.html")});
    EXPECT_EQ(d.Said(), "Saved " + d.At("report.html") + ", 2 frames");
    const std::string page = BytesOf(d.At("report.html"));
    EXPECT_NE(page.find("<h1>Night of 2024-11-05</h1>"), std::string::npos);
    EXPECT_NE(page.find("kept: 1, 1 min; rejected: 0, 0 s"), std::string::npos);
    EXPECT_EQ(page.find("<svg"), std::string::npos);
    d.Press("frmNightReport", "ReportTableButton", {d.At("report.csv")});
    EXPECT_EQ(BytesOf(d.At("report.csv")),
              "target,filter,camera,exposure,frames,seconds,kept_frames,kept_seconds,first_utc,"
              "last_utc,error\n"
              "M 1,,,60,2,120,1,60,2024-11-05T21:00:30Z,2024-11-05T22:00:30Z,\n");
    d.Press("frmNightReport", "ReportPdfButton", {d.At("report.pdf")});
    EXPECT_EQ(BytesOf(d.At("report.pdf")).substr(0, 5), "%PDF-");
    d.c.UndoButton->trigger();
    EXPECT_EQ(BytesOf(d.At("report.pdf")), "(none)");
    d.Press("frmNightReport", "ReportAddButton", {d.At("gone")});
    d.Press("frmNightReport", "ReportPageButton", {d.At("report.html")});
    EXPECT_EQ(d.Said(), d.At("gone") + ": No such file or directory");
}

} // namespace
} // namespace tarn::testing
