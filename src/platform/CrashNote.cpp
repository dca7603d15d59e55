#include "platform/CrashNote.h"

#include "common/dates.h"
#include "common/paths.h"
#include "platform/Files.h"

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <optional>
#include <utility>

namespace tarn {

namespace {

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TARN_SANITIZED
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(TARN_SANITIZED)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

constexpr char kName[] = "crash-note.txt";
constexpr int kSignals[] = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS};
constexpr int kFrames = 64;

// Everything that the handler needs, in place before.
std::array<char, 4096> g_path{};
std::array<char, 16384> g_about{};
std::array<char, 4096> g_file{};
std::array<char, 65536> g_stack{}; // a crash may come of a stack that has overflowed
std::atomic_flag g_writes = ATOMIC_FLAG_INIT;

template <std::size_t N> void Keep(std::array<char, N>& to, std::string_view text) {
    const std::size_t length = std::min(text.size(), N - 1);
    std::memcpy(to.data(), text.data(), length);
    to[length] = '\0';
}

void Put(int file, const char* text) {
    std::size_t left = std::strlen(text);
    while (left > 0) {
        const ssize_t done = write(file, text, left);
        if (done <= 0) return;
        text += done;
        left -= static_cast<std::size_t>(done);
    }
}

void PutNumber(int file, std::int64_t number, int digits) {
    char text[24];
    char* at = text + sizeof text - 1;
    *at = '\0';
    for (int i = 0; i < digits || number > 0; ++i, number /= 10)
        *--at = static_cast<char>('0' + number % 10);
    Put(file, at);
}

// The date of a day since 1970, by arithmetic alone; years are counted from March.
void PutTime(int file, std::int64_t seconds) {
    constexpr std::int64_t kDay = 86400;
    const std::int64_t days = seconds / kDay + 719468;
    const std::int64_t era = days / 146097;
    const std::int64_t inEra = days % 146097;
    const std::int64_t year = (inEra - inEra / 1460 + inEra / 36524 - inEra / 146096) / 365;
    const std::int64_t inYear = inEra - (365 * year + year / 4 - year / 100);
    const std::int64_t fromMarch = (5 * inYear + 2) / 153;
    const std::int64_t month = fromMarch < 10 ? fromMarch + 3 : fromMarch - 9;
    PutNumber(file, year + era * 400 + (month <= 2 ? 1 : 0), 4);
    Put(file, "-");
    PutNumber(file, month, 2);
    Put(file, "-");
    PutNumber(file, inYear - (153 * fromMarch + 2) / 5 + 1, 2);
    for (const auto& [before, value] :
         {std::pair<const char*, std::int64_t>{" ", seconds % kDay / 3600},
          {":", seconds % 3600 / 60},
          {":", seconds % 60}}) {
        Put(file, before);
        PutNumber(file, value, 2);
    }
    Put(file, " UTC");
}

const char* SignalName(int signal) {
    switch (signal) {
    case SIGSEGV:
        return "SIGSEGV, memory that is not there";
    case SIGABRT:
        return "SIGABRT, given up by the program or a library";
    case SIGFPE:
        return "SIGFPE, arithmetic";
    case SIGILL:
        return "SIGILL, no instruction";
    case SIGBUS:
        return "SIGBUS, memory or a mapped file that went away";
    default:
        return "unknown";
    }
}

void WriteNote(int signal) {
    const int file = open(g_path.data(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) return;
    Put(file, "Tarn_View ended by a crash.\n\nTime     ");
    PutTime(file, time(nullptr));
    Put(file, "\nSignal   ");
    Put(file, SignalName(signal));
    Put(file, "\nFile     ");
    Put(file, g_file[0] ? g_file.data() : "none");
    Put(file, "\n\n");
    Put(file, g_about.data());
    Put(file, "\nWhere it was:\n");
    void* frames[kFrames];
    backtrace_symbols_fd(frames, backtrace(frames, kFrames), file);
    close(file);
}

extern "C" void tarn_crash_handler(int signal) {
    const int error = errno;
    if (!g_writes.test_and_set()) WriteNote(signal);
    errno = error;
    // The handler has been reset by now: this ends the program as if it had never been there.
    raise(signal);
}

} // namespace

bool KeepCrashNotes(const std::string& folder, const std::string& about) {
    if (kSanitized) return false;
    Keep(g_path, JoinPath(folder, kName));
    Keep(g_about, about);
    void* frames[1];
    backtrace(frames, 1); // its first call loads a library
    stack_t stack{};
    stack.ss_sp = g_stack.data();
    stack.ss_size = g_stack.size();
    sigaltstack(&stack, nullptr);
    struct sigaction action {};
    action.sa_handler = tarn_crash_handler;
    action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND) | SA_NODEFER;
    for (const int signal : kSignals) sigaction(signal, &action, nullptr);
    return true;
}

void SetCrashFile(std::string_view path) {
    Keep(g_file, path);
}

std::string TakeCrashNote(Files& files, const std::string& folder) {
    const std::string left = JoinPath(folder, kName);
    const auto when = files.Exists(left) ? files.ModifiedTime(left, nullptr) : std::nullopt;
    if (!when) return {};
    const DateTime day = FromFileTime(*when);
    std::array<char, 64> name{};
    std::snprintf(name.data(), name.size(), "crash-%04d%02d%02d-%02d%02d%02d", day.year, day.month,
                  day.day, day.hour, day.minute, day.second);
    const std::string stem = JoinPath(folder, name.data());
    std::string kept = stem + ".txt";
    for (int i = 2; i < 100 && files.Exists(kept); ++i)
        kept = stem + "-" + std::to_string(i) + ".txt";
    return files.Rename(left, kept, nullptr) ? kept : left;
}

} // namespace tarn
