// Decoder processes that die, stop, lie, or try what they may not.
#include "support/TestFolder.h"

#include "common/stop_flag.h"
#include "decoder/DecoderPool.h"
#include "imaging/PictureLoader.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>

#include <filesystem>
#include <string>
#include <thread>

namespace tarn::testing {
namespace {

constexpr int kSeconds = 1; // that an answer may take here
constexpr QRgb kPixel = 0xFF777777;

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

TEST_F(DecoderFaults, AReaderMayNothingButRead) {
    Use("fake");
    EXPECT_EQ(ErrorOf("size try"), "nothing");
    EXPECT_FALSE(HasWritten("fake.written"));
    EXPECT_TRUE(HasWritten("fake.first"));
    EXPECT_EQ(ErrorOf("size fill"), "Not enough memory");
    EXPECT_EQ(DecoderProtection(), "a process of its own, system calls filtered, files and network "
                                   "closed, memory limited");
}

} // namespace tarn::testing
