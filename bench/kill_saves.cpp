// Saves a note 200 times and kills the saving process at a random instant each time: the note must
// be the old one or the new one, whole. Then the same with a note that another program has changed,
// which must not be lost either.
#include "Timing.h"

#include "notes/NoteStore.h"
#include "platform/Files.h"

#include <QStandardPaths>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int kSaves = 200;

std::string Text(int number) {
    std::string text;
    while (text.size() < 200000) text += "note " + std::to_string(number) + "\r\n";
    return text;
}

struct Desk {
    QTemporaryDir home;
    std::unique_ptr<tarn::Files> files;
    std::string folder;
    std::string note;

    Desk() {
        qputenv("HOME", home.path().toLocal8Bit());
        qunsetenv("XDG_DATA_HOME");
        files = tarn::MakeFiles();
        folder = home.path().toStdString() + "/notes";
        fs::create_directory(folder);
        note = folder + "/M31.enf";
    }
    std::string Read(const std::string& path) const {
        return files->Read(path, std::numeric_limits<std::size_t>::max()).value_or("(none)");
    }
    // What stands in the note, beside it, or in the wastebasket.
    bool IsAnywhere(const std::string& text) const {
        std::error_code none;
        for (const std::string& place :
             {folder, home.path().toStdString() + "/.local/share/Trash/files"})
            for (const auto& entry : fs::directory_iterator(place, none))
                if (Read(entry.path().string()) == text) return true;
        return false;
    }
    void Save(const std::string& text, bool changedMeanwhile) const {
        tarn::NoteStore store(*files);
        store.index.SetFolder(folder);
        if (!changedMeanwhile) store.Load(note);
        std::string error;
        if (!store.Save(note, text, &error)) std::_Exit(2);
    }
};

// The saving process, killed so many microseconds after it began; whether it was still at work.
bool KilledAtWork(const Desk& desk, const std::string& text, bool changed, int after) {
    int begun[2];
    if (::pipe(begun) != 0) std::abort();
    const pid_t child = ::fork();
    if (child == 0) {
        if (::write(begun[1], "x", 1) != 1) std::_Exit(3);
        desk.Save(text, changed);
        std::_Exit(0);
    }
    char sign = 0;
    if (::read(begun[0], &sign, 1) != 1) std::abort();
    ::usleep(static_cast<useconds_t>(after));
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(begun[0]);
    ::close(begun[1]);
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0) std::printf("a save failed\n");
    return WIFSIGNALED(status);
}

int Run(const char* what, bool changed) {
    const Desk desk;
    std::vector<double> times;
    for (int i = 0; i < 15; ++i)
        times.push_back(tarn::bench::Milliseconds([&] { desk.Save(Text(-i), changed); }) * 1000);
    const int usual = static_cast<int>(tarn::bench::Median(times));
    std::mt19937 random(20261124);
    std::uniform_int_distribution<int> instant(0, usual * 5 / 4);
    int killed = 0;
    int old = 0;
    int anew = 0;
    int broken = 0;
    for (int i = 1; i <= kSaves; ++i) {
        std::string error;
        if (!desk.files->Write(desk.note, Text(i - 1), &error)) return 1;
        killed += KilledAtWork(desk, Text(i), changed, instant(random));
        const std::string found = desk.Read(desk.note);
        if (found == Text(i))
            ++anew;
        else if (found == Text(i - 1))
            ++old;
        else
            ++broken;
        if (changed && !desk.IsAnywhere(Text(i - 1))) {
            std::printf("save %d: the changed note is lost\n", i);
            ++broken;
        }
    }
    int left = 0;
    for (const auto& entry : fs::directory_iterator(desk.folder)) left += entry.path() != desk.note;
    std::printf("%-28s %d saves of %d microseconds, %d killed at work: %d times the old note, %d "
                "times the new one, %d broken; %d files left beside it\n",
                what, kSaves, usual, killed, old, anew, broken, left);
    return broken;
}

} // namespace

int main() {
    const int broken = Run("note as loaded", false) + Run("note changed meanwhile", true);
    return broken == 0 ? 0 : 1;
}
