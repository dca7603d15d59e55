// Decoder processes that die, stop, lie, or try what they may not.
#include "support/TestFolder.h"

#include "common/stop_flag.h"
#include "decoder/DecoderPool.h"
#include "imaging/PictureLoader.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace tarn::testing {
namespace {

constexpr int kSeconds = 1; // that an answer may take here
constexpr QRgb kPixel = 0xFF777777;

std::vector<pid_t> Children() {
    std::vector<pid_t> children;
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream list(task.path() / "children");
        for (pid_t child = 0; list >> child;) children.push_back(child);
    }
    return children;
}

class DecoderFaults : public ::testing::Test {
protected:
    ~DecoderFaults() override { UseDecoders({}); }

    // The fake one, under a name that says how it begins.
    void Use(const std::string& name, int threads = 1) const {
        const std::string program = folder.Path() + "/" + name;
        std::filesystem::remove(program);
        std::filesystem::create_symlink(TARN_FAKE_DECODER, program);
        UseDecoders({threads, program, kSeconds});
    }

    // What is said of a file that gives such an order; empty when its picture came.
    std::string ErrorOf(const std::string& order) const {
        const std::string path = folder.Write("file", order);
        std::string error;
        const auto source = PictureLoader::Open(path, error);
        if (!source) return error;
        const QImage picture = source->Decode({}, error);
        if (!picture.isNull()) {
            EXPECT_EQ(picture.size(), QSize(2, 2));
            EXPECT_EQ(picture.pixel(1, 1), kPixel);
        }
        return picture.isNull() && error.empty() ? "no picture" : error;
    }

    bool HasWritten(const std::string& name) const {
        return std::filesystem::exists(folder.Path() + "/" + name);
    }

    TestFolder folder;
};

} // namespace

TEST_F(DecoderFaults, EachDeathIsToldAndTheNextFileIsRead) {
    Use("fake");
    for (const std::string stage : {"size", "decode"})
        for (const std::string order : {"die", "nonsense", "no-memory", "too-long", "bytes"}) {
            EXPECT_EQ(ErrorOf(stage + " " + order), kGaveUp) << stage << " " << order;
            EXPECT_EQ(ErrorOf("size well"), "") << stage << " " << order;
        }
    for (const std::string order : {"lies", "huge", "kind", "negative"})
        EXPECT_EQ(ErrorOf("decode " + order), kGaveUp) << order;
    EXPECT_EQ(ErrorOf("size well"), "");
}

TEST_F(DecoderFaults, WhatNeverAnswersIsEndedInTime) {
    Use("fake");
    for (const std::string order : {"size stop", "decode stop", "decode hang"}) {
        QElapsedTimer timer;
        timer.start();
        EXPECT_EQ(ErrorOf(order), kGaveUp) << order;
        EXPECT_LT(timer.elapsed(), 2 * kSeconds * 1000) << order;
        EXPECT_EQ(ErrorOf("size well"), "") << order;
    }
}

TEST_F(DecoderFaults, OneDeathIsForgivenAndTwoAreRemembered) {
    Use("fake");
    EXPECT_EQ(ErrorOf("decode die-once"), "");
    EXPECT_EQ(ErrorOf("decode hang"), kGaveUp);
    const std::string path = folder.Path() + "/file";
    QElapsedTimer timer;
    timer.start();
    std::string error;
    EXPECT_FALSE(PictureLoader::Open(path, error));
    EXPECT_EQ(error, kGaveUp);
    EXPECT_LT(timer.elapsed(), kSeconds * 500); // it was not asked again
    EXPECT_EQ(ErrorOf("size well"), "");        // another file under the name
}

TEST_F(DecoderFaults, WithoutAProcessFilesAreReadInside) {
    for (const char* name : {"ends", "babbles"}) {
        Use(name);
        EXPECT_EQ(ErrorOf("size well"), "Not a picture that can be read") << name;
        EXPECT_TRUE(HasWritten(std::string(name) + ".first")) << name; // it was tried
        EXPECT_EQ(DecoderProtection(), "none: files are read within the program") << name;
    }
    UseDecoders({1, folder.Path() + "/none", kSeconds});
    EXPECT_EQ(ErrorOf("size well"), "Not a picture that can be read");
}

TEST_F(DecoderFaults, AStepBreaksAReadingOff) {
    Use("fake");
    EXPECT_EQ(ErrorOf("size well"), "");
    std::atomic<bool> stop = false;
    std::thread stepping([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        stop = true;
    });
    QElapsedTimer timer;
    timer.start();
    {
        const HeedsStop heeds(stop);
        EXPECT_EQ(ErrorOf("decode hang"), kBrokenOff);
        EXPECT_LT(timer.elapsed(), kSeconds * 500);
        EXPECT_EQ(ErrorOf("size well"), kBrokenOff); // it is not begun
    }
    stepping.join();
    EXPECT_EQ(ErrorOf("size well"), ""); // nothing is held against the files
}

TEST_F(DecoderFaults, NothingStaysOpenAfterDeaths) {
    Use("fake");
    const auto open = [] {
        std::vector<std::string> files;
        for (const auto& each : std::filesystem::directory_iterator("/proc/self/fd"))
            files.push_back(each.path());
        return files.size();
    };
    EXPECT_EQ(ErrorOf("size well"), "");
    const auto before = open();
    for (const std::string order : {"die", "nonsense", "no-memory", "lies", "kind"})
        EXPECT_EQ(ErrorOf("decode " + order), kGaveUp) << order;
    EXPECT_EQ(ErrorOf("size well"), "");
    EXPECT_EQ(open(), before);
}

// Whoever kills them, and whenever.
TEST_F(DecoderFaults, KillsAtAnyTimeAreBorne) {
    Use("fake", 3);
    EXPECT_EQ(ErrorOf("size well"), "");
    std::atomic<bool> done = false;
    std::thread killing([&] {
        std::minstd_rand random(7);
        while (!done) {
            for (const pid_t child : Children()) ::kill(child, SIGKILL);
            std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        }
    });
    std::vector<std::thread> reading;
    std::atomic<int> wrong = 0;
    std::atomic<int> read = 0;
    for (int number = 0; number < 3; ++number)
        reading.emplace_back([&, number] {
            for (int i = 0; i < 60; ++i) {
                const std::string name = std::to_string(number) + "-" + std::to_string(i);
                const std::string path = folder.Write(name, "size well");
                std::string error;
                const auto source = PictureLoader::Open(path, error);
                const QImage picture = source ? source->Decode({}, error) : QImage();
                if (!picture.isNull() && picture.pixel(1, 1) == kPixel)
                    ++read;
                else if (error != kGaveUp && error != kNotStarted)
                    ++wrong;
            }
        });
    for (std::thread& each : reading) each.join();
    done = true;
    killing.join();
    std::this_thread::sleep_for(
        std::chrono::milliseconds(50)); // what is killed dies a little later
    EXPECT_EQ(wrong, 0);
    EXPECT_GT(read, 0);
    EXPECT_EQ(ErrorOf("size well"), "");
}

TEST_F(DecoderFaults, AReaderMayNothingButRead) {
    Use("fake");
    EXPECT_EQ(ErrorOf("size try"), "nothing");
    EXPECT_FALSE(HasWritten("fake.written"));
    EXPECT_TRUE(HasWritten("fake.first"));
    // The rest depends on the machine, and on what the tests were built with.
    const std::string protection = DecoderProtection();
    EXPECT_TRUE(protection.starts_with("a process of its own, system calls filtered"))
        << protection;
    if (protection.ends_with("memory limited")) {
        EXPECT_EQ(ErrorOf("size fill"), "Not enough memory");
    }
}

} // namespace tarn::testing
