// What measuring a folder in the background costs: a step through frames of 24 megapixels while it
// runs, beside one without; how much faster two threads are than one, and the memory of both.
#include "MadeNight.h"
#include "Memory.h"
#include "Timing.h"
#include "app/AppDesk.h"

#include "decoder/DecoderPool.h"
#include "sky/night/FolderMeasuring.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::bench::ResidentMegabytes;
using tarn::testing::AppDesk;

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr int kDistinct = 6; // files; the others are links to them
constexpr int kFrames = 60;
constexpr int kSteps = 40;
constexpr int kPace = 400; // milliseconds from step to step, as a person looks

void FillFolder(const std::string& folder) {
    for (int i = 0; i < kFrames; ++i) {
        const auto name = [&](int number) {
            return folder + "/f" + std::to_string(100 + number) + ".fits";
        };
        if (i >= kDistinct) {
            std::filesystem::create_hard_link(name(i % kDistinct), name(i));
            continue;
        }
        const tarn::testing::MadeFrame frame{.fwhm = 3 + 0.2 * i, .stars = 3000};
        std::ofstream(name(i), std::ios::binary)
            << tarn::testing::FrameBytes(frame, kWidth, kHeight, unsigned(i + 1));
    }
}

std::vector<double> StepTimes(AppDesk& desk) {
    std::vector<double> times;
    for (int i = 0; i < kSteps; ++i) {
        times.push_back(Milliseconds([&] {
            desk.Key(Qt::Key_N);
            desk.house.controls.Picture1->repaint();
        }));
        QTest::qWait(kPace);
    }
    return times;
}

void Steps(const std::string& folder) {
    AppDesk desk;
    desk.Start(folder + "/f100.fits");
    desk.house.window.resize(1600, 1000);
    desk.house.window.show();
    QTest::qWait(1500);
    StepTimes(desk);
    const std::vector<double> alone = StepTimes(desk);
    desk.c.NightButton->trigger();
    QWidget* progress = desk.In<QWidget>("frmNight", "NightProgress");
    const std::vector<double> beside = StepTimes(desk);
    const bool ran = progress->isVisible();
    std::printf("step without measuring   %8.2f ms, slowest %.1f\n", Median(alone),
                *std::max_element(alone.begin(), alone.end()));
    std::printf("step while measuring     %8.2f ms, slowest %.1f   ratio %.2f (goal: at most "
                "1.2)%s\n",
                Median(beside), *std::max_element(beside.begin(), beside.end()),
                Median(beside) / Median(alone), ran ? "" : "  (it ended too early)");
}

double MeasureAll(const std::string& folder, int threads, long& most) {
    const QTemporaryDir cache;
    std::vector<std::string> paths;
    for (int i = 0; i < kFrames; ++i)
        paths.push_back(folder + "/f" + std::to_string(100 + i) + ".fits");
    return Milliseconds([&] {
        tarn::FolderMeasuring measuring(
            cache.filePath("store.sqlite").toStdString(), [] {}, threads);
        measuring.Show(paths);
        while (!measuring.Progress().IsDone()) {
            most = std::max(most, ResidentMegabytes());
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    });
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    tarn::UseDecoders();
    const QTemporaryDir folder;
    FillFolder(folder.path().toStdString());
    const std::string path = folder.path().toStdString();
    long most = 0;
    const double one = MeasureAll(path, 1, most);
    const double two = MeasureAll(path, 2, most);
    std::printf("%d frames, one thread    %8.0f ms\n", kFrames, one);
    std::printf("%d frames, two threads   %8.0f ms   %.2f times as fast (goal: at least 1.8)\n",
                kFrames, two, one / two);
    std::printf("memory of this process   %8ld MB at most (goal: at most 600)\n", most);
    Steps(path);
    return 0;
}
