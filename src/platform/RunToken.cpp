#include "platform/RunToken.h"

#include "common/paths.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <vector>

#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kDigits = 8;
constexpr std::size_t kOfMachine = 3 * kDigits + 3; // with the lines behind

std::string TextOf(const char* path) {
    std::string fault;
    const OpenFile file(path, fault);
    char text[64] = {};
    const ssize_t got = file ? ::pread(file.Number(), text, sizeof text, 0) : 0;
    return {text, std::size_t(std::max<ssize_t>(0, got))};
}

std::string Namespace() {
    char text[64] = {};
    const ssize_t got = ::readlink("/proc/self/ns/pid", text, sizeof text);
    return {text, std::size_t(std::max<ssize_t>(0, got))};
}

// No one learns the machine's own number from it.
std::string Short(const std::string& text) {
    std::uint32_t hash = 2166136261U;
    for (const char letter : text) hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
    char digits[kDigits + 1];
    std::snprintf(digits, sizeof digits, "%08x", static_cast<unsigned>(hash));
    return digits;
}

const std::string& Machine() {
    static const std::string kText = Short(TextOf("/etc/machine-id")) + "-";
    return kText;
}

const std::string& Boot() {
    static const std::string kText = Short(TextOf("/proc/sys/kernel/random/boot_id")) + "-";
    return kText;
}

// Within which the numbers of processes count.
const std::string& Numbers() {
    static const std::string kText = Short(Namespace()) + "-";
    return kText;
}

bool IsAlive(int process) {
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

} // namespace

const std::string& RunToken() {
    // Not of the process that has forked this one.
    thread_local std::string text;
    text = Machine() + Boot() + Numbers() + std::to_string(::getpid());
    return text;
}

bool IsOfEndedRun(std::string_view token) {
    static const bool kIsKnown = !TextOf("/etc/machine-id").empty();
    if (!kIsKnown || token.size() <= kOfMachine || !token.starts_with(Machine())) return false;
    int process = 0;
    const char* end = token.data() + token.size();
    const auto [rest, fault] = std::from_chars(token.data() + kOfMachine, end, process);
    if (fault != std::errc() || process <= 0 || (rest != end && *rest != '-')) return false;
    if (token.substr(kDigits + 1, kDigits + 1) != Boot()) return true;
    return token.substr(2 * (kDigits + 1), kDigits + 1) == Numbers() && !IsAlive(process);
}

void SweepBeside(const std::string& folder) {
    std::vector<std::string> left;
    std::error_code code;
    for (std::filesystem::directory_iterator at(folder, code), end; !code && at != end;
         at.increment(code)) {
        const std::string name = at->path().filename().string();
        if (name.starts_with(kBeside) &&
            IsOfEndedRun(std::string_view(name).substr(kBeside.size())))
            left.push_back(at->path().string());
    }
    for (const std::string& path : left) ::unlink(path.c_str());
}

} // namespace tarn
