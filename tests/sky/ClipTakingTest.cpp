// The best frames of clips as new clips and files, byte for byte those of their source; rating on a
// thread, kept and left.
#include "clips/MadeDiscs.h"
#include "clips/MadeSer.h"

#include "clips/SerFile.h"
#include "history/Changes.h"
#include "history/History.h"
#include "platform/Files.h"
#include "sky/clips/ClipRating.h"
#include "sky/clips/TakeFrames.h"
#include "sky/night/LateRating.h"
#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"
#include "support/Trees.h"

#include <QTest>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>

namespace tarn::testing {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::int64_t kMoment = 635613595230000000; // 2015-03-07 21:12:03
constexpr std::int64_t kSecond = 10'000'000;

struct StateFiles : ForwardingFiles {
    TestFolder state;
    std::string StateFolder() const override { return state.Path(); }
};

struct Taking {
    TestFolder folder;
    TestFolder target;
    StateFiles files;
    History history{files, {}};
    SerClip ser{.width = kDiscSide, .height = kDiscSide};
    std::string path;
    RatedClip rated;

    void Rate() {
        path = folder.Write("mars.ser", SerBytes(ser));
        rated = RateClip(path);
    }
    TakeOrder Order(const std::vector<std::size_t>& frames, bool asClip = true) const {
        TakeOrder order;
        order.clip = path;
        order.folder = target.Path();
        order.frames = frames;
        order.rated = &rated;
        order.asClip = asClip;
        return order;
    }
    std::vector<TakenFrame> Take(const TakeOrder& order, const TakeProgress& progress = {}) {
        Changes changes(history, "Take out");
        return TakeFrames(order, changes, progress);
    }
    std::string New() const { return target.Path() + "/mars_best.ser"; }
    static Bytes Frame(const std::string& clip, int number) {
        SerFile file;
        Bytes bytes;
        EXPECT_EQ(file.Open(clip), "");
        EXPECT_EQ(file.ReadStored(number, bytes), "");
        return bytes;
    }
};

struct Kind {
    int bits;
    int color;
    bool highByteFirst;
    bool hasTimes;
};

} // namespace

TEST(ClipTaking, NewClipsHaveTheFramesOfTheirSourceByteForByte) {
    for (const Kind& kind :
         {Kind{8, SerHeader::Mono, false, true}, Kind{16, SerHeader::Mono, true, true},
          Kind{12, SerHeader::Rggb, false, true}, Kind{16, SerHeader::Bgr, false, false},
          Kind{8, SerHeader::Rgb, false, true}}) {
        SCOPED_TRACE(kind.bits);
        SCOPED_TRACE(kind.color);
        Taking d;
        d.ser.bits = kind.bits;
        d.ser.color = kind.color;
        d.ser.highByteFirst = kind.highByteFirst;
        for (int i = 0; i < 6; ++i) {
            d.ser.frames.push_back(Disc(30 + i, 32, 1 + i % 3, (1 << kind.bits) - 8,
                                        kind.color >= SerHeader::Rgb ? 3 : 1));
            if (kind.hasTimes) d.ser.ticks.push_back(kMoment + i * kSecond);
        }
        d.Rate();
        ASSERT_EQ(d.rated.fault, "");
        const std::string source = BytesOf(d.path);
        const std::vector<std::size_t> chosen{3, 0, 4};
        const auto taken = d.Take(d.Order(chosen));
        ASSERT_EQ(taken.size(), 1U);
        EXPECT_EQ(taken[0].path, d.New());
        EXPECT_EQ(taken[0].error, "");
        for (std::size_t i = 0; i < chosen.size(); ++i)
            EXPECT_EQ(Taking::Frame(d.New(), int(i)), Taking::Frame(d.path, int(chosen[i])));
        // But for the count the header is that of the source.
        std::string header = source.substr(0, std::size_t(kSerHeaderBytes));
        header[38] = 3;
        EXPECT_EQ(BytesOf(d.New()).substr(0, header.size()), header);
        SerFile made;
        ASSERT_EQ(made.Open(d.New()), "");
        const auto times = kind.hasTimes ? std::vector<std::int64_t>{kMoment + 3 * kSecond, kMoment,
                                                                     kMoment + 4 * kSecond}
                                         : std::vector<std::int64_t>{};
        EXPECT_EQ(made.Stamps(), times);
        EXPECT_EQ(BytesOf(d.path), source);
        // One command, taken back and done again as a whole.
        EXPECT_TRUE(d.history.Undo([](std::size_t) { return true; }).done);
        EXPECT_EQ(ReadTree(d.target.Path()), Tree());
    }
}

TEST(ClipTaking, AlignedDiscsLieWhereTheSharpestHasIt) {
    constexpr int kCyym = 16;
    for (const int color : {int(SerHeader::Mono), int(SerHeader::Rggb), kCyym}) {
        SCOPED_TRACE(color);
        Taking d;
        d.ser.color = color;
        d.ser.bits = 16;
        d.ser.frames = {Disc(30.7, 36, 2, 60000), Disc(32, 32, 1, 60000)};
        d.Rate();
        TakeOrder order = d.Order({0, 1});
        order.align = true;
        EXPECT_EQ(d.Take(order)[0].error, "");
        EXPECT_EQ(Taking::Frame(d.New(), 1), Taking::Frame(d.path, 1));
        const Bytes moved = Taking::Frame(d.New(), 0);
        const Bytes source = Taking::Frame(d.path, 0);
        // By whole squares of a pattern of colours.
        const int right = color == SerHeader::Mono ? 1 : 2;
        for (int y = 0; y < kDiscSide; ++y)
            for (int x = 0; x < kDiscSide; ++x) {
                const int from = ((y + 4) * kDiscSide + x - right) * 2;
                const bool isBlack = y + 4 >= kDiscSide || x < right;
                for (int byte = 0; byte < 2; ++byte)
                    ASSERT_EQ(moved[std::size_t((y * kDiscSide + x) * 2 + byte)],
                              isBlack ? 0 : source[std::size_t(from + byte)])
                        << x << " " << y;
            }
    }
}

// Thousands of files of many megabytes would fill the history.
TEST(ClipTaking, NothingOfTheFilesIsKeptAndRedoHasThemFromTheWastebasket) {
    Taking d;
    for (int i = 0; i < 3; ++i) d.ser.frames.push_back(Disc(32, 32, 1 + i, 255));
    d.Rate();
    {
        Changes changes(d.history, "Take out");
        TakeFrames(d.Order({0, 1, 2}, false), changes);
        const std::vector<Step> done = changes.Done();
        ASSERT_EQ(done.size(), 3U);
        for (const Step& step : done) EXPECT_FALSE(step.newBytes) << step.from;
    }
    const Tree taken = ReadTree(d.target.Path());
    EXPECT_TRUE(d.history.Undo([](std::size_t) { return true; }).done);
    EXPECT_EQ(ReadTree(d.target.Path()), Tree());
    EXPECT_TRUE(d.history.Redo([](std::size_t) { return true; }).done);
    EXPECT_EQ(ReadTree(d.target.Path()), taken);
}

TEST(ClipTaking, TheFolderIsReadOnceForAllTargets) {
    Taking d;
    std::vector<std::string> targets;
    for (int i = 0; i < 50; ++i)
        targets.push_back(d.target.Path() + "/mars_" + std::to_string(i) + ".fits");
    const std::string upper = d.target.Write("MARS_7.fits", "");
    std::filesystem::create_directory(d.target.Path() + "/Mars_9.FITS");
    int readings = 0;
    std::string fault;
    d.files.onAsk = [&](const std::string& verb, const std::string&) {
        if (verb == "names") ++readings;
        return verb == "names" ? fault : std::string();
    };
    const auto check = [&] {
        const auto standing = StandingAt(targets, d.files);
        ASSERT_EQ(standing.size(), targets.size());
        for (std::size_t i = 0; i < standing.size(); ++i)
            EXPECT_EQ(standing[i], d.files.FindAnyCase(targets[i])) << targets[i];
        EXPECT_EQ(standing[7], upper);
    };
    check();
    EXPECT_EQ(readings, 1);
    fault = "Input/output error"; // then each is asked for by itself
    check();
}

TEST(ClipTaking, WhatIsBrokenOffOrFailsLeavesNothingHalf) {
    Taking d;
    for (int i = 0; i < 5; ++i) d.ser.frames.push_back(Disc(32, 32, 1 + i, 255));
    d.Rate();
    for (const bool asClip : {true, false}) {
        SCOPED_TRACE(asClip);
        d.Take(d.Order({0, 1, 2, 3}, asClip), [](std::size_t done) { return done < 2; });
        EXPECT_EQ(ReadTree(d.target.Path()), Tree());
        EXPECT_FALSE(d.history.NextToUndo());
    }
    // A frame that is not there.
    d.rated.frames.resize(9, d.rated.frames.front());
    EXPECT_EQ(d.Take(d.Order({1, 8}))[0].error, "frame 8: There is no such frame");
    EXPECT_EQ(ReadTree(d.target.Path()), Tree());
    const auto files = d.Take(d.Order({1, 8}, false));
    EXPECT_EQ(files[0].error, "");
    EXPECT_EQ(files[1].error, "frame 8: There is no such frame");
    // What stands there stays.
    const Tree before{{"mars_0001.fits", BytesOf(files[0].path)}, {"MARS_best.SER", "mine"}};
    d.target.Write("MARS_best.SER", "mine");
    EXPECT_EQ(d.Take(d.Order({0}))[0].error, "already exists");
    EXPECT_EQ(d.Take(d.Order({0}, false))[0].error, "already exists");
    EXPECT_EQ(ReadTree(d.target.Path()), before);
}

TEST(LateRating, LeavesAClipAtOnceAndKeepsWhatItHasRated) {
    TestFolder folder;
    SerClip ser{.width = kDiscSide, .height = kDiscSide};
    for (int i = 0; i < 40; ++i) ser.frames.push_back(Disc(32, 32, 1 + i % 5, 255));
    const std::string one = folder.Write("one.ser", SerBytes(ser));
    ser.frames.resize(3);
    const std::string two = folder.Write("two.ser", SerBytes(ser));
    std::atomic<int> told = 0;
    LateRating rating([&] { ++told; });
    std::vector<RatedFrame> frames;
    std::string path;
    const auto await = [&] {
        frames.clear();
        std::shared_ptr<const RatedClip> whole;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const auto news = rating.Take();
                if (!news) return false;
                path = news->path;
                frames.insert(frames.end(), news->frames.begin(), news->frames.end());
                whole = news->whole;
                return bool(whole);
            },
            20000));
        return whole;
    };
    rating.Ask(one);
    rating.Ask(two); // the first is not waited for
    const auto second = await();
    ASSERT_TRUE(second);
    EXPECT_EQ(path, two);
    EXPECT_EQ(frames.size(), 3U);
    EXPECT_GT(told, 0);
    rating.Ask(one);
    const auto first = await();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->frames.size(), 40U);
    EXPECT_EQ(BestFrames(first->frames, 1).front() % 5, 0U);
    // Kept: the same object; a file that is another by now is rated anew.
    rating.Ask(two);
    EXPECT_EQ(await(), second);
    ser.frames.resize(2);
    folder.Write("two.ser", SerBytes(ser));
    rating.Ask(two);
    EXPECT_EQ(await()->frames.size(), 2U);
    rating.Ask(folder.Path() + "/gone.ser");
    EXPECT_EQ(await()->fault, "No such file or directory");
    // Cancelled before the thread has come to it, or a moment later.
    ser.frames.resize(40, ser.frames.front());
    for (int i = 0; i < 400; ++i) ser.frames.push_back(ser.frames.front());
    for (const char* name : {"a.ser", "b.ser", "c.ser"}) {
        rating.Ask(folder.Write(name, SerBytes(ser)));
        rating.Cancel();
        const auto cancelled = await();
        ASSERT_TRUE(cancelled);
        EXPECT_EQ(cancelled->fault, "cancelled");
    }
}

} // namespace tarn::testing
