// "tarn sky" and "tarn night", run as a shell runs them.
#include "FitsFiles.h"
#include "RunTarn.h"

#include "support/TestFolder.h"
#include "support/Trees.h"

#include <filesystem>
#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace tarn;
using namespace tarn::testing;

namespace {

// A frame at 105 degrees west, of a header that counts to the west.
std::string WestFrame(const TestFolder& folder, const std::string& name,
                      const std::vector<FitsWord>& more = {}) {
    std::vector<FitsWord> words{{"DATE-OBS", "'2024-11-06T06:00:00'"},
                                {"EXPTIME", "60"},
                                {"RA", "359.999999"},
                                {"DEC", "22"},
                                {"SITELAT", "39.7"},
                                {"SITELONG", "105"}};
    words.insert(words.end(), more.begin(), more.end());
    return folder.Write(name, NightSky(20, 10, words));
}

const FitsWord kClock{"LST", "'02:03:00'"};

} // namespace

// Whichever way files are named, their folder decides which way longitudes count.
TEST(SkyCommand, OneFileSaysWhatItsFolderSays) {
    const TestFolder folder;
    const std::string silent = WestFrame(folder, "a.fits");
    WestFrame(folder, "b.fits", {kClock});
    const std::string told = ": longitudes count west, by its sidereal times\n";
    const auto rowOf = [](const Outcome& outcome, const std::string& path) {
        const std::size_t at = outcome.out.find("\n" + path + ",");
        if (at == std::string::npos) return outcome.out;
        return outcome.out.substr(at + 1 + path.size(),
                                  outcome.out.find('\n', at + 1) - at - 1 - path.size());
    };
    const Outcome whole = Tarn("sky --csv " + folder.Path());
    const Outcome one = Tarn("sky --csv " + silent);
    EXPECT_TRUE(Has(whole, "tarn: " + folder.Path() + told)) << whole.out;
    EXPECT_TRUE(Has(one, "tarn: " + folder.Path() + told)) << one.out;
    EXPECT_EQ(rowOf(one, silent), rowOf(whole, silent));
    EXPECT_EQ(rowOf(one, silent).substr(0, 31), ",2024-11-06T06:00:30Z,0.00000,2");

    std::filesystem::create_directory_symlink(folder.Path(), folder.Path() + "/again");
    const Outcome both = Tarn("sky --csv " + folder.Path() + "/again/b.fits " + silent);
    EXPECT_EQ(both.out.find(told), both.out.rfind(told)) << both.out; // one folder, told once
    EXPECT_TRUE(Has(both, "/again" + told)) << both.out;
}

TEST(NightCommand, WhatIsNamedTwiceCountsOnceAndLongitudesAreOnThePage) {
    const TestFolder home;
    ASSERT_EQ(::setenv("XDG_CACHE_HOME", home.Path().c_str(), 1), 0);
    ASSERT_EQ(::setenv("XDG_STATE_HOME", home.Path().c_str(), 1), 0);
    const TestFolder folder;
    const std::string path = WestFrame(folder, "a.fits", {kClock});
    const std::string html = folder.Path() + "/night.html";
    const Outcome twice = Tarn("night --csv --html " + html + " " + folder.Path() + " " +
                               folder.Path() + "/. " + path);
    EXPECT_TRUE(Has(twice, ",60,1,60,0,0,2024-11-06T06:00:30Z,")) << twice.out;
    const std::string page = BytesOf(html);
    EXPECT_NE(page.find("longitudes count west, by its sidereal times"), std::string::npos);
    EXPECT_NE(page.find("<h1>Night of 2024-11-05</h1>"), std::string::npos);
}

TEST(NightCommand, SaysWhatIsWrongWithItsWords) {
    const TestFolder folder;
    WestFrame(folder, "a.fits");
    for (const auto& [words, fault] : {std::pair{"--paper foo", "no paper is called foo"},
                                       std::pair{"--html ''", "--html needs the name of a file"},
                                       std::pair{"--pdf ''", "--pdf needs the name of a file"}}) {
        SCOPED_TRACE(words);
        const Outcome wrong = Tarn(std::string("night --csv ") + words + " " + folder.Path());
        EXPECT_EQ(wrong.status, 2);
        EXPECT_TRUE(Has(wrong, std::string("tarn: ") + fault + "\n")) << wrong.out;
        EXPECT_FALSE(Has(wrong, "target,filter")) << wrong.out;
    }

    for (const char* option : {"--html ", "--pdf "}) {
        const std::string pipe = folder.Path() + "/pipe";
        std::filesystem::remove(pipe);
        ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        const Outcome refused = Tarn("night " + (option + pipe) + " " + folder.Path());
        EXPECT_EQ(refused.status, 1);
        EXPECT_TRUE(Has(refused, pipe + ": Not a file but a pipe or a device\n")) << refused.out;
        EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    }
}
