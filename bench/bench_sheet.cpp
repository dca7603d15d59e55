// How long a contact sheet takes beside decoding its pictures at print size: 40 pictures of 24
// megapixels onto one page of 5 x 8. Three ways, in turns: decoding alone, one picture after the
// other; "tarn sheet", a process of its own; the menu command of the window, which loads every
// picture as for the screen.
#include "CameraPicture.h"
#include "Timing.h"
#include "app/AppDesk.h"

#include <QAction>
#include <QApplication>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

using namespace tarn;
using namespace tarn::bench;

namespace {

constexpr int kPictures = 40;
constexpr int kKinds = 4; // different files; the others are copies under other names
constexpr int kRounds = 5;
constexpr QSize kPicture(6000, 4000);
constexpr QSize kCell(313, 208); // 1500 x 998 twips at 300 dots an inch

std::vector<std::string> WritePictures(const std::string& folder) {
    std::vector<std::string> paths;
    for (int i = 0; i < kPictures; ++i) {
        paths.push_back(folder + "/p" + std::to_string(100 + i) + ".jpg");
        if (i < kKinds)
            WriteCameraPicture(paths.back(), kPicture, 90 + i);
        else
            std::filesystem::copy_file(paths[std::size_t(i % kKinds)], paths.back());
    }
    return paths;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    tarn::testing::AppDesk desk;
    const auto paths = WritePictures(desk.folder.Path());
    const std::string pdf = desk.settingsFolder.Path() + "/sheet.pdf";
    const std::string command =
        std::string(TARN_PROGRAM) + " sheet 5x8 " + pdf + " " + desk.folder.Path();
    desk.Start();
    std::vector<double> bare;
    std::vector<double> console;
    std::vector<double> window;
    const auto check = [&pdf](bool done) {
        if (!done || !std::filesystem::remove(pdf)) std::exit(1);
    };
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(Milliseconds([&] {
            for (const std::string& path : paths)
                if (BareDecodeAndScale(path, kCell).isNull()) std::exit(1);
        }));
        console.push_back(Milliseconds([&] { check(std::system(command.c_str()) == 0); }));
        window.push_back(Milliseconds([&] {
            desk.dialogs.answers = {pdf};
            desk.house.controls.PrintCSButton->trigger();
            check(true);
        }));
    }
    std::printf("%d pictures of %d x %d, %d rounds\n", kPictures, kPicture.width(),
                kPicture.height(), kRounds);
    std::printf("decoding at print size  %8.1f ms\n", Median(bare));
    std::printf("tarn sheet              %8.1f ms  ratio %.3f\n", Median(console),
                Median(console) / Median(bare));
    std::printf("in the window           %8.1f ms  ratio %.3f\n", Median(window),
                Median(window) / Median(bare));
    return 0;
}
