// Pictures of 24 megapixels seen at full size in the pane: what a step costs from the key to the
// painted pane, cold beside a bare decode of all pixels of the same file and with the neighbour
// decoded ahead, and what moving the picture costs.
#include "CameraPicture.h"
#include "Memory.h"
#include "Timing.h"
#include "app/AppDesk.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <string>
#include <vector>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::bench::ResidentMegabytes;
using tarn::testing::AppDesk;

constexpr int kFiles = 60;
constexpr int kSteps = 40;
constexpr int kPans = 200;

void Step(AppDesk& desk, int key) {
    desk.Key(key);
    desk.house.controls.Picture1->repaint();
}

void Steps(AppDesk& desk, const std::string& path) {
    std::vector<double> ahead;
    std::vector<double> cold;
    std::vector<double> bare;
    for (int i = 0; i < kSteps; ++i) {
        desk.house.ahead.WaitUntilDone();
        ahead.push_back(Milliseconds([&] { Step(desk, Qt::Key_N); }));
        desk.house.ahead.WaitUntilDone();
        cold.push_back(Milliseconds([&] { Step(desk, Qt::Key_PageDown); }));
        desk.house.ahead.WaitUntilDone();
        bare.push_back(Milliseconds([&] { tarn::bench::BareDecode(path); }));
    }
    std::printf("step ahead            %8.2f ms\n", Median(ahead));
    std::printf("step cold             %8.2f ms\n", Median(cold));
    std::printf("bare decode           %8.2f ms   ratio %.3f (goal: at most 1.15)\n", Median(bare),
                Median(cold) / Median(bare));
}

void Pans(AppDesk& desk, const char* name) {
    desk.house.ahead.WaitUntilDone();
    std::vector<double> times;
    for (int i = 0; i < kPans; ++i) {
        const double way = i % 20 < 10 ? -37 : 37;
        times.push_back(Milliseconds([&] {
            desk.house.display.Pan({way, way / 2});
            desk.house.controls.Picture1->repaint();
        }));
    }
    std::printf("pan, %-16s %8.2f ms   (goal: under 16 ms)\n", name, Median(times));
}

void Measure(AppDesk& desk, QSize window, const std::string& path) {
    tarn::DisplayCommands& display = desk.house.display;
    desk.house.window.resize(window);
    QTest::qWait(400); // until the window has come to rest
    const tarn::ProgramState& s = desk.house.state;
    std::printf("pane %d x %d, median of %d steps\n", s.PreviewWidth, s.PreviewHeight, kSteps);
    display.Zoom(1);
    Steps(desk, path);
    Pans(desk, "1:1");
    display.RotateRightButton_Click();
    Pans(desk, "1:1 turned");
    display.SetBrightness(20);
    Pans(desk, "and brighter");
    display.SetBrightness(0);
    desk.Key(Qt::Key_O);
    display.Zoom(2);
    Pans(desk, "4:1");
    display.Zoom(-9);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    tarn::bench::FillFolder(folder.path().toStdString(), kFiles, {6000, 4000});
    AppDesk desk;
    desk.Start(folder.path().toStdString());
    for (const QSize window : {QSize(1920, 1080), QSize(3840, 2160)})
        Measure(desk, window, folder.filePath("p100.jpg").toStdString());
    std::printf("memory %ld MB, of these ahead %ld MB\n", ResidentMegabytes(),
                long(desk.house.ahead.BytesHeld() / (1024 * 1024)));
    return 0;
}
