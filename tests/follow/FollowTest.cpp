// New files of a folder: when they are whole, what is told of them, and which frame is worse than
// those before it.
#include "FitsFiles.h"
#include "PictureFiles.h"

#include "follow/FolderFollower.h"
#include "follow/WorseFrame.h"
#include "platform/Files.h"
#include "support/TestFolder.h"

#include <QTest>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <map>

namespace tarn::testing {
namespace {

using Names = NewFiles::Names;

struct Disk {
    struct File {
        std::int64_t bytes = 0;
        std::int64_t seconds = 0;
        Finished finished = Finished::Unknown;
    };
    std::map<std::string, File> files;
    NewFiles watched;
    Names asked;

    NewFiles::News At(std::int64_t now) {
        Names names;
        for (const auto& [name, file] : files) names.push_back(name);
        asked.clear();
        return watched.Look(
            names, now,
            {[this](const std::string& name) -> std::optional<FileLook> {
                 asked.push_back(name);
                 FileLook look;
                 look.inode = 1;
                 look.bytes = files[name].bytes;
                 look.seconds = files[name].seconds;
                 return look;
             },
             [this](const std::string& name, const FileLook&) { return files[name].finished; }});
    }
};

Finished FinishedNow(const std::string& path) {
    return FinishedOf(path, MakeFiles()->Look(path).value_or(FileLook()));
}

JudgedFrame Frame(const std::string& name, double hfr, std::optional<std::int64_t> taken,
                  const char* series = "L") {
    JudgedFrame frame;
    frame.path = "/night/" + name;
    frame.isMeasured = true;
    frame.taken = taken;
    frame.measures.hfr = hfr;
    frame.measures.series = series;
    return frame;
}

} // namespace

TEST(NewFiles, AreWholeOnceTheyRestAndTheirEndIsThere) {
    Disk d;
    d.files = {{"old.fits", {10, 1, Finished::Yes}}};
    d.watched.Begin({"old.fits", "gone.fits"});
    EXPECT_EQ(d.At(0).gone, Names{"gone.fits"});
    EXPECT_EQ(d.asked, Names()); // of what is known nothing is asked
    EXPECT_FALSE(d.watched.Waits());
    d.files["new.fits"] = {5, 2, Finished::No};
    EXPECT_EQ(d.At(500).whole, Names());
    EXPECT_TRUE(d.watched.Waits());
    EXPECT_EQ(d.At(1000).whole, Names()); // at rest, and its end is missing
    d.files["new.fits"] = {10, 3, Finished::Yes};
    EXPECT_EQ(d.At(1500).whole, Names()); // seen so for the first time
    EXPECT_EQ(d.At(2000).whole, Names{"new.fits"});
    EXPECT_EQ(d.At(2500).whole, Names()); // told once
    EXPECT_FALSE(d.watched.Waits());
    // Another kind rests two seconds; what was broken off does not stay away for ever.
    d.files["raw.cr2"] = {7, 9, Finished::Unknown};
    d.files["cut.jpg"] = {7, 8, Finished::No};
    EXPECT_EQ(d.At(3000).whole, Names());
    EXPECT_EQ(d.At(4900).whole, Names());
    EXPECT_EQ(d.At(5000).whole, Names{"raw.cr2"});
    EXPECT_EQ(d.At(13000).whole, Names{"cut.jpg"});
    // The newest comes last, whatever its name.
    d.files["a.fits"] = {10, 30, Finished::Yes};
    d.files["b.fits"] = {10, 20, Finished::Yes};
    d.At(14000);
    EXPECT_EQ(d.At(14500).whole, (Names{"b.fits", "a.fits"}));
    // What goes and comes again is new again.
    d.files.erase("a.fits");
    EXPECT_EQ(d.At(15000).gone, Names{"a.fits"});
    d.files["a.fits"] = {10, 40, Finished::Yes};
    d.At(15500);
    EXPECT_EQ(d.At(16000).whole, Names{"a.fits"});
}

TEST(NewFiles, EmptyOnesWaitAndThoseThatGrewAreToldAgain) {
    Disk d;
    d.watched.Begin({});
    d.files["a.png"] = {0, 1};
    for (const int now : {0, 500, 30000}) EXPECT_EQ(d.At(now).whole, Names()) << now;
    EXPECT_FALSE(d.watched.Waits()); // it may stay empty
    d.files["a.png"] = {5, 2};
    EXPECT_EQ(d.At(31000).whole, Names());
    EXPECT_TRUE(d.watched.Waits());
    EXPECT_EQ(d.At(33000).whole, Names{"a.png"});
    EXPECT_FALSE(d.watched.Waits());
    // Its writer has paused.
    d.files["a.png"] = {9, 40};
    EXPECT_EQ(d.At(40000).whole, Names());
    EXPECT_TRUE(d.watched.Waits());
    EXPECT_EQ(d.At(42000).whole, Names{"a.png"});
    // Another one who writes it over is no writer of new files; after a while nobody is.
    d.files["a.png"] = {9, 50};
    EXPECT_EQ(d.At(50000).whole, Names());
    EXPECT_EQ(d.At(53000).whole, Names());
    EXPECT_EQ(d.At(103000).whole, Names());
    d.files["a.png"] = {12, 110};
    EXPECT_EQ(d.At(110000).whole, Names());
    EXPECT_EQ(d.asked, Names());
    // One that goes while it grows is gone.
    d.files["b.png"] = {5, 1};
    d.At(111000);
    EXPECT_EQ(d.At(113000).whole, Names{"b.png"});
    d.files["b.png"] = {6, 2};
    d.At(114000);
    d.files.erase("b.png");
    EXPECT_EQ(d.At(114500).gone, Names{"b.png"});
    EXPECT_FALSE(d.watched.Waits());
}

TEST(FinishedFile, FitsAndJpegTellTheirEndAtEveryCut) {
    TestFolder folder;
    const std::string fits = FitsBytes(16, {40, 30, 3}, [](auto i) { return double(i); });
    const std::size_t data = 2880 + 40 * 30 * 3 * 2; // what follows is padding
    for (std::size_t cut = 16; cut <= fits.size(); cut += 64)
        ASSERT_EQ(FinishedNow(folder.Write("a.fits", fits.substr(0, cut))),
                  cut >= data ? Finished::Yes : Finished::No)
            << cut;
    // A second part that is not all there.
    EXPECT_EQ(FinishedNow(folder.Write("a.fits", fits + fits)), Finished::Yes);
    EXPECT_EQ(FinishedNow(folder.Write("a.fits", fits + fits.substr(0, 5000))), Finished::No);
    const std::string jpeg = JpegBytes(TellTale(60, 40));
    for (std::size_t cut = 4; cut < jpeg.size(); ++cut)
        ASSERT_EQ(FinishedNow(folder.Write("a.jpg", jpeg.substr(0, cut))), Finished::No) << cut;
    EXPECT_EQ(FinishedNow(folder.Write("a.jpg", jpeg)), Finished::Yes);
    EXPECT_EQ(FinishedNow(folder.Write("a.jpg", jpeg + "the camera's own")), Finished::Yes);
    EXPECT_EQ(FinishedNow(folder.Write("a.cr2", "II*")), Finished::Unknown);
    EXPECT_EQ(FinishedNow(folder.Write("none.fits", "")), Finished::Unknown);
    EXPECT_EQ(FinishedNow(folder.Path() + "/gone"), Finished::Unknown);
    // It has been written since it was looked at.
    const std::string path = folder.Write("b.jpg", jpeg.substr(0, 100));
    const FileLook look = MakeFiles()->Look(path).value_or(FileLook());
    folder.Write("b.jpg", jpeg);
    EXPECT_EQ(FinishedOf(path, look), Finished::No);
    // Lengths of nonsense end nothing and overflow nothing.
    std::string mad = FitsBytes(16, {40, 30, 3}, [](auto) { return 0.0; });
    for (const char* word : {"NAXIS1  =", "NAXIS2  =", "NAXIS3  ="})
        mad.replace(mad.find(word) + 10, 20, "          2147483647");
    EXPECT_EQ(FinishedNow(folder.Write("mad.fits", mad)), Finished::No);
}

TEST(WorseFrame, IsToldByTheLastTwentyOfItsSeries) {
    std::vector<JudgedFrame> frames;
    for (int i = 0; i < 30; ++i)
        frames.push_back(Frame("a" + std::to_string(i), i < 10 ? 9 : 1.5 + 0.02 * (i % 5), i));
    for (int i = 0; i < 9; ++i) frames.push_back(Frame("b" + std::to_string(i), 4, i, "Ha"));
    std::vector<const JudgedFrame*> others;
    for (const JudgedFrame& frame : frames) others.push_back(&frame);
    const auto worse = UsualWhereWorse(Frame("new", 2.0, 40), others);
    ASSERT_TRUE(worse); // the soft ones lie further back
    EXPECT_NEAR(*worse, 1.54, 1e-9);
    EXPECT_EQ(WorseSaid(Frame("new.fits", 2.0, 40), *worse),
              "'new.fits' is worse than the frames before it: HFR 2.00, theirs 1.54");
    EXPECT_FALSE(UsualWhereWorse(Frame("new", 1.62, 40), others));
    EXPECT_FALSE(UsualWhereWorse(Frame("new", 1.0, 40), others));
    EXPECT_FALSE(UsualWhereWorse(Frame("new", 4.1, 40, "Ha"), others));
    EXPECT_TRUE(UsualWhereWorse(Frame("new", 5, 40, "Ha"), others));  // though all are alike
    EXPECT_FALSE(UsualWhereWorse(Frame("new", 50, 4, "Ha"), others)); // too few before it
    EXPECT_FALSE(UsualWhereWorse(Frame("new", kNotMeasured, 40), others));
}

TEST(FolderFollower, TellsOfWholeFilesAndOfThoseThatWent) {
    TestFolder folder;
    folder.Write("known.jpg", "known");
    folder.Write("goes.jpg", "goes");
    const auto files = MakeFiles();
    std::atomic<int> told = 0;
    FolderFollower follower(*files, [&] { ++told; });
    follower.Follow(folder.Path(), {"known.jpg", "goes.jpg"});
    const std::string fits = FitsBytes(16, {40, 30}, [](auto i) { return double(i); });
    folder.Write("new.fits", fits.substr(0, 3000));
    follower.Wake();
    QTest::qWait(1200);
    EXPECT_FALSE(follower.Take()); // half of it
    folder.Write("new.fits", fits);
    std::filesystem::remove(folder.Path() + "/goes.jpg");
    Names whole;
    Names gone;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            if (auto news = follower.Take()) {
                EXPECT_EQ(news->folder, folder.Path());
                whole.insert(whole.end(), news->whole.begin(), news->whole.end());
                gone.insert(gone.end(), news->gone.begin(), news->gone.end());
            }
            return !whole.empty() && !gone.empty();
        },
        8000));
    EXPECT_EQ(whole, Names{"new.fits"});
    EXPECT_EQ(gone, Names{"goes.jpg"});
    EXPECT_GT(told, 0);
    // None any more, and what is new in the next folder.
    TestFolder next;
    follower.Follow({}, {});
    folder.Write("later.jpg", JpegBytes(TellTale(9, 9)));
    QTest::qWait(1200);
    EXPECT_FALSE(follower.Take());
    next.Write("n.jpg", JpegBytes(TellTale(9, 9)));
    follower.Follow(next.Path(), {});
    std::optional<FolderFollower::News> news;
    EXPECT_TRUE(QTest::qWaitFor([&] { return (news = follower.Take()).has_value(); }, 8000));
    ASSERT_TRUE(news);
    EXPECT_EQ(news->whole, Names{"n.jpg"});
}

} // namespace tarn::testing
