#include "platform/DecodeBudget.h"

#include "common/stop_flag.h"
#include "common/worker.h"

#include <algorithm>
#include <chrono>

#include <unistd.h>

namespace tarn {

namespace {

constexpr auto kLook = std::chrono::milliseconds(10); // at the flags, while waiting
constexpr int kUsualPercent = 50;
constexpr int kLeastPercent = 5;
constexpr int kMostPercent = 90;

thread_local const std::atomic<bool>* hurryOfThread = nullptr;

bool IsHurried() {
    return hurryOfThread && hurryOfThread->load(std::memory_order_relaxed);
}

long long MachineMemory(int percent) {
    return static_cast<long long>(::sysconf(_SC_PHYS_PAGES)) * ::sysconf(_SC_PAGESIZE) / 100 *
           percent;
}

} // namespace

bool DecodeBudget::HasRoom(const Part& part, long long bytes) const {
    const long long all = &part == &m_small ? m_bytes / 4 : m_bytes / 4 * 3;
    return part.taken == 0 || part.taken + bytes <= all;
}

bool DecodeBudget::Take(long long bytes) {
    std::unique_lock lock(m_mutex);
    Part& part = PartFor(bytes);
    if (IsWorkerThread() && !IsHurried() && !(part.waiting.empty() && HasRoom(part, bytes))) {
        part.waiting.push_back(&lock);
        const auto goes = [&] {
            return IsStopped() || IsHurried() ||
                   (part.waiting.front() == &lock && HasRoom(part, bytes));
        };
        while (!m_changed.wait_for(lock, kLook, goes)) {
        }
        std::erase(part.waiting, &lock);
        m_changed.notify_all();
    }
    if (IsStopped()) return false;
    part.taken += bytes;
    return true;
}

void DecodeBudget::GiveBack(long long bytes) {
    {
        const std::lock_guard lock(m_mutex);
        PartFor(bytes).taken -= bytes;
    }
    m_changed.notify_all();
}

long long DecodeBudget::Bytes() const {
    const std::lock_guard lock(m_mutex);
    return m_bytes;
}

void DecodeBudget::SetBytes(long long bytes) {
    const std::lock_guard lock(m_mutex);
    m_bytes = bytes;
}

long long DecodeBudget::Taken() const {
    const std::lock_guard lock(m_mutex);
    return m_small.taken + m_large.taken;
}

DecodeBudget& TheDecodeBudget() {
    static DecodeBudget budget(MachineMemory(kUsualPercent));
    return budget;
}

void SetDecodeMemory(int percent) {
    TheDecodeBudget().SetBytes(MachineMemory(std::clamp(percent, kLeastPercent, kMostPercent)));
}

MayHurry::MayHurry(const std::atomic<bool>& flag) {
    hurryOfThread = &flag;
}

MayHurry::~MayHurry() {
    hurryOfThread = nullptr;
}

} // namespace tarn
