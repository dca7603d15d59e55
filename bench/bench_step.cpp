// What a step through pictures of 24 megapixels costs from the key to the painted pane: with the
// next picture decoded ahead, and cold beside a bare scaled decode and scaling of the same files.
// At the end the memory after many steps, with every pixel decoded.
#include "CameraPicture.h"
#include "Memory.h"
#include "Timing.h"
#include "app/AppDesk.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <string>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::bench::ResidentMegabytes;
using tarn::testing::AppDesk;

constexpr int kFiles = 60;
constexpr int kSteps = 50;

void Step(AppDesk& desk, int key) {
    desk.Key(key);
    desk.house.controls.Picture1->repaint();
}

std::vector<double> StepTimes(AppDesk& desk, int key) {
    std::vector<double> times;
    for (int i = 0; i < kSteps; ++i) {
        desk.house.ahead.WaitUntilDone();
        times.push_back(Milliseconds([&] { Step(desk, key); }));
    }
    return times;
}

// As fast as they are served: the key is held.
double HeldTime(AppDesk& desk) {
    return Milliseconds([&] {
               for (int i = 0; i < kSteps; ++i) Step(desk, Qt::Key_N);
           }) /
           kSteps;
}

void Times(AppDesk& desk, const std::string& path) {
    const tarn::ProgramState& s = desk.house.state;
    const QSize pane(s.PreviewWidth, s.PreviewHeight);
    std::printf("pane %d x %d, median of %d steps\n", pane.width(), pane.height(), kSteps);
    const double ahead = Median(StepTimes(desk, Qt::Key_N));
    std::printf("step ahead               %8.2f ms   (goal: under 30 ms)\n", ahead);
    std::printf("step, key held           %8.2f ms\n", HeldTime(desk));
    std::vector<double> cold;
    std::vector<double> bare;
    for (int i = 0; i < kSteps; ++i) {
        desk.house.ahead.WaitUntilDone();
        cold.push_back(Milliseconds([&] { Step(desk, Qt::Key_PageDown); }));
        desk.house.ahead.WaitUntilDone();
        bare.push_back(Milliseconds([&] { tarn::bench::BareDecodeAndScale(path, pane); }));
    }
    std::printf("step cold                %8.2f ms\n", Median(cold));
    std::printf("bare decode and scaling  %8.2f ms   ratio %.3f (goal: at most 1.15)\n",
                Median(bare), Median(cold) / Median(bare));
}

void Memory(AppDesk& desk) {
    desk.house.state.OneX = true; // every pixel of every picture
    desk.Key(Qt::Key_O);
    const long before = ResidentMegabytes();
    long most = before;
    long mostAhead = 0;
    for (int i = 0; i < 500; ++i) {
        desk.Key(Qt::Key_N);
        most = std::max(most, ResidentMegabytes());
        mostAhead = std::max(mostAhead, long(desk.house.ahead.BytesHeld() / (1024 * 1024)));
    }
    std::printf("500 steps with all pixels: %ld MB before, %ld MB at most, of these ahead %ld MB, "
                "budget %ld MB\n",
                before, most, mostAhead,
                long(tarn::PicturesAhead::DefaultBudget() / (1024 * 1024)));
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
    desk.house.window.resize(2560, 1440);
    QTest::qWait(400); // until the window has come to rest
    Times(desk, folder.filePath("p100.jpg").toStdString());
    Memory(desk);
    return 0;
}
