// A save in a process of its own that is killed at a random instant, many times; what is found
// then.
#pragma once

#include "Timing.h"

#include "platform/Files.h"

#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace tarn::bench {

inline constexpr int kSaves = 200;

// A home of its own, so that the wastebasket is, too.
struct KillDesk {
    QTemporaryDir home;
    std::string folder = home.path().toStdString() + "/work";
    std::unique_ptr<Files> files;

    KillDesk() {
        qputenv("HOME", home.path().toLocal8Bit());
        qunsetenv("XDG_DATA_HOME");
        std::filesystem::create_directory(folder);
        files = MakeFiles();
    }
    std::string Read(const std::string& path) const {
        return files->Read(path, std::numeric_limits<std::size_t>::max()).value_or("(none)");
    }
    void Put(const std::string& path, const std::string& bytes) const {
        std::string error;
        if (files->Write(path, bytes, &error)) return;
        std::printf("%s: %s\n", path.c_str(), error.c_str());
        std::exit(1);
    }
    void EmptyTrash() const {
        std::filesystem::remove_all(home.path().toStdString() + "/.local/share/Trash");
    }
    // These bytes stand in the folder, below it or in the wastebasket.
    bool IsAnywhere(const std::string& bytes) const {
        std::error_code none;
        for (const std::string& place :
             {folder, home.path().toStdString() + "/.local/share/Trash/files"})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(place, none))
                if (entry.is_regular_file() && Read(entry.path().string()) == bytes) return true;
        return false;
    }
    // Files that a killed save has left, by the hidden name that they have until they are placed.
    int Leftovers() const {
        int left = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            left += entry.is_regular_file() &&
                    entry.path().string().find("/.tarn-") != std::string::npos;
        return left;
    }
};

// What stands there after a kill. Partly: some of several files are new, or a page that grows entry
// by entry has its first ones; each byte is where it belongs.
enum class Found { Old, New, Partly, Torn };

// One kind of save; each is numbered.
struct KillSubject {
    const char* name;
    std::function<void(int)> prepare; // what the save before has left
    std::function<void(int)> save;    // in a process of its own
    std::function<Found(int)> look;   // says by itself what is torn or lost
};

// A process that has begun with the save.
inline pid_t Begin(const std::function<void()>& save) {
    int begun[2];
    if (::pipe(begun) != 0) std::abort();
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        if (::write(begun[1], "x", 1) != 1) std::_Exit(3);
        save();
        std::_Exit(0);
    }
    char sign = 0;
    if (::read(begun[0], &sign, 1) != 1) std::abort();
    ::close(begun[0]);
    ::close(begun[1]);
    return child;
}

// Whether the process was ended by the signal: it was still at work.
inline bool Ended(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) != 0) std::printf("a save failed\n");
    return WIFSIGNALED(status);
}

// Prints one line; gives the count of what was torn or lost.
inline int KillSaves(const KillDesk& desk, const KillSubject& subject) {
    std::vector<double> times;
    for (int i = 0; i < 9; ++i) {
        subject.prepare(1);
        times.push_back(Milliseconds([&] { Ended(Begin([&] { subject.save(1); })); }) * 1000);
    }
    const int usual = static_cast<int>(Median(times));
    std::mt19937 random(20261124);
    std::uniform_int_distribution<int> instant(0, usual);
    int killed = 0;
    int counts[4] = {};
    for (int i = 1; i <= kSaves; ++i) {
        desk.EmptyTrash();
        subject.prepare(i);
        const pid_t child = Begin([&] { subject.save(i); });
        ::usleep(static_cast<useconds_t>(instant(random)));
        ::kill(child, SIGKILL);
        killed += Ended(child);
        ++counts[static_cast<int>(subject.look(i))];
    }
    std::printf(
        "%-24s %d saves of %5.1f ms, %3d killed at work: old %3d, new %3d, partly %3d, torn "
        "or lost %d; %d temporary files left\n",
        subject.name, kSaves, usual / 1000.0, killed, counts[0], counts[1], counts[2], counts[3],
        desk.Leftovers());
    return counts[3];
}

} // namespace tarn::bench
