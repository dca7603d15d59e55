// What marks cost: the time that setting one takes of whoever sets it and until it is on the disk,
// opening a large folder with sidecars beside the same without, and steps while marks are read.
#include "Timing.h"
#include "app/AppDesk.h"

#include "common/sidecar_names.h"
#include "marks/MarkStore.h"
#include "marks/Sidecar.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

using namespace tarn;
using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::testing::AppDesk;

constexpr int kMarks = 1000;
constexpr int kLarge = 50000;
constexpr int kSidecars = 2000;

std::string NameOf(int number) {
    return "p" + std::to_string(1000000 + number) + ".jpg";
}

struct Folder {
    QTemporaryDir dir;
    Folder(int count, const std::string& picture, int sidecars) {
        const std::string first = At(".first");
        std::ofstream(first, std::ios::binary) << picture;
        const std::string xmp = XmpWithMark("", SetTo({Decision::Keep, 3}), nullptr).value_or("");
        for (int i = 0; i < count; ++i) {
            if (::link(first.c_str(), At(NameOf(i)).c_str()) != 0) std::perror("link");
            if (i < sidecars) std::ofstream(At(OwnSidecarName(NameOf(i)))) << xmp;
        }
    }
    std::string Path() const { return dir.path().toStdString(); }
    std::string At(const std::string& name) const { return Path() + "/" + name; }
};

void Set(const std::string& picture) {
    const Folder folder(kMarks, picture, kMarks / 2);
    const auto files = MakeFiles();
    MarkStore store(*files, {});
    std::vector<double> calls;
    std::vector<double> written;
    for (int i = 0; i < kMarks; ++i) {
        const std::string path = folder.At(NameOf(i));
        calls.push_back(Milliseconds([&] { store.Set(path, Decide(Decision::Reject)); }));
        written.push_back(Milliseconds([&] { store.Flush(); }));
    }
    std::printf("set a mark, for its caller             %8.3f ms, the longest %.3f (goal: 5)\n",
                Median(calls), *std::max_element(calls.begin(), calls.end()));
    std::printf("  until it is on the disk              %8.3f ms, the longest %.3f (goal: 1000)\n",
                Median(written), *std::max_element(written.begin(), written.end()));
    std::printf("%d marks at once, until written        %8.1f ms\n", kMarks, Milliseconds([&] {
                    for (int i = 0; i < kMarks; ++i)
                        store.Set(folder.At(NameOf(i)), Rate(1 + i % 5));
                    store.Flush();
                }));
}

void PrintKeys(const char* what, std::vector<double> times) {
    std::printf("%s %8.3f ms, the longest %.3f (goal: 5)\n", what, Median(times),
                *std::max_element(times.begin(), times.end()));
}

// The whole window, a key a picture; what is painted comes between the keys.
void Cull(const std::string& picture) {
    const Folder folder(kMarks, picture, 0);
    AppDesk desk;
    desk.Start(folder.Path());
    while (!desk.house.marks.AllRead()) QApplication::processEvents();
    for (const bool advances : {false, true}) {
        desk.s.MarkAdvance = advances;
        std::vector<double> times;
        for (int i = 0; i < kMarks; ++i) {
            QAction* const mark = i % 3 == 0 ? desk.c.MarkRejectButton : desk.c.MarkKeepButton;
            times.push_back(Milliseconds([&] { mark->trigger(); }));
            if (!advances) desk.Key(Qt::Key_N);
            QApplication::processEvents();
        }
        PrintKeys(advances ? "a mark in the window, with the step    "
                           : "a mark in the window                   ",
                  times);
    }
}

double OpenTime(AppDesk& desk, const std::string& folder, const std::string& other) {
    desk.house.Open(other);
    QApplication::processEvents();
    return Milliseconds([&] {
        desk.house.Open(folder);
        desk.house.window.repaint();
        QApplication::processEvents();
    });
}

double StepTime(AppDesk& desk) {
    std::vector<double> times;
    for (int i = 0; i < 50; ++i) times.push_back(Milliseconds([&] { desk.Key(Qt::Key_N); }));
    return Median(times);
}

// In rounds, since two cores have other things to do, too.
void PrintSteps(AppDesk& desk, const std::string& folder, const std::string& other,
                const char* what) {
    std::vector<double> during;
    std::vector<double> after;
    for (int round = 0; round < 9; ++round) {
        OpenTime(desk, folder, other);
        const bool isEarly = !desk.house.marks.AllRead();
        const double step = StepTime(desk);
        if (isEarly && !desk.house.marks.AllRead()) during.push_back(step);
        while (!desk.house.marks.AllRead()) ::usleep(1000);
        after.push_back(StepTime(desk));
    }
    std::printf("step while marks are read, %-13s   %8.3f ms, once they are %.3f, ratio %.2f "
                "(goal: 1.2; %zu rounds)\n",
                what, Median(during), Median(after), Median(during) / Median(after), during.size());
}

void Open(const std::string& picture) {
    const Folder small(50, picture, 0);
    const Folder bare(kLarge, picture, 0);
    for (int i = 0; i < kSidecars; ++i) // as many files that are not listed
        std::ofstream(bare.At(NameOf(i) + ".other")) << "other";
    const Folder marked(kLarge, picture, kSidecars);
    AppDesk desk;
    desk.Start(small.Path());
    std::vector<double> without;
    std::vector<double> with;
    for (int round = 0; round < 9; ++round) {
        without.push_back(OpenTime(desk, bare.Path(), small.Path()));
        with.push_back(OpenTime(desk, marked.Path(), small.Path()));
    }
    std::printf("open folder of %d                   %8.1f ms\n", kLarge, Median(without));
    std::printf("  with %d sidecars                   %8.1f ms   ratio %.2f (goal: 1.3)\n",
                kSidecars, Median(with), Median(with) / Median(without));
    PrintSteps(desk, marked.Path(), small.Path(), "with sidecars");
    PrintSteps(desk, bare.Path(), small.Path(), "without any");
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
    const QApplication application(argc, argv);
    const std::string picture = tarn::testing::JpegBytes(tarn::testing::TellTale(120, 80));
    Set(picture);
    Cull(picture);
    Open(picture);
    return 0;
}
