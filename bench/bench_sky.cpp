// What stood in the sky over a night of 2,600 frames, by their headers, beside the pass over their
// dates: frames of a telescope, and pictures of a camera that knows its place. Then the report of a
// night of 1,000 frames that have been measured.
#include "FitsFiles.h"
#include "Timing.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace tarn::testing;

constexpr int kFrames = 2600;
constexpr int kRuns = 7;

double Once(const std::string& words) {
    const std::string command = std::string(TARN_PROGRAM) + " " + words + " >/dev/null 2>&1";
    return tarn::bench::Milliseconds([&] {
        if (std::system(command.c_str()) < 0) std::perror("system"); // NOLINT(cert-env33-c)
    });
}

double Of(const std::string& words) {
    std::vector<double> times;
    for (int i = 0; i < kRuns; ++i) times.push_back(Once(words));
    return tarn::bench::Median(times);
}

void Compare(const char* what, const std::string& folder) {
    const double dates = Of("info --date " + folder + "/*");
    const double sky = Of("sky --csv " + folder);
    std::printf("%-10s dates %7.1f ms, sky %7.1f ms, %.2f of it\n", what, dates, sky, sky / dates);
}

std::string Clock(int frame) {
    char text[16];
    const int seconds = 19 * 3600 + frame * 6;
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60,
                  seconds % 60);
    return text;
}

// Sixty stars of one field, a little further on in each frame.
void Report() {
    constexpr int kWidth = 300;
    constexpr int kHeight = 200;
    constexpr int kMeasured = 1000;
    const TestFolder cache;
    const TestFolder night;
    ::setenv("XDG_CACHE_HOME", cache.Path().c_str(), 1);
    ::setenv("XDG_STATE_HOME", cache.Path().c_str(), 1);
    for (int i = 0; i < kMeasured; ++i) {
        std::vector<double> values(std::size_t(kWidth) * kHeight);
        for (std::size_t at = 0; at < values.size(); ++at)
            values[at] = 1000 + double((at + std::size_t(i) * 31) * 7919 % 101) / 5;
        for (int star = 0; star < 60; ++star) {
            const int x = 20 + (star * star * 37 + i / 50) % 260;
            const int y = 20 + star * 53 % 160;
            for (int row = -6; row <= 6; ++row)
                for (int column = -6; column <= 6; ++column)
                    values[std::size_t((y + row) * kWidth + x + column)] +=
                        (400 + 90 * star) * std::exp(-double(row * row + column * column) / 6);
        }
        const std::vector<FitsWord> words{{"DATE-OBS", "'2024-11-05T" + Clock(2 * i) + "'"},
                                          {"EXPTIME", "10.0"},
                                          {"RA", "83.633"},
                                          {"DEC", "22.0145"},
                                          {"SITELAT", "48.1"},
                                          {"SITELONG", "11.6"},
                                          {"OBJECT", "'M 1'"}};
        night.Write(std::to_string(10000 + i) + ".fits",
                    FitsBytes(
                        16, {kWidth, kHeight}, [&](std::size_t at) { return values[at]; }, words));
    }
    const double measured = Once("stars " + night.Path());
    std::printf("measured   %7.1f s, table %7.1f ms, page %7.1f ms, PDF %7.1f ms\n",
                measured / 1000, Of("night " + night.Path()),
                Of("night --html " + cache.Path() + "/n.html " + night.Path()),
                Of("night --pdf " + cache.Path() + "/n.pdf " + night.Path()));
}

} // namespace

int main() {
    const TestFolder frames;
    const TestFolder pictures;
    for (int i = 0; i < kFrames; ++i) {
        const std::string name = std::to_string(10000 + i);
        const std::vector<FitsWord> words{{"DATE-OBS", "'2024-11-05T" + Clock(i) + "'"},
                                          {"EXPTIME", "5.0"},
                                          {"RA", "83.633"},
                                          {"DEC", "22.0145"},
                                          {"SITELAT", "48.1"},
                                          {"SITELONG", "11.6"},
                                          {"OBJECT", "'M 1'"}};
        frames.Write(name + ".fits", NightSky(32, 32, words));
        ExifBuilder camera(Endian::Little);
        camera.Ascii(272, "CAM 1")
            .Satellites(48, 11, 520, "2024:11:05 " + Clock(i))
            .ExifDirectory();
        camera.Ascii(0x9003, "2024:11:05 " + Clock(i)).Ascii(0x9011, "+00:00");
        pictures.Write(name + ".jpg", camera.Jpeg() + std::string(30000, 'x'));
    }
    Compare("telescope", frames.Path());
    Compare("camera", pictures.Path());
    Report();
}
