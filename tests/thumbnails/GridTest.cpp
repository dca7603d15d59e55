// The list as pictures: where they come from, and which rows are asked for.
#include "PictureFiles.h"
#include "clips/MadeDiscs.h"
#include "clips/MadeSer.h"
#include "support/RoomDesk.h"
#include "support/Trees.h"

#include "thumbnails/GridPictures.h"
#include "thumbnails/SharedCache.h"
#include "thumbnails/ThumbRoom.h"

#include <QPushButton>
#include <QStandardPaths>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>
#include <mutex>
#include <utility>

#include <sys/stat.h>

namespace tarn::testing {
namespace {

// The desktop's cache, that of the tests; empty at first.
struct CacheDesk {
    TestFolder pictures;
    std::string home =
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation).toStdString() +
        "/thumbnails";
    CacheDesk() { std::filesystem::remove_all(home); }
    ~CacheDesk() { std::filesystem::remove_all(home); }
    std::string Add(const std::string& name, const QImage& picture) const {
        return pictures.Write(name, JpegBytes(picture));
    }
    std::size_t Cached() const {
        std::error_code code;
        std::size_t count = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(home, code))
            count += entry.is_regular_file();
        return count;
    }
};

QImage Plain(const QColor& colour) {
    QImage picture(400, 300, QImage::Format_RGB32);
    picture.fill(colour);
    return picture;
}

bool IsRed(const QImage& picture) {
    return !picture.isNull() && qRed(picture.pixel(5, 5)) > 200 && qBlue(picture.pixel(5, 5)) < 50;
}

TEST(SharedCache, KeepsToTheRulesOfTheDesktop) {
    const CacheDesk d;
    const SharedCache cache(100);
    EXPECT_EQ(UriOf("/a b/M 31;\xC3\xA9#.jpg"), "file:///a%20b/M%2031%3B%C3%A9%23.jpg");
    EXPECT_EQ(cache.FileOf("/home/jens/photos/me.png"),
              d.home + "/normal/c6ee772d9e49320e97ec29a7eb5b1697.png");
    cache.Write("/p/a.jpg", 1234, TellTale(100, 60));
    const std::string file = cache.FileOf("/p/a.jpg");
    struct stat facts {};
    ASSERT_EQ(::stat(file.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0600U);
    ASSERT_EQ(::stat(d.home.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777, 0700U);
    const QImage kept(QString::fromStdString(file));
    EXPECT_EQ(kept.text("Thumb::URI"), "file:///p/a.jpg");
    EXPECT_EQ(kept.text("Thumb::MTime"), "1234");
    EXPECT_EQ(Quarters(cache.Read("/p/a.jpg", 1234)), "rgby");
    EXPECT_TRUE(cache.Read("/p/a.jpg", 1235).isNull()); // another time, another picture
    cache.Write(file, 1234, TellTale(100, 60));         // no thumbnails of thumbnails
    EXPECT_EQ(d.Cached(), 1U);
}

TEST(GridPicture, ComesFromTheThumbnailThenTheCacheThenThePicture) {
    const CacheDesk d;
    const SharedCache cache(100);
    const std::string picture = d.Add("a.jpg", Plain(Qt::red));
    const std::string thumbnail = d.Add("T120_a.jpg", Plain(Qt::blue));
    SetFileTime(picture, 2020, 1, 1, 0, 0, 0);
    SetFileTime(thumbnail, 2021, 1, 1, 0, 0, 0);
    EXPECT_FALSE(IsRed(GridPicture({picture, thumbnail}, cache)));
    EXPECT_EQ(d.Cached(), 0U);
    SetFileTime(picture, 2022, 1, 1, 0, 0, 0); // changed since
    const QImage made = GridPicture({picture, thumbnail}, cache);
    EXPECT_TRUE(IsRed(made));
    EXPECT_EQ(made.size(), QSize(128, 96));
    EXPECT_EQ(d.Cached(), 1U);
    d.Add("a.jpg", Plain(Qt::blue)); // under the same time: the cache is taken at its word
    SetFileTime(picture, 2022, 1, 1, 0, 0, 0);
    EXPECT_TRUE(IsRed(GridPicture({picture, {}}, cache)));
    EXPECT_TRUE(GridPicture({d.pictures.Write("b.jpg", "none"), {}}, cache).isNull());
}

TEST(GridPictures, TheSharpestFrameOfAClipComesBehindItsFirst) {
    const CacheDesk d;
    SerClip ser{.width = kDiscSide, .height = kDiscSide};
    // Frame 2 is the sharpest, its disc stands right of the middle; frame 3 is cut off.
    ser.frames = {Disc(22, 32, 4, 255), Disc(25, 32, 3, 255), Disc(40, 32, 0.8, 255),
                  Disc(60, 32, 0.5, 255)};
    const std::string clip = d.pictures.Write("mars.ser", SerBytes(ser));
    const std::string none = d.pictures.Write("none.ser", "no clip");
    std::mutex mutex;
    std::vector<std::pair<std::string, QImage>> came;
    GridPictures grid(64, [&](int, const std::string& picture, const QImage& image) {
        const std::lock_guard lock(mutex);
        came.emplace_back(picture, image);
    });
    const auto await = [&](std::size_t count) {
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                const std::lock_guard lock(mutex);
                return came.size() >= count;
            },
            5000));
        const std::lock_guard lock(mutex);
        return came;
    };
    grid.Expect(1, {{clip, {}, true, true}, {none, {}, true, true}});
    const auto pictures = await(3);
    ASSERT_EQ(pictures.size(), 3U);
    EXPECT_EQ(pictures[1].first, none);
    EXPECT_TRUE(pictures[1].second.isNull());
    EXPECT_EQ(pictures[2].first, clip);
    const auto isLight = [](const QImage& image, int x) { return qGray(image.pixel(x, 32)) > 60; };
    EXPECT_TRUE(isLight(pictures[0].second, 12));
    EXPECT_FALSE(isLight(pictures[0].second, 50));
    EXPECT_FALSE(isLight(pictures[2].second, 12));
    EXPECT_TRUE(isLight(pictures[2].second, 50));
    // Other programs find the first one.
    const SharedCache cache(64);
    struct stat facts {};
    ASSERT_EQ(::stat(clip.c_str(), &facts), 0);
    EXPECT_TRUE(isLight(cache.Read(clip, facts.st_mtim.tv_sec), 12));
    grid.Expect(2, {{clip, {}, true, false}}); // switched off
    await(4);
    QTest::qWait(200);
    EXPECT_EQ(await(4).size(), 4U);
}

TEST(ThumbGrid, ShowsPicturesOfSeenRowsAlone) {
    const CacheDesk caches;
    RoomDesk d;
    RecordingNavigation navigation{d.calls};
    RecordingDisplay display{d.calls};
    RecordingInfo info{d.calls};
    Context context = d.Join(navigation, display, info);
    ThumbRoom room{context};
    for (int i = 0; i < 300; ++i)
        d.folder.Write(std::to_string(1000 + i) + ".jpg", JpegBytes(TellTale(60, 40)));
    room.ConnectControls();
    FileListBox& list = *d.controls.FileListBox;
    list.SetPath(d.folder.Path());
    list.SetPattern("*.jpg");
    d.window.resize(400, 400);
    list.setGeometry(0, 0, 320, 400);
    list.raise();
    d.window.show();
    d.controls.ListPicturesButton->click();
    EXPECT_TRUE(d.state.ListPictures);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&d.window));
    const std::size_t seen = list.SeenRows().size();
    EXPECT_GT(seen, 6U);
    EXPECT_LT(seen, 30U);
    EXPECT_TRUE(QTest::qWaitFor([&] { return caches.Cached() == seen; }, 5000));
    QTest::qWait(100); // no others come
    EXPECT_EQ(caches.Cached(), seen);
    list.scrollToBottom();
    EXPECT_EQ(list.SeenRows().back(), 299);
    EXPECT_TRUE(QTest::qWaitFor([&] { return caches.Cached() > seen; }, 5000));
    EXPECT_LT(caches.Cached(), 60U);
    d.controls.ListPicturesButton->click();
    EXPECT_FALSE(list.ShowsPictures());
}

} // namespace
} // namespace tarn::testing
