// What a frame of 24 megapixels takes on its way into a blink, on one thread: laid into the grid at
// the size of the screen; and all of the way, beside reading and stretching it alone as a show
// does. Then how late frames come when all of them are played at 25 a second.
#include "Timing.h"

#include "blink/FrameLight.h"
#include "blink/SeenFrame.h"
#include "blink/SeenPane.h"
#include "imaging/fits/FitsPixels.h"
#include "sky/planes/FramesOfFiles.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>

#include <array>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace tarn;

constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr int kFiles = 4;
constexpr int kRounds = 9;
constexpr int kPlayed = 142;
constexpr double kPeriod = 1000.0 / 25;

void WriteFrame(const std::string& path, unsigned seed) {
    std::minstd_rand random(seed);
    std::string bytes;
    const auto card = [&](const char* text) {
        bytes += text;
        bytes.resize((bytes.size() + 79) / 80 * 80, ' ');
    };
    for (const char* text :
         {"SIMPLE  =                    T", "BITPIX  =                   16",
          "NAXIS   =                    2", "NAXIS1  =                 6000",
          "NAXIS2  =                 4000", "BZERO   =                32768", "END"})
        card(text);
    bytes.resize(2880, ' ');
    const std::size_t begin = bytes.size();
    bytes.resize(begin + std::size_t(kWidth) * kHeight * 2);
    for (std::size_t at = begin; at < bytes.size(); at += 2) {
        const int value = 1000 + int(random() >> 8U) % 120 - 32768;
        bytes[at] = char(value >> 8);
        bytes[at + 1] = char(value);
    }
    bytes.resize((bytes.size() + 2879) / 2880 * 2880);
    std::ofstream(path, std::ios::binary) << bytes;
}

// Around the middle, and a little away.
FrameMap TurnedBy(double turn, int width = kWidth, int height = kHeight) {
    FrameMap map{std::cos(turn), -std::sin(turn), 0, std::sin(turn), std::cos(turn), 0};
    const auto [x, y] = map(width / 2.0, height / 2.0);
    map.c = width / 2.0 - x + 14.3;
    map.f = height / 2.0 - y - 5.7;
    return map;
}

GridView ViewOfWidth(int width) {
    GridView view{width, width * kHeight / kWidth};
    view.step = double(kWidth) / width;
    view.left = view.top = view.step / 2 - 0.5;
    return view;
}

double ProcessorTime(const std::function<void()>& act) {
    const std::clock_t start = std::clock();
    act();
    return 1000.0 * double(std::clock() - start) / CLOCKS_PER_SEC;
}

void TimeWarps(const FrameSamples& samples, const PlaneLevels& levels) {
    for (const int width : {1200, 1600, 1920, 2560})
        for (const double turn : {0.003, 3.14459}) {
            std::vector<double> times;
            for (int i = 0; i < kRounds; ++i)
                times.push_back(ProcessorTime([&] {
                    (void)SeeFrame(samples, TurnedBy(turn), {&levels, 1}, ViewOfWidth(width));
                }));
            std::printf(
                "seen %d wide, turned %.3f: %.1f ms of a processor, with the means of squares\n",
                width, turn, bench::Median(times));
        }
    // What is left when the means are made already: a frame as large as the screen.
    FrameSamples small = samples;
    small.width = 1600;
    small.height = 1067;
    std::vector<double> times;
    GridView view{1600, 1067};
    view.step = 1.0005;
    for (int i = 0; i < kRounds; ++i)
        times.push_back(bench::Milliseconds([&] {
            (void)SeeFrame(small, TurnedBy(0.003), {&levels, 1}, view);
        }));
    std::printf("1600 x 1067 from as many samples: %.1f ms of a processor\n", bench::Median(times));
}

void TimeMaking(const std::vector<std::string>& files, const SkyGrid& sky) {
    const SampleCodes codes(sky.level, sky.noise);
    std::vector<double> ours;
    std::vector<double> bare;
    std::vector<double> ourWork;
    std::vector<double> bareWork;
    std::string error;
    std::vector<std::uint32_t> pixels(std::size_t(kWidth) * kHeight);
    for (int i = 0; i < kRounds * int(files.size()); ++i) {
        const std::string& file = files[std::size_t(i) % files.size()];
        const auto make = [&] {
            const auto plane = ReadFramePlane(file, error);
            const FrameMap map = TurnedBy(0.003);
            const PlaneLevels levels{1, SurfaceBetween(SkyOf(plane->samples, 0), 1, map, sky),
                                     codes};
            (void)SeeFrame(plane->samples, map, {&levels, 1}, ViewOfWidth(1600));
        };
        const auto stretch = [&] {
            const auto read = FitsPixels::Read(file, 1600, 1067, error);
            read->ToRgb(read->Automatic(), pixels.data(), std::size_t(read->Width()));
        };
        double work = 0;
        ours.push_back(bench::Milliseconds([&] { work = ProcessorTime(make); }));
        ourWork.push_back(work);
        bare.push_back(bench::Milliseconds([&] { work = ProcessorTime(stretch); }));
        bareWork.push_back(work);
    }
    std::printf("made: %.1f ms (%.1f of processors), read and stretched alone: %.1f (%.1f); "
                "%.2f times, of processors %.2f\n",
                bench::Median(ours), bench::Median(ourWork), bench::Median(bare),
                bench::Median(bareWork), bench::Median(ours) / bench::Median(bare),
                bench::Median(ourWork) / bench::Median(bareWork));
}

// Each frame is painted whole; a frame that is not done when the next one is due is dropped.
void TimePlay(const FrameSamples& samples, const SkyGrid& sky) {
    auto ground = std::make_shared<BlinkGround>();
    ground->grid = {kWidth, kHeight, 1, false};
    ground->codes.emplace_back(sky.level, sky.noise);
    ground->stretch = StretchOfFrame(samples);
    SeenPane pane;
    pane.resize(1600, 1067);
    pane.SetGround(ground);
    QImage screen(pane.size(), QImage::Format_RGB32);
    std::vector<std::shared_ptr<const SeenFrame>> frames;
    const PlaneLevels levels{1, {}, ground->codes[0]};
    for (int i = 0; i < kPlayed; ++i)
        frames.push_back(std::make_shared<const SeenFrame>(
            SeeFrame(samples, TurnedBy(0.0005 * i), {&levels, 1}, pane.View())));
    QElapsedTimer clock;
    clock.start();
    int dropped = 0;
    std::vector<double> paints;
    for (int i = 0; i < kPlayed; ++i) {
        const double due = i * kPeriod;
        while (double(clock.nsecsElapsed()) / 1e6 < due) QThread::usleep(200);
        paints.push_back(bench::Milliseconds([&] {
            pane.SetFrame(frames[std::size_t(i)]);
            pane.render(&screen);
        }));
        if (double(clock.nsecsElapsed()) / 1e6 > due + kPeriod) ++dropped;
    }
    std::printf("%d frames of %d x %d at 25 a second: %.1f ms a frame, %d dropped\n", kPlayed,
                pane.View().width, pane.View().height, bench::Median(paints), dropped);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const QTemporaryDir folder;
    std::vector<std::string> files;
    for (int i = 0; i < kFiles; ++i) {
        files.push_back(folder.path().toStdString() + "/" + std::to_string(i) + ".fits");
        WriteFrame(files.back(), unsigned(i + 1));
    }
    std::string error;
    const auto plane = ReadFramePlane(files[0], error);
    if (!plane) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    const SkyGrid sky = SkyOf(plane->samples, 0);
    const PlaneLevels levels{1, {}, SampleCodes(sky.level, sky.noise)};
    TimeWarps(plane->samples, levels);
    TimeMaking(files, sky);
    TimePlay(plane->samples, sky);
    return 0;
}
