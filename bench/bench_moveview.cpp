// The 1:1 window on a picture of 60 megapixels: what showing another part of it costs.
#include "Timing.h"
#include "app/AppDesk.h"

#include "display/frmOnetoOne.h"

#include <QApplication>
#include <QStandardPaths>

#include <cstdio>
#include <vector>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;

constexpr QSize kPicture(9504, 6336);
constexpr int kRounds = 200;

QImage Ramp() {
    QImage picture(kPicture, QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x) line[x] = qRgb(x & 255, y & 255, (x + y) & 255);
    }
    return picture;
}

void Measure(tarn::frmOnetoOne& window, const char* name, float width, float height) {
    std::vector<double> times;
    for (int i = 0; i < kRounds; ++i) {
        const float x = width * float(i % 20) / 20;
        const float y = height * float(i % 11) / 11;
        times.push_back(Milliseconds([&] { window.MoveView(x, y); }));
    }
    std::printf("MoveView, %-12s %8.2f ms   (goal: under 5 ms)\n", name, Median(times));
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    tarn::testing::AppDesk desk;
    desk.AddPicture("a.jpg");
    desk.Start();
    tarn::ProgramState& s = desk.house.state;
    s.ImgXfull.TakePicture(Ramp());
    tarn::frmOnetoOne window(desk.house.context);
    window.Form_Load();
    window.resize(1920, 1080);
    const auto update = [&] {
        std::printf("a new picture          %8.2f ms\n",
                    Milliseconds([&] { window.OnePicture(s); }));
    };
    std::printf("%d x %d in %d x %d, median of %d\n", kPicture.width(), kPicture.height(),
                window.width(), window.height(), kRounds);
    Measure(window, "as stored", 150, 100);
    s.ImageRotatedRight = true;
    update();
    Measure(window, "turned", 133, 200);
    s.BrightnessValue = 40;
    update();
    Measure(window, "and brighter", 133, 200);
    return 0;
}
