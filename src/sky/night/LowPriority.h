// A thread that gives way to all others.
#pragma once

#include <pthread.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tarn {

// The calling thread alone, for its processor and its disk. `name` of at most 15 letters.
inline void BeLowOf(const char* name) {
    constexpr int kLowest = 19;
    constexpr int kThisThread = 1; // of ioprio_set, which has no header of its own
    constexpr int kIdle = 3 << 13;
    ::pthread_setname_np(::pthread_self(), name);
    ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), kLowest);
    ::syscall(SYS_ioprio_set, kThisThread, 0, kIdle);
}

} // namespace tarn
