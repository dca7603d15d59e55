#include "Besieger.h"

#include "Dice.h"

#include <sys/resource.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

namespace tarn::testing {

namespace {

constexpr int kMostRest = 40; // milliseconds between two deeds

std::vector<pid_t> Children() {
    std::vector<pid_t> children;
    std::error_code none; // threads come and go
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task", none)) {
        std::ifstream list(task.path() / "children");
        for (pid_t child = 0; list >> child;) children.push_back(child);
    }
    return children;
}

void Starve(pid_t process) {
    constexpr rlim_t kLeft = 96U << 20U;
    const rlimit limit{kLeft, kLeft};
    ::prlimit(process, RLIMIT_AS, &limit, nullptr);
}

} // namespace

Besieger::Besieger(std::uint64_t seed) : m_worker([this, seed] { Work(seed); }) {}

Besieger::~Besieger() {
    m_ends = true;
    m_worker.Join();
}

void Besieger::Work(std::uint64_t seed) {
    Dice dice;
    for (std::uint64_t deed = 0; !m_ends; ++deed) {
        dice.Begin(seed, deed);
        std::this_thread::sleep_for(std::chrono::milliseconds(dice.Below(kMostRest)));
        const std::vector<pid_t> children = Children();
        if (children.empty()) continue;
        const pid_t child = dice.Of(children);
        switch (dice.Below(4)) {
        case 0:
            ::kill(child, SIGKILL), ++m_killed;
            break;
        case 1:
            ::kill(child, SIGSTOP), ++m_stopped;
            break;
        case 2:
            Starve(child), ++m_starved;
            break;
        default:
            ::kill(child, SIGCONT);
        }
    }
    for (const pid_t child : Children()) ::kill(child, SIGCONT);
}

} // namespace tarn::testing
