#include "platform/CrashNote.h"

#include "common/dates.h"
#include "common/paths.h"
#include "common/worker.h"
#include "platform/Files.h"

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <optional>
#include <utility>
#include <vector>

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

// At least two digits. Neither this nor what the calendar below does takes memory or a lock.
void PutNumber(int file, unsigned number) {
    std::array<char, 16> text{'0'};
    char* const begin = text.data() + (number < 10 ? 1 : 0);
    *std::to_chars(begin, text.data() + text.size() - 1, number).ptr = '\0';
    Put(file, text.data());
}

void PutTime(int file, std::chrono::sys_seconds when) {
    const auto day = std::chrono::floor<std::chrono::days>(when);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(when - day);
    PutNumber(file, static_cast<unsigned>(static_cast<int>(date.year())));
    for (const auto& [before, value] :
         {std::pair("-", static_cast<unsigned>(date.month())),
          std::pair("-", static_cast<unsigned>(date.day())),
          std::pair(" ", static_cast<unsigned>(time.hours().count())),
          std::pair(":", static_cast<unsigned>(time.minutes().count())),
          std::pair(":", static_cast<unsigned>(time.seconds().count()))}) {
        Put(file, before);
        PutNumber(file, value);
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
    PutTime(file, std::chrono::sys_seconds(std::chrono::seconds(time(nullptr))));
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

// A note that waits for a lock, which the crash has left behind, is given up.
constexpr unsigned kPatience = 5; // seconds

extern "C" void tarn_crash_handler(int signal) {
    if (g_writes.test_and_set())
        for (;;) pause(); // another thread writes, and ends the program
    std::signal(SIGALRM, SIG_DFL);
    alarm(kPatience);
    WriteNote(signal);
    // As if there had never been a handler.
    std::signal(signal, SIG_DFL);
    raise(signal);
}

// A crash may come of a stack that has overflowed: each thread has another for the handler.
struct CrashStack {
    CrashStack() {
        stack_t stack{};
        stack.ss_sp = bytes.data();
        stack.ss_size = bytes.size();
        sigaltstack(&stack, nullptr);
    }
    ~CrashStack() {
        stack_t none{};
        none.ss_flags = SS_DISABLE;
        sigaltstack(&none, nullptr);
    }
    CrashStack(const CrashStack&) = delete;
    CrashStack& operator=(const CrashStack&) = delete;
    std::vector<char> bytes = std::vector<char>(65536);
};

void HaveCrashStack() {
    if (kSanitized) return;
    static thread_local const CrashStack stack;
}

} // namespace

bool KeepCrashNotes(const std::string& folder, const std::string& about) {
    if (kSanitized) return false;
    Keep(g_path, JoinPath(folder, kName));
    Keep(g_about, about);
    void* frames[1];
    backtrace(frames, 1); // its first call loads a library
    HaveCrashStack();
    workerBegins = HaveCrashStack;
    struct sigaction action {};
    action.sa_handler = tarn_crash_handler;
    action.sa_flags = SA_ONSTACK | SA_NODEFER;
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
