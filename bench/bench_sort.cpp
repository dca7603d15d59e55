// Each order of a list of 50,000 files until it stands, and how long that holds the window up.
#include "Timing.h"
#include "app/AppDesk.h"

#include "navigation/ListOrders.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

namespace {

using tarn::bench::Milliseconds;
using tarn::testing::AppDesk;

constexpr int kFiles = 50000;

std::string NameOf(int number) {
    return "p" + std::to_string(1000000 + number) + (number % 3 == 0 ? ".png" : ".jpg");
}

// Files of their own, so that each is opened as on a card; each order is another one.
struct Folder {
    QTemporaryDir dir;
    explicit Folder(int files) {
        for (int i = 0; i < files; ++i) {
            const int second = i * 7919 % 86400;
            char date[32];
            std::snprintf(date, sizeof date, "2024:%02d:%02d %02d:%02d:%02d", 1 + i % 12,
                          1 + i % 28, second / 3600, second / 60 % 60, second % 60);
            std::ofstream(At(NameOf(i)), std::ios::binary)
                << tarn::testing::Dated(date) << std::string(std::size_t(i * 31 % 1000), ' ');
        }
    }
    std::string At(const std::string& name) const { return Path() + "/" + name; }
    std::string Path() const { return dir.path().toStdString(); }
};

void MarkSome(AppDesk& desk, const Folder& folder) {
    std::vector<std::string> some;
    for (int i = 0; i < kFiles; i += 50) some.push_back(folder.At(NameOf(i)));
    desk.house.marks.SetMarks(some, tarn::Rate(3));
    if (!desk.house.marks.Flush()) std::puts("marks NOT written");
}

void PrintOrders(AppDesk& desk) {
    const auto& kinds = tarn::SortKinds();
    for (std::size_t kind = 1; kind <= kinds.size(); ++kind) {
        const auto row = static_cast<int>(kind % kinds.size()); // by name last
        const auto& list = *desk.c.FileListBox;
        bool stands = false;
        double longest = 0;
        const auto reset = QObject::connect(list.model(), &QAbstractItemModel::modelReset,
                                            [&stands] { stands = true; });
        QElapsedTimer time;
        time.start();
        longest = Milliseconds([&] { emit desk.c.SortCombo->activated(row); });
        while (!stands && time.elapsed() < 20000)
            longest = std::max(longest, Milliseconds([] { QApplication::processEvents(); }));
        std::printf("sorted by %-14s after %6lld ms, the window held up by at most %.1f ms%s\n",
                    kinds[static_cast<std::size_t>(row)].word,
                    static_cast<long long>(time.elapsed()), longest,
                    stands ? "" : " (NOT: the rows are as they were)");
        QObject::disconnect(reset);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    Folder small(3);
    Folder large(kFiles);
    AppDesk desk;
    desk.Start(small.Path());
    desk.house.Open(large.Path());
    while (!desk.house.marks.AllRead()) QApplication::processEvents();
    MarkSome(desk, large);
    PrintOrders(desk);
}
