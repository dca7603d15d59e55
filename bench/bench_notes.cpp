// What notes cost: opening a large folder with note marks beside the same without, and a step with
// many notes in the notes folder beside one with few.
#include "Timing.h"
#include "app/AppDesk.h"

#include <QApplication>
#include <QComboBox>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

using tarn::bench::Median;
using tarn::bench::Milliseconds;
using tarn::testing::AppDesk;

std::string NameOf(int number, const char* extension) {
    return "p" + std::to_string(1000000 + number) + extension;
}

// So many names of one file.
void Fill(const std::string& folder, int count, const char* extension, const std::string& bytes) {
    const std::string first = folder + "/.first";
    std::ofstream(first, std::ios::binary) << bytes;
    for (int i = 0; i < count; ++i)
        if (::link(first.c_str(), (folder + "/" + NameOf(i, extension)).c_str()))
            std::perror("link");
}

struct Folder {
    QTemporaryDir dir;
    Folder(int count, const char* extension, const std::string& bytes) {
        Fill(Path(), count, extension, bytes);
    }
    std::string Path() const { return dir.path().toStdString(); }
};

double OpenTime(AppDesk& desk, const std::string& folder, const std::string& other,
                bool readNotesFolder = false) {
    desk.house.Open(other);
    QApplication::processEvents();
    if (readNotesFolder) desk.house.notes.NoteFilesChanged();
    return Milliseconds([&] {
        desk.house.Open(folder);
        desk.house.window.repaint();
        QApplication::processEvents();
    });
}

void Openings(const std::string& small, const std::string& large, const std::string& notes) {
    AppDesk without;
    without.Start(small);
    AppDesk with;
    with.settings->Write("notes_folder", notes);
    with.Start(small);
    std::vector<double> plain;
    std::vector<double> marked;
    for (int round = 0; round < 9; ++round) {
        plain.push_back(OpenTime(without, large, small));
        marked.push_back(OpenTime(with, large, small));
    }
    std::printf("open folder of 50000, no notes folder  %8.1f ms\n", Median(plain));
    std::printf("  with marks, 50000 notes               %8.1f ms   ratio %.2f (goal: 1.3)\n",
                Median(marked), Median(marked) / Median(plain));
    std::vector<double> first;
    for (int round = 0; round < 5; ++round) first.push_back(OpenTime(with, large, small, true));
    std::printf("  and with the notes folder read        %8.1f ms   ratio %.2f\n", Median(first),
                Median(first) / Median(plain));
    with.house.notes.NoteFilterCombo_Click(1);
    std::vector<double> chosen;
    for (int round = 0; round < 5; ++round) chosen.push_back(OpenTime(with, large, small));
    std::printf("  only files with a note                %8.1f ms   ratio %.2f\n", Median(chosen),
                Median(chosen) / Median(plain));
}

double StepTime(AppDesk& desk) {
    std::vector<double> times;
    for (int i = 0; i < 20; ++i) times.push_back(Milliseconds([&] { desk.Key(Qt::Key_N); }));
    return Median(times);
}

void Steps(const std::string& pictures, const std::string& few, const std::string& many,
           const char* what) {
    AppDesk one;
    one.settings->Write("notes_folder", few);
    one.Start(pictures);
    AppDesk other;
    other.settings->Write("notes_folder", many);
    other.Start(pictures);
    std::vector<double> ofFew;
    std::vector<double> ofMany;
    for (int round = 0; round < 9; ++round) {
        ofFew.push_back(StepTime(one));
        ofMany.push_back(StepTime(other));
    }
    std::printf("step to pictures %s note, 50 notes     %8.3f ms\n", what, Median(ofFew));
    std::printf(
        "                              50000 notes  %8.3f ms   ratio %.2f (goal: the same)\n",
        Median(ofMany), Median(ofMany) / Median(ofFew));
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    const QApplication application(argc, argv);
    const std::string picture = tarn::testing::JpegBytes(tarn::testing::TellTale(120, 80));
    const std::string note = "M31\r\nTelescope: 80 mm refractor\r\nDate: 24-Nov-2026";
    const Folder small(50, ".jpg", picture);
    const Folder large(50000, ".jpg", picture);
    const Folder bare(50, "_without.jpg", picture);
    const Folder few(50, ".enf", note);
    const Folder many(50000, ".enf", note);
    Openings(small.Path(), large.Path(), many.Path());
    Steps(small.Path(), few.Path(), many.Path(), "with a");
    Steps(bare.Path(), few.Path(), many.Path(), "without");
    return 0;
}
