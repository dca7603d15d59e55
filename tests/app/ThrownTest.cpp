// Memory may end anywhere: whoever works on a thread of its own, or at an event, breaks that one
// thing off with its file's name and goes on with the next.
#include "AppDesk.h"

#include "app/Application.h"
#include "common/worker.h"
#include "imaging/PicturesAhead.h"
#include "imaging/fits/TwoThreads.h"
#include "thumbnails/GridPictures.h"
#include "thumbnails/ThumbRun.h"
#include "web/GalleryRun.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <future>
#include <new>
#include <thread>

namespace {

std::atomic<std::size_t> theLargest = SIZE_MAX; // that other threads than the first are given
const std::thread::id kFirst = std::this_thread::get_id();

} // namespace

void* operator new(std::size_t size) {
    const bool refused = size > theLargest && std::this_thread::get_id() != kFirst;
    void* const memory = refused ? nullptr : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace tarn::testing {
namespace {

// Workers get no large pieces: the first bytes of a picture file are one.
struct ShortMemory {
    ShortMemory() { theLargest = 600; }
    ~ShortMemory() { theLargest = SIZE_MAX; }
};

Application& TheApplication() {
    static int count = 1;
    static char name[] = "thrown_test";
    static char* words[] = {name, nullptr};
    static auto* const kApplication = new Application(count, words); // libraries end after it
    return *kApplication;
}

} // namespace

TEST(Thrown, AWorkersEndIsNotTheProgramsEnd) {
    Worker worker([] { throw std::bad_alloc(); });
    worker.Join();
    EXPECT_FALSE(worker.IsRunning());
    EXPECT_THROW(InTwoThreads(100,
                              [](std::size_t, std::size_t end) {
                                  if (end == 100) throw std::bad_alloc();
                              }),
                 std::bad_alloc);
}

TEST(Thrown, PicturesAheadGoOnWithTheNext) {
    const TestFolder folder;
    const std::string a = folder.Write("a.jpg", JpegBytes(TellTale(64, 48)));
    const std::string b = folder.Write("b.jpg", JpegBytes(TellTale(64, 48)));
    PicturesAhead ahead;
    ahead.Expect(
        {{a, {}, [](QSize) -> std::vector<QSize> { throw std::bad_alloc(); }}, {b, {}, {}}});
    ahead.WaitUntilDone();
    EXPECT_EQ(ahead.Take(a, {}), nullptr);
    EXPECT_NE(ahead.Take(b, {}), nullptr);
}

TEST(Thrown, ThumbnailsNameTheirFileAndGoOn) {
    const TestFolder folder;
    folder.Write("a.jpg", JpegBytes(TellTale(64, 48)));
    std::filesystem::create_directory(folder.Path() + "/t");
    ForwardingFiles files;
    ThumbRequest request;
    request.pictures = folder.Path();
    request.subFolder = "t";
    const auto run = [&] {
        ThumbRun thumbnails({{0, "a.jpg"}}, request, files);
        thumbnails.Step();
        return thumbnails.Report(false);
    };
    std::string report;
    {
        const ShortMemory shortage;
        report = run();
    }
    EXPECT_EQ(report, "0 thumbnails, sized 120 pixels created in ...\\t sub folder, "
                      "1 failed: 'a.jpg' - Not enough memory");
    EXPECT_EQ(run(), "1 thumbnails, sized 120 pixels created in ...\\t sub folder");
}

TEST(Thrown, TheGridLeavesOneCellEmptyAndGoesOn) {
    const TestFolder folder;
    const std::string a = folder.Write("a.jpg", JpegBytes(TellTale(64, 48)));
    std::promise<bool> made[2];
    std::atomic<int> next = 0;
    GridPictures grid(128, [&](int, const std::string&, const QImage& image) {
        made[next++].set_value(!image.isNull());
    });
    {
        const ShortMemory shortage;
        grid.Expect(1, {{a, {}, false}});
        EXPECT_FALSE(made[0].get_future().get());
    }
    grid.Expect(2, {{a, {}, false}});
    EXPECT_TRUE(made[1].get_future().get());
}

TEST(Thrown, AGalleryEndsWithThePicturesName) {
    const TestFolder folder;
    ForwardingFiles files;
    GalleryPlan plan;
    plan.indexPath = folder.Path() + "/index.html";
    plan.pictureFolder = folder.Path();
    plan.items = {{"a.jpg", "T120_a.jpg"}};
    const GallerySources sources{
        [](const std::string&) -> std::pair<int, int> { throw std::bad_alloc(); },
        [](const std::string&) { return 0LL; }, [](const std::string&) { return std::string(); },
        [](const std::string&) { return std::vector<std::string>(); }};
    GalleryRun run(files, plan, sources);
    while (run.Step()) {
    }
    EXPECT_FALSE(run.Finish());
    ASSERT_TRUE(run.Fault());
    EXPECT_NE(run.Fault()->text.find("'a.jpg' - Not enough memory"), std::string::npos)
        << run.Fault()->text;
}

TEST(Thrown, AnEventIsBrokenOffWithTheCurrentFilesName) {
    TheApplication();
    AppDesk desk;
    desk.folder.Write("a.jpg", JpegBytes(TellTale(64, 48)));
    desk.Start();
    TheApplication().onThrown = [&](const std::string& fault) { desk.house.TellThrown(fault); };
    bool next = false;
    QTimer::singleShot(0, [] { throw std::bad_alloc(); });
    QTimer::singleShot(0, [&] { next = true; });
    for (int i = 0; i < 100 && !next; ++i) QCoreApplication::processEvents();
    EXPECT_TRUE(next);
    EXPECT_EQ(desk.Said(), "ERROR - 'a.jpg': Not enough memory");
    TheApplication().onThrown = nullptr;
}

} // namespace tarn::testing
