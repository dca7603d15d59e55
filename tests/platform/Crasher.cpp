// Ends by a crash: crasher FOLDER KIND. 77 where crashes are left to the sanitizers.
#include "common/worker.h"
#include "platform/CrashNote.h"

#include <csignal>
#include <cstdlib>
#include <cstring>

namespace {

int Deeper(volatile int* above) {
    volatile int here[256] = {*above + 1};
    return here[0] < 0 ? 0 : Deeper(here) + here[1]; // the stack ends long before
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    if (!tarn::KeepCrashNotes(argv[1], "Tarn_View 9.9\nlibfault 1.2\n")) return 77;
    tarn::SetCrashFile("/pictures/M31 before.fits");
    tarn::SetCrashFile("/pictures/M31.fits");
    volatile int depth = 0;
    if (std::strcmp(argv[2], "null") == 0) *static_cast<volatile int*>(nullptr) = 1;
    if (std::strcmp(argv[2], "stack") == 0) return Deeper(&depth);
    if (std::strcmp(argv[2], "abort") == 0) std::abort();
    if (std::strcmp(argv[2], "thread") == 0) {
        tarn::Worker worker([&] { Deeper(&depth); });
        worker.Join();
    }
    if (std::strcmp(argv[2], "two") == 0) {
        const tarn::Worker other([] { std::raise(SIGFPE); });
        std::raise(SIGFPE);
    }
    std::raise(std::atoi(argv[2]));
    return 0;
}
