#include "history/ThisProcess.h"

#include "platform/OpenRegular.h"

#include <array>

#include <unistd.h>

namespace tarn {

namespace {

std::string TextOf(const std::string& path) {
    std::string fault;
    const OpenFile file(path, fault);
    std::array<char, 4096> text{};
    const ssize_t got = file ? ::pread(file.Number(), text.data(), text.size(), 0) : 0;
    return {text.data(), static_cast<std::size_t>(got > 0 ? got : 0)};
}

// In ticks since the machine started; empty when no such process runs.
std::string StartOf(const std::string& pid) {
    constexpr int kStart = 20; // words behind the name, which may hold anything
    const std::string text = TextOf("/proc/" + pid + "/stat");
    std::size_t at = text.rfind(')');
    for (int word = 0; word < kStart && at != std::string::npos; ++word)
        at = text.find(' ', at + 1);
    if (at == std::string::npos) return {};
    return text.substr(at + 1, text.find(' ', at + 1) - at - 1);
}

std::string Boot() {
    const std::string text = TextOf("/proc/sys/kernel/random/boot_id");
    return text.substr(0, text.find('\n'));
}

std::string NameOf(const std::string& pid) {
    return Boot() + " " + pid + " " + StartOf(pid);
}

} // namespace

std::string ThisProcess() {
    return NameOf(std::to_string(::getpid()));
}

bool IsRunning(const std::string& process) {
    const std::size_t first = process.find(' ');
    const std::size_t second = process.find(' ', first + 1);
    if (second == std::string::npos) return false;
    return NameOf(process.substr(first + 1, second - first - 1)) == process;
}

} // namespace tarn
