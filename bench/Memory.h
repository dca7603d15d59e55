#pragma once

#include <fstream>
#include <unistd.h>

namespace tarn::bench {

inline long ResidentMegabytes() {
    long pages = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * ::sysconf(_SC_PAGESIZE) / (1024 * 1024);
}

} // namespace tarn::bench
