// The whole window: what a step costs in a large folder beside a small one, what opening a large
// folder costs beside one bare reading of the directory, and the memory after many pictures.
#include "Memory.h"
#include "Timing.h"
#include "app/AppDesk.h"

#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <dirent.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::bench::ResidentMegabytes;
using tarn::testing::AppDesk;

void Fill(const std::string& folder, int count, const std::string& picture) {
    const std::string first = folder + "/first.jpg";
    std::ofstream(first, std::ios::binary) << picture;
    for (int i = 0; i < count; ++i)
        if (::link(first.c_str(), (folder + "/p" + std::to_string(1000000 + i) + ".jpg").c_str()))
            std::perror("link");
    ::unlink(first.c_str());
}

double StepTime(AppDesk& desk, int steps) {
    std::vector<double> times;
    for (int i = 0; i < steps; ++i) times.push_back(Milliseconds([&] { desk.Key(Qt::Key_N); }));
    return Median(times);
}

int BareReading(const std::string& folder) {
    int count = 0;
    DIR* open = ::opendir(folder.c_str());
    while (const dirent* entry = ::readdir(open)) count += entry->d_name[0] != '.';
    ::closedir(open);
    return count;
}

void Steps() {
    QTemporaryDir small;
    QTemporaryDir large;
    const std::string picture = tarn::testing::JpegBytes(tarn::testing::TellTale(120, 80));
    Fill(small.path().toStdString(), 50, picture);
    Fill(large.path().toStdString(), 50000, picture);
    AppDesk one;
    one.Start(small.path().toStdString());
    AppDesk other;
    other.Start(large.path().toStdString());
    std::vector<double> ofSmall;
    std::vector<double> ofLarge;
    for (int round = 0; round < 9; ++round) {
        ofSmall.push_back(StepTime(one, 20));
        ofLarge.push_back(StepTime(other, 20));
    }
    std::printf("step, 50 names        %8.3f ms\n", Median(ofSmall));
    std::printf("step, 50000 names     %8.3f ms   ratio %.2f (goal: the same)\n", Median(ofLarge),
                Median(ofLarge) / Median(ofSmall));

    std::vector<double> bare;
    std::vector<double> opened;
    const std::string folder = large.path().toStdString();
    for (int round = 0; round < 5; ++round) {
        bare.push_back(Milliseconds([&] { BareReading(folder); }));
        one.house.Open(small.path().toStdString());
        opened.push_back(Milliseconds([&] { one.house.Open(folder); }));
    }
    std::printf("open folder of 50000  %8.1f ms   (one bare reading of the directory %.1f ms)\n",
                Median(opened), Median(bare));
}

void Memory() {
    QTemporaryDir folder;
    tarn::testing::TestFolder unused;
    QImage large = tarn::testing::TellTale(6000, 4000);
    Fill(folder.path().toStdString(), 50, tarn::testing::JpegBytes(large));
    large = QImage();
    AppDesk desk;
    desk.Start(folder.path().toStdString());
    const long before = ResidentMegabytes();
    long most = before;
    for (int i = 0; i < 500; ++i) {
        desk.Key(Qt::Key_N);
        most = std::max(most, ResidentMegabytes());
    }
    std::printf("500 pictures of 24 megapixels: %ld MB before, %ld MB at most, %ld MB after "
                "(goal: at most 150 MB beyond the picture cache)\n",
                before, most, ResidentMegabytes());
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    Steps();
    Memory();
    return 0;
}
