// Back through a history of 2000 folders: what one step costs beside the bare opening of the same
// folder in a program that has hardly any history, and what a folder entered at the history's
// beginning costs, where 2000 entries move up.
#include "Timing.h"
#include "app/AppDesk.h"

#include "widgets/FolderTreeview.h"

#include <QAction>
#include <QApplication>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

using tarn::kHistoryLimit;
using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::testing::AppDesk;

constexpr int kFolders = 50;
constexpr int kPictures = 20;

std::vector<std::string> MakeFolders(const std::string& root) {
    const std::string picture = tarn::testing::JpegBytes(tarn::testing::TellTale(120, 80));
    std::vector<std::string> folders;
    for (int i = 0; i < kFolders; ++i) {
        folders.push_back(root + "/night" + std::to_string(i));
        std::filesystem::create_directory(folders.back());
        for (int p = 0; p < kPictures; ++p)
            std::ofstream(folders.back() + "/p" + std::to_string(p) + ".jpg", std::ios::binary)
                << picture;
    }
    return folders;
}

void FillHistory(tarn::SelectionState& s, const std::vector<std::string>& folders) {
    for (int entry = 1; entry <= kHistoryLimit; ++entry) {
        const auto at = static_cast<std::size_t>(entry);
        s.HistFolderPath[at] = folders[at % folders.size()];
        s.HistFileIndex[at] = entry % kPictures;
    }
    s.HistHigh = s.HistCur = kHistoryLimit;
}

// The same folder and row without the history.
double Opening(AppDesk& desk, const std::string& folder, int row) {
    return Milliseconds([&] {
        const QScopedValueRollback<bool> quiet(desk.house.state.HistNav, true);
        desk.house.controls.FolderTreeview1->SetSelectedPath(folder);
        desk.house.navigation.ClearMultiselect();
        desk.house.navigation.SelectRow(row);
    });
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    const QTemporaryDir root;
    const auto folders = MakeFolders(root.path().toStdString());
    AppDesk full;
    full.Start(folders[0]);
    AppDesk bare;
    bare.Start(folders[0]);
    FillHistory(full.house.state, folders);

    std::vector<double> back;
    std::vector<double> opening;
    for (int entry = kHistoryLimit - 1; entry >= 1; --entry) {
        const auto at = static_cast<std::size_t>(entry);
        back.push_back(Milliseconds([&] { full.house.navigation.FolderBackButton_Click(); }));
        opening.push_back(Opening(bare, full.house.state.HistFolderPath[at], entry % kPictures));
        if (full.house.state.HistCur != entry) return 1;
    }
    std::printf("folder opened, no history   %8.3f ms\n", Median(opening));
    std::printf("Back through 2000 entries   %8.3f ms   ratio %.2f (goal: the same)\n",
                Median(back), Median(back) / Median(opening));

    std::vector<double> entered;
    for (int round = 0; round < 200; ++round) {
        full.house.state.HistCur = 1;
        entered.push_back(Milliseconds([&] {
            full.house.controls.FolderTreeview1->SetSelectedPath(
                folders[static_cast<std::size_t>(round % kFolders)]);
        }));
    }
    std::printf("entered at entry 2 of 2000  %8.3f ms\n", Median(entered));
    const double listed = Milliseconds([&] { full.house.controls.FileHistoryButton->trigger(); });
    std::printf("history list of 2000 rows   %8.3f ms\n", listed);
    return 0;
}
