// The date pass over a folder's files as a whole process, "tarn info --date", beside a whole
// process that only opens each file and reads 20041 bytes. Started again by itself for the bare
// part.
#include "Timing.h"
#include "support/ExifBuilder.h"
#include "support/TestFolder.h"

#include <fcntl.h>
#include <spawn.h>
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

int BareReading(int count, char** paths) {
    static char record[20041];
    long bytes = 0;
    for (int i = 0; i < count; ++i) {
        const int file = ::open(paths[i], O_RDONLY | O_CLOEXEC);
        bytes += ::read(file, record, sizeof record);
        ::close(file);
    }
    return bytes > 0 ? 0 : 1;
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
    if (argc > 1 && std::strcmp(argv[1], "--bare") == 0) return BareReading(argc - 2, argv + 2);
    tarn::testing::TestFolder folder;
    std::string picture = tarn::testing::CanonPicture();
    picture.resize(60000);
    std::vector<std::string> bare{"/proc/self/exe", "--bare"};
    bare[0] = argv[0];
    std::vector<std::string> dates{TARN_PROGRAM, "info", "--date"};
    for (int i = 0; i < kFiles; ++i) {
        const std::string path = folder.Write("p" + std::to_string(i) + ".jpg", picture);
        bare.push_back(path);
        dates.push_back(path);
    }
    std::vector<double> bareTimes;
    std::vector<double> dateTimes;
    std::vector<double> ratios;
    for (int round = 0; round < kRounds; ++round) {
        bareTimes.push_back(tarn::bench::Milliseconds([&] { RunProcess(bare); }));
        dateTimes.push_back(tarn::bench::Milliseconds([&] { RunProcess(dates); }));
        ratios.push_back(dateTimes.back() / bareTimes.back());
    }
    std::printf("open and read 20041 bytes of %d files %7.1f ms\n", kFiles,
                tarn::bench::Median(bareTimes));
    std::printf(
        "tarn info --date                        %7.1f ms   ratio %.2f (goal: at most 1.5)\n",
        tarn::bench::Median(dateTimes), tarn::bench::Median(ratios));
    return 0;
}
