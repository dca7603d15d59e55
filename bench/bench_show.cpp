// What a step of the full-screen show costs from the key to the painted slide over pictures of 24
// megapixels: with the next one decoded ahead, and cold beside a bare scaled decode and scaling of
// the same files. At the end the memory after many steps.
#include "CameraPicture.h"
#include "Memory.h"
#include "Timing.h"
#include "app/AppDesk.h"

#include "common/keys.h"
#include "slides/ShowSignals.h"

#include <QApplication>
#include <QFile>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::bench::ResidentMegabytes;
using tarn::testing::AppDesk;

constexpr int kFiles = 60;
constexpr int kSteps = 50;

// Plays one key at each look of the show for events, and times the way to the next look: the key,
// the loading and the painting.
class Steps {
public:
    Steps(AppDesk& desk, int keycode, int count, std::function<void()> between)
        : m_desk(desk), m_key(keycode), m_left(count), m_between(std::move(between)) {
        desk.events.onPump = [this] { Look(); };
        desk.house.slides.SlideButton_Click();
        desk.events.onPump = {};
    }
    const std::vector<double>& Times() const { return m_times; }

private:
    using Clock = std::chrono::steady_clock;
    void Look() {
        const tarn::ShowSignals* show = m_desk.house.slides.Signals();
        if (!show || !show->Slideloop) return;
        const std::chrono::duration<double, std::milli> time = Clock::now() - m_start;
        if (m_began) m_times.push_back(time.count());
        m_began = true;
        if (m_left-- <= 0) return m_desk.house.slides.SlideDone();
        if (m_between) m_between();
        m_start = Clock::now();
        m_desk.house.slides.SlideKeyUp(m_key);
    }

    AppDesk& m_desk;
    int m_key;
    int m_left;
    std::function<void()> m_between;
    std::vector<double> m_times;
    Clock::time_point m_start;
    bool m_began = false;
};

void Times(AppDesk& desk, const std::string& path) {
    const auto rest = [&] { desk.house.ahead.WaitUntilDone(); };
    const double ahead = Median(Steps(desk, 'N', kSteps, rest).Times());
    std::printf("step ahead               %8.2f ms   (goal: under 30 ms)\n", ahead);
    std::printf("step, key held           %8.2f ms\n",
                Median(Steps(desk, 'N', kSteps, {}).Times()));
    // Five pictures on, where nothing is ready; the bare program in between.
    const QSize screen = QGuiApplication::primaryScreen()->size();
    const QSize box(screen.width() - 8, screen.height() - 28);
    std::vector<double> bare;
    const double cold = Median(
        Steps(desk, tarn::keys::kPageDown, kSteps, [&] {
            rest();
            bare.push_back(Milliseconds([&] { tarn::bench::BareDecodeAndScale(path, box); }));
        }).Times());
    std::printf("step cold                %8.2f ms\n", cold);
    std::printf("bare decode and scaling  %8.2f ms   ratio %.3f (goal: at most 1.15)\n",
                Median(bare), cold / Median(bare));
}

void Memory(AppDesk& desk) {
    const long before = ResidentMegabytes();
    long most = before;
    const Steps steps(desk, 'N', 500, [&] { most = std::max(most, ResidentMegabytes()); });
    std::printf("500 steps: %ld MB before, %ld MB at most, %ld MB after; budget ahead %ld MB "
                "(goal: budget and 150 MB)\n",
                before, most, ResidentMegabytes(),
                long(tarn::PicturesAhead::DefaultBudget() / (1024 * 1024)));
}

} // namespace

int main(int argc, char** argv) {
    const QTemporaryDir folder;
    QFile screens(folder.filePath("screens.json"));
    if (screens.open(QIODevice::WriteOnly))
        screens.write(R"({"screens": [{"name": "one", "x": 0, "y": 0, "width": 1920,
                                       "height": 1080, "logicalDpi": 96, "dpr": 1}]})");
    screens.close();
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toUtf8());
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    const QSize screen = QGuiApplication::primaryScreen()->size();
    std::printf("screen %d x %d, median of %d steps\n", screen.width(), screen.height(), kSteps);
    const QTemporaryDir pictures;
    tarn::bench::FillFolder(pictures.path().toStdString(), kFiles, {6000, 4000});
    AppDesk desk;
    desk.Start(pictures.path().toStdString());
    Times(desk, pictures.filePath("p100.jpg").toStdString());
    Memory(desk);
    return 0;
}
