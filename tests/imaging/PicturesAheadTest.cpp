#include "PictureFiles.h"
#include "support/TestFolder.h"

#include "imaging/ImgX.h"
#include "imaging/PicturesAhead.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <filesystem>

using namespace tarn;
using namespace tarn::testing;

namespace {

constexpr QSize kBox(80, 60);
constexpr std::int64_t kPlenty = 1LL << 30;

class DecodeAhead : public ::testing::Test {
protected:
    std::string Write(const std::string& name, QSize size = {640, 480}) {
        return m_folder.Write(name, JpegBytes(TellTale(size.width(), size.height())));
    }
    // Decodes what is wished and nothing else.
    void Expect(const std::vector<PictureWish>& wishes) {
        m_ahead.Expect(wishes);
        m_ahead.WaitUntilDone();
    }
    bool Has(const std::string& path, QSize wanted = kBox) {
        return m_ahead.Take(path, wanted) != nullptr;
    }

    TestFolder m_folder;
    std::vector<std::string> WriteMany(int count) {
        std::vector<std::string> paths(static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < paths.size(); ++i) paths[i] = Write(std::to_string(i) + ".jpg");
        return paths;
    }

    PicturesAhead m_ahead{kPlenty};
};

} // namespace

TEST_F(DecodeAhead, GivesWhatWasWishedAtTheSizeWished) {
    const std::string a = Write("a.jpg");
    const std::string b = Write("b.jpg");
    Expect({{a, kBox, {}}, {b, {}, {}}});
    EXPECT_FALSE(Has(a, {320, 240})); // decoded for a smaller box
    EXPECT_TRUE(Has(b, {}));
    EXPECT_TRUE(Has(b, kBox)); // all pixels serve every box
    EXPECT_FALSE(Has(Write("c.jpg")));

    std::string error;
    const auto small = m_ahead.Take(a, kBox);
    ASSERT_TRUE(small);
    EXPECT_EQ(small->Decode(kBox, error).size(), kBox);
    EXPECT_EQ(Quarters(small->Decode({}, error)), "rgby"); // and the rest on demand
    EXPECT_EQ(small->Decode({}, error).size(), QSize(640, 480));
}

TEST_F(DecodeAhead, AFileThatChangedIsNotGiven) {
    const std::string changed = Write("changed.jpg");
    const std::string replaced = Write("replaced.jpg");
    const std::string gone = Write("gone.jpg");
    const std::string dated = Write("dated.jpg");
    const std::string kept = Write("kept.jpg");
    const std::vector<PictureWish> wishes{{changed, kBox, {}},
                                          {replaced, kBox, {}},
                                          {gone, kBox, {}},
                                          {dated, kBox, {}},
                                          {kept, kBox, {}}};
    Expect(wishes);
    Write("changed.jpg", {320, 240});
    std::filesystem::rename(Write("other.jpg"), replaced); // of the same length
    std::filesystem::remove(gone);
    for (const std::string& path : {dated, kept}) SetFileTime(path, 2004, 6, 22, 20, 15, 30);
    m_ahead.TimesWereSet(kept);
    EXPECT_FALSE(Has(changed));
    EXPECT_FALSE(Has(replaced));
    EXPECT_FALSE(Has(gone));
    EXPECT_FALSE(Has(dated));
    EXPECT_TRUE(Has(kept));

    // Wished once more they come anew.
    Expect(wishes);
    const auto anew = m_ahead.Take(changed, kBox);
    ASSERT_TRUE(anew);
    EXPECT_EQ(anew->Size(), QSize(320, 240));
    EXPECT_TRUE(Has(replaced));
    EXPECT_FALSE(Has(gone));
}

TEST_F(DecodeAhead, WhatTheFileSaysOfItselfComesAlong) {
    const std::string bytes = JpegBytes(TellTale(640, 480)) + std::string(kFileFront, 'x');
    const std::string a = m_folder.Write("a.jpg", bytes);
    const std::string small = m_folder.Write("b.png", PictureBytes(TellTale(8, 6), "PNG"));
    Expect({{a, kBox, {}}, {small, kBox, {}}});
    const auto source = m_ahead.Take(a, kBox);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->Facts()->front, bytes.substr(0, kFileFront));
    EXPECT_EQ(source->Facts()->header.size, QSize(640, 480));
    EXPECT_EQ(source->Facts()->look, PictureLoader::LookAt(a));
    SetFileTime(a, 2004, 6, 22, 20, 15, 30);
    m_ahead.TimesWereSet(a);
    EXPECT_EQ(source->Facts()->look, PictureLoader::LookAt(a));
    const auto other = m_ahead.Take(small, kBox);
    ASSERT_TRUE(other);
    EXPECT_EQ(other->Facts()->front, PictureBytes(TellTale(8, 6), "PNG"));
}

TEST_F(DecodeAhead, WhatIsAwaitedComesFirstAndItsFaultIsKnownWithoutReading) {
    using namespace std::chrono_literals;
    const std::string broken = m_folder.Write("broken.jpg", "\xFF\xD8 no picture");
    const std::string whole = Write("whole.jpg");
    std::atomic<int> called = 0;
    const auto call = [&] { ++called; };
    const auto lookAt = [](const std::string& path) { return PictureLoader::LookAt(path); };
    EXPECT_FALSE(m_ahead.Await(broken, kBox, lookAt(broken), 0ms, call));
    m_ahead.WaitUntilDone();
    EXPECT_EQ(called, 1);
    EXPECT_TRUE(m_ahead.Await(broken, kBox, lookAt(broken), 0ms, call));
    EXPECT_FALSE(Has(broken));
    EXPECT_EQ(m_ahead.TakeRefusal(broken, FileLook()), std::nullopt); // of another file
    EXPECT_NE(m_ahead.TakeRefusal(broken, lookAt(broken)).value_or(""), "");
    EXPECT_EQ(m_ahead.TakeRefusal(broken, lookAt(broken)), std::nullopt);

    EXPECT_FALSE(m_ahead.Await(whole, kBox, lookAt(whole), 0ms, call));
    m_ahead.Expect({}); // others wish for nothing
    m_ahead.WaitUntilDone();
    EXPECT_EQ(called, 2);
    EXPECT_TRUE(Has(whole));
}

TEST_F(DecodeAhead, AChangeIsNoticedByTheNextWishToo) {
    const std::string a = Write("a.jpg");
    Expect({{a, kBox, {}}});
    Write("a.jpg", {320, 240});
    Expect({{a, kBox, {}}});
    const auto source = m_ahead.Take(a, kBox);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->Size(), QSize(320, 240));
}

// What another picture needs: the reading at 1/8, and no more.
constexpr std::int64_t kReduced = 80LL * 60 * 4;

TEST_F(DecodeAhead, TurningRoundKeepsThePictureShownAndDropsTheRest) {
    const std::vector<std::string> path = WriteMany(6);
    ImgX shown;
    EXPECT_EQ(shown.LoadFile(path[2], kBox, m_ahead), ""); // cold, and kept
    Expect({{path[3], kBox, {}}, {path[4], kBox, {}}, {path[1], kBox, {}}});
    EXPECT_EQ(m_ahead.BytesHeld(), 4 * kReduced);
    EXPECT_EQ(shown.LoadFile(path[3], kBox, m_ahead), "");
    Expect({{path[2], kBox, {}}, {path[1], kBox, {}}, {path[4], kBox, {}}});
    EXPECT_EQ(m_ahead.BytesHeld(), 4 * kReduced);
    EXPECT_EQ(shown.LoadFile(path[2], kBox, m_ahead), "");
    Expect({{path[1], kBox, {}}});
    EXPECT_EQ(m_ahead.BytesHeld(), 2 * kReduced);
    EXPECT_TRUE(Has(path[1]));
    EXPECT_TRUE(Has(path[2]));
    EXPECT_FALSE(Has(path[3]));
    EXPECT_FALSE(Has(path[4]));

    // Wishes that are replaced at once leave nothing behind.
    for (int i = 0; i < 50; ++i) m_ahead.Expect({{path[i % 6], {}, {}}, {path[5], {}, {}}});
    m_ahead.Expect({});
    m_ahead.WaitUntilDone();
    Expect({});
    EXPECT_EQ(m_ahead.BytesHeld(), 0);
}

TEST_F(DecodeAhead, TheBudgetHoldsAndServesTheNearestFirst) {
    const std::vector<std::string> path = WriteMany(5);
    PicturesAhead ahead(2 * kReduced);
    const auto expect = [&](const std::array<std::size_t, 3>& rows) {
        std::vector<PictureWish> wishes(rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) wishes[i] = {path[rows[i]], kBox, {}};
        ahead.Expect(wishes);
        ahead.WaitUntilDone();
        EXPECT_EQ(ahead.BytesHeld(), 2 * kReduced);
    };
    expect({0, 1, 2});
    EXPECT_FALSE(ahead.Take(path[2], kBox));
    expect({3, 0, 1}); // the new one is nearer than the farthest at hand
    ASSERT_TRUE(ahead.Take(path[3], kBox));
    EXPECT_FALSE(ahead.Take(path[1], kBox));

    ahead.Expect({{path[4], {}, {}}}); // more than the budget for one alone
    ahead.WaitUntilDone();
    EXPECT_FALSE(ahead.Take(path[4], {}));
    EXPECT_LE(ahead.BytesHeld(), 2 * kReduced);
}

TEST_F(DecodeAhead, TakeWaitsForADecodeUnderWayAndLeavesBrokenFilesToTheCaller) {
    const std::string large = Write("large.jpg", {3000, 2000});
    const std::string broken = m_folder.Write("broken.jpg", "no picture");
    for (int i = 0; i < 20; ++i) {
        m_ahead.Expect({{broken, kBox, {}}, {large, {}, {}}});
        // Ready, in the making or not begun: the picture is the right one in any case.
        ImgX picture;
        EXPECT_EQ(picture.LoadFile(large, {}, m_ahead), "");
        EXPECT_EQ(Quarters(picture.FullPicture()), "rgby");
        EXPECT_NE(picture.LoadFile(broken, kBox, m_ahead), "");
        EXPECT_FALSE(picture.HasImage());
        m_ahead.Expect({});
    }
}

TEST_F(DecodeAhead, TheSizesThatWillBeShownArePrepared) {
    const std::string a = Write("a.jpg");
    const auto shown = [](QSize picture) {
        return std::vector<QSize>{picture / 9, picture / 10, picture * 2};
    };
    Expect({{a, kBox, shown}});
    const auto source = m_ahead.Take(a, kBox);
    ASSERT_TRUE(source);
    EXPECT_EQ(Quarters(source->Scaled({64, 48})), "rgby");
    EXPECT_TRUE(source->Scaled({1280, 960}).isNull());

    ImgX turned;
    EXPECT_EQ(turned.LoadFile(a, kBox, m_ahead), "");
    ImgX bright = turned;
    turned.Rotate(90);
    turned.Mirror(0);
    turned.Scale(48, 64);
    EXPECT_EQ(turned.SystemPicture().size(), QSize(48, 64));
    EXPECT_EQ(Quarters(turned.SystemPicture()), "rbgy");
    // The prepared copy knows nothing of brightness.
    bright.Brightness(100);
    bright.Scale(64, 48);
    EXPECT_EQ(bright.SystemPicture().pixel(10, 10), qRgb(255, 255, 255));
}

TEST_F(DecodeAhead, EndsWithWorkUnderWay) {
    const std::string large = Write("large.jpg", {3000, 2000});
    const std::string other = Write("other.jpg", {3000, 2000});
    std::shared_ptr<PictureSource> source;
    {
        PicturesAhead ahead(kPlenty);
        ahead.Expect({{large, kBox, {}}});
        ahead.WaitUntilDone();
        source = ahead.Take(large, kBox);
        ahead.Expect({{large, {}, {}}, {other, {}, {}}, {Write("third.jpg"), {}, {}}});
    }
    ASSERT_TRUE(source); // outlives it
    std::string error;
    EXPECT_EQ(Quarters(source->Decode({}, error)), "rgby");
}
