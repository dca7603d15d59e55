// What the list is sorted by, read from the disk by threads.
#include "navigation/SortFacts.h"

#include "common/paths.h"
#include "support/ExifBuilder.h"
#include "support/ForwardingFiles.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

namespace tarn::testing {
namespace {

enum Kind { kCapture = 1, kSize = 3 }; // of SortKinds

struct FactsDesk {
    TestFolder folder;
    ForwardingFiles files;
    std::mutex mutex;
    std::condition_variable called;
    int told = 0;
    SortFacts facts{files, [this] {
                        const std::lock_guard lock(mutex);
                        ++told;
                        called.notify_all();
                    }};

    std::vector<std::string> names;
    void Add(int count) {
        for (int i = 0; i < count; ++i) {
            const std::string day = (i < 9 ? "0" : "") + std::to_string(i + 1);
            names.push_back("p" + std::to_string(1000 + i) + ".jpg");
            folder.Write(names.back(), ExifBuilder(Endian::Little)
                                           .ExifDirectory()
                                           .Ascii(36867, "2024:05:" + day + " 10:00:00")
                                           .Jpeg());
        }
    }
    void ReadAll(int kind) {
        const int before = Told();
        facts.Read(folder.Path(), names, kind);
        std::unique_lock lock(mutex);
        EXPECT_TRUE(called.wait_for(lock, std::chrono::seconds(10), [&] { return told > before; }));
    }
    int Told() {
        const std::lock_guard lock(mutex);
        return told;
    }
    std::optional<std::int64_t> KeyOf(int number, int kind) {
        return facts.KeyOf(folder.Path(), names[std::size_t(number)], kind);
    }
};

TEST(SortFacts, TellOnceAllAreKnown) {
    FactsDesk d;
    d.Add(20);
    EXPECT_EQ(d.KeyOf(0, kCapture), std::nullopt);
    d.ReadAll(kCapture);
    ASSERT_NE(d.KeyOf(0, kCapture), std::nullopt);
    for (int i = 1; i < 20; ++i)
        EXPECT_EQ(*d.KeyOf(i, kCapture), *d.KeyOf(0, kCapture) + i * 86400) << i;
    EXPECT_EQ(d.KeyOf(0, kSize), std::nullopt); // of another kind
    d.ReadAll(kSize);
    EXPECT_EQ(d.KeyOf(3, kSize),
              std::int64_t(d.files.Look(d.folder.Path() + "/p1003.jpg", nullptr)->bytes));
}

TEST(SortFacts, ANewReadingBreaksTheOldOneOff) {
    FactsDesk d;
    d.Add(20);
    std::mutex disk;
    {
        const std::lock_guard hangs(disk);
        d.files.onAsk = [&](const std::string& verb, const std::string& path) {
            if (verb == "look" && LastPart(path) == "p1002.jpg") const std::lock_guard wait(disk);
            return std::string();
        };
        d.facts.Read(d.folder.Path(), d.names, kCapture);
        d.facts.Read(d.folder.Path(), d.names, kSize);
        EXPECT_EQ(d.Told(), 0);
        EXPECT_FALSE(d.facts.IsRead());
    }
    std::unique_lock lock(d.mutex);
    ASSERT_TRUE(d.called.wait_for(lock, std::chrono::seconds(10), [&] { return d.told > 0; }));
    lock.unlock();
    EXPECT_NE(d.KeyOf(2, kSize), std::nullopt);
    EXPECT_EQ(d.KeyOf(2, kCapture), std::nullopt);
    EXPECT_EQ(d.Told(), 1);
}

} // namespace
} // namespace tarn::testing
