// "tarn dates" over a folder of pictures as a whole process, beside a whole process that opens each
// file, reads 20041 bytes and sets its times. Started again by itself for the bare part.
#include "Timing.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

extern char** environ;

namespace {

constexpr int kFiles = 2600;
constexpr int kRounds = 21;

int BareDating(int count, char** paths) {
    static char record[20041];
    const timespec times[2] = {{1087935330, 0}, {1087935330, 0}};
    for (int i = 0; i < count; ++i) {
        const int file = ::open(paths[i], O_RDWR | O_CLOEXEC);
        if (::read(file, record, sizeof record) < 0 || ::futimens(file, times) != 0) return 1;
        ::close(file);
    }
    return 0;
}

void RunProcess(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = 1;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0)
        ::waitpid(child, &status, 0);
    if (status != 0) std::fprintf(stderr, "%s failed\n", words[0].c_str());
    posix_spawn_file_actions_destroy(&actions);
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1 && std::strcmp(argv[1], "--bare") == 0) return BareDating(argc - 2, argv + 2);
    const tarn::testing::TestFolder folder;
    std::string picture = tarn::testing::CanonPicture();
    picture.resize(60000);
    std::vector<std::string> bare{argv[0], "--bare"};
    for (int i = 0; i < kFiles; ++i)
        bare.push_back(folder.Write("p" + std::to_string(i) + ".jpg", picture));
    const std::vector<std::string> dates{TARN_PROGRAM, "dates", folder.Path()};
    std::vector<double> bareTimes;
    std::vector<double> dateTimes;
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        bareTimes.push_back(tarn::bench::Milliseconds([&] { RunProcess(bare); }));
        dateTimes.push_back(tarn::bench::Milliseconds([&] { RunProcess(dates); }));
        ratios.push_back(dateTimes.back() / bareTimes.back());
    }
    std::printf("open, read 20041 bytes, set times of %d files %7.1f ms\n", kFiles,
                tarn::bench::Median(bareTimes));
    std::printf("tarn dates                                      %7.1f ms   ratio %.2f (goal: at "
                "most 2.0)\n",
                tarn::bench::Median(dateTimes), tarn::bench::Median(ratios));
    return 0;
}
