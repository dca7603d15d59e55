// The list as pictures in a folder of 50,000: opening it beside the list of names, and the longest
// that one page of scrolling holds the window up.
#include "Timing.h"
#include "app/AppDesk.h"

#include <QApplication>
#include <QScrollBar>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::testing::AppDesk;

constexpr int kFiles = 50000;
constexpr int kRounds = 5;
constexpr int kPages = 200;

double Opening(const std::string& folder, bool pictures) {
    AppDesk desk;
    desk.settings->Write("list_pictures", pictures ? "True" : "False");
    return Milliseconds([&] {
        desk.Start(folder);
        QApplication::processEvents();
        desk.house.controls.FileListBox->viewport()->repaint();
    });
}

void Scrolling(const std::string& folder) {
    AppDesk desk;
    desk.settings->Write("list_pictures", "True");
    desk.Start(folder);
    QApplication::processEvents();
    QScrollBar* bar = desk.house.controls.FileListBox->verticalScrollBar();
    std::vector<double> times;
    for (int page = 0; page < kPages; ++page)
        times.push_back(Milliseconds([&] {
            bar->setValue(bar->value() + bar->pageStep() * (page % 7 + 1));
            QApplication::processEvents();
        }));
    std::printf("a page of pictures: %.1f ms, the longest of %d: %.1f ms\n", Median(times), kPages,
                *std::max_element(times.begin(), times.end()));
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    const tarn::testing::TestFolder folder;
    const std::string first =
        folder.Write("first.jpg", tarn::testing::JpegBytes(tarn::testing::TellTale(1200, 800)));
    for (int i = 0; i < kFiles; ++i)
        if (::link(first.c_str(),
                   (folder.Path() + "/p" + std::to_string(1000000 + i) + ".jpg").c_str()) != 0)
            std::perror("link");
    std::vector<double> names;
    std::vector<double> pictures;
    for (int round = 0; round < kRounds; ++round) {
        names.push_back(Opening(folder.Path(), false));
        pictures.push_back(Opening(folder.Path(), true));
    }
    std::printf("%d files: first screen of names %.0f ms, of pictures %.0f ms, ratio %.2f\n",
                kFiles, Median(names), Median(pictures), Median(pictures) / Median(names));
    Scrolling(folder.Path());
    return 0;
}
