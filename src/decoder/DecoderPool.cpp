#include "decoder/DecoderPool.h"

#include "common/file_look.h"
#include "common/stop_flag.h"
#include "platform/Modules.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include <sys/syscall.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr int kMostStarts = 3; // in a row that come to nothing before there is said to be none
constexpr auto kSlice = std::chrono::milliseconds(5);
constexpr std::size_t kMostGivenUp = 100'000; // files

// The window's own thread does not wait until others are through.
bool IsFirstThread() {
    return ::getpid() == static_cast<pid_t>(::syscall(SYS_gettid));
}

class DecoderPool {
public:
    static DecoderPool& Get() {
        static auto* const kPool = new DecoderPool; // threads ask it to the very end
        return *kPool;
    }

    void Use(const DecoderUse& use);
    void StartAhead(DecoderKind kind);
    std::optional<DecoderAnswer> Ask(const DecoderRequest& request, int file,
                                     const IsRight& isRight);
    std::string Protection();

private:
    using Loan = std::unique_ptr<Decoder>;

    bool IsUsable() const {
        if (m_use.threads <= 0 || m_use.program.empty()) return false;
        return m_rights || m_failed < kMostStarts;
    }
    Loan Borrow(DecoderKind kind);
    Loan TakeIdle(DecoderKind kind, bool low);
    int Count(bool low) const;
    void DropIdle(bool low);
    void GiveBack(Loan loan, bool usable);
    bool IsGivenUp(const FileLook& look);
    void GiveUp(const FileLook& look);

    std::mutex m_mutex;
    std::condition_variable m_returned;
    DecoderUse m_use;
    // Those of threads that give way, and all others: neither keep the other ones waiting.
    std::array<int, 2> m_busy{};
    int m_failed = 0;                      // starts in a row that came to nothing
    std::optional<std::uint32_t> m_rights; // given up by the first process
    std::vector<Loan> m_idle;
    std::vector<FileLook> m_givenUp;
};

void DecoderPool::Use(const DecoderUse& use) {
    const std::lock_guard lock(m_mutex);
    m_idle.clear();
    m_givenUp.clear();
    m_use = use;
    m_failed = 0;
    m_rights.reset();
}

void DecoderPool::StartAhead(DecoderKind kind) {
    const std::lock_guard lock(m_mutex);
    const bool low = IsLowThread();
    const bool there = std::any_of(m_idle.begin(), m_idle.end(), [&](const Loan& each) {
        return each->Kind() == kind && each->IsLow() == low;
    });
    if (there || !IsUsable() || Count(low) > m_use.threads) return;
    if (auto started = Decoder::Start(m_use.program, kind)) m_idle.push_back(std::move(started));
}

// What died meanwhile died of no file.
DecoderPool::Loan DecoderPool::TakeIdle(DecoderKind kind, bool low) {
    std::erase_if(m_idle, [](const Loan& each) { return !each->IsAlive(); });
    const auto found = std::find_if(m_idle.rbegin(), m_idle.rend(), [&](const Loan& each) {
        return each->Kind() == kind && each->IsLow() == low;
    });
    if (found == m_idle.rend()) return nullptr;
    Loan taken = std::move(*found);
    m_idle.erase(std::next(found).base());
    return taken;
}

int DecoderPool::Count(bool low) const {
    return m_busy[low] + int(std::count_if(m_idle.begin(), m_idle.end(), [low](const Loan& each) {
               return each->IsLow() == low;
           }));
}

// The one that has been idle longest.
void DecoderPool::DropIdle(bool low) {
    const auto first = std::find_if(m_idle.begin(), m_idle.end(),
                                    [low](const Loan& each) { return each->IsLow() == low; });
    if (first != m_idle.end()) m_idle.erase(first);
}

// Null where none can be had.
DecoderPool::Loan DecoderPool::Borrow(DecoderKind kind) {
    const int most = IsFirstThread() ? m_use.threads + 1 : m_use.threads;
    const bool low = IsLowThread();
    std::unique_lock lock(m_mutex);
    while (m_busy[low] >= most && IsUsable() && !IsStopped()) m_returned.wait_for(lock, kSlice);
    if (!IsUsable() || IsStopped()) return nullptr;
    ++m_busy[low];
    Loan loan = TakeIdle(kind, low);
    if (loan) return loan;
    if (Count(low) > m_use.threads + 1) DropIdle(low);
    loan = Decoder::Start(m_use.program, kind);
    if (!loan) {
        --m_busy[low];
        ++m_failed;
    }
    return loan;
}

void DecoderPool::GiveBack(Loan loan, bool usable) {
    const DecoderKind kind = loan->Kind();
    {
        const std::lock_guard lock(m_mutex);
        --m_busy[loan->IsLow()];
        if (loan->HasGreeted()) {
            m_failed = 0;
            m_rights = loan->Rights();
        } else if (!usable) {
            ++m_failed;
        }
        if (usable) m_idle.push_back(std::move(loan));
    }
    m_returned.notify_all();
    if (!usable) StartAhead(kind); // ahead of the next file
}

bool DecoderPool::IsGivenUp(const FileLook& look) {
    const std::lock_guard lock(m_mutex);
    return std::any_of(m_givenUp.begin(), m_givenUp.end(),
                       [&](const FileLook& each) { return each.IsSameContent(look); });
}

void DecoderPool::GiveUp(const FileLook& look) {
    const std::lock_guard lock(m_mutex);
    if (m_givenUp.size() == kMostGivenUp) m_givenUp.clear();
    m_givenUp.push_back(look);
}

DecoderAnswer Failed(const char* error) {
    DecoderAnswer answer;
    answer.error = error;
    return answer;
}

std::optional<DecoderAnswer> DecoderPool::Ask(const DecoderRequest& request, int file,
                                              const IsRight& isRight) {
    int seconds = SecondsFor(request.head.format);
    {
        const std::lock_guard lock(m_mutex);
        if (!IsUsable()) return std::nullopt;
        if (m_use.seconds > 0) seconds = m_use.seconds;
    }
    struct stat facts {};
    if (::fstat(file, &facts) != 0) return std::nullopt;
    const FileLook look = LookOf(facts);
    if (IsGivenUp(look)) return Failed(kGaveUp);
    bool died = false; // of this file
    for (int tries = 0; tries < kMostStarts; ++tries) {
        Loan loan = Borrow(KindFor(request.head.format));
        if (IsStopped()) {
            if (loan) GiveBack(std::move(loan), true);
            return Failed(kBrokenOff);
        }
        if (!loan) break;
        DecoderAnswer answer;
        Decoder::End end = loan->Ask(request, file, seconds, answer);
        if (end == Decoder::End::Answered && !isRight(answer)) end = Decoder::End::Died;
        const bool greeted = loan->HasGreeted();
        GiveBack(std::move(loan), end == Decoder::End::Answered);
        if (end == Decoder::End::Answered) return answer;
        if (end == Decoder::End::Stopped) return Failed(kBrokenOff);
        if (!greeted) continue; // the file was not looked at
        if (end == Decoder::End::Died && !died) {
            died = true;
            continue;
        }
        GiveUp(look);
        return Failed(kGaveUp);
    }
    // Once there were processes a want of them opens no other way.
    const std::lock_guard lock(m_mutex);
    return m_rights ? std::optional(Failed(kNotStarted)) : std::nullopt;
}

std::string DecoderPool::Protection() {
    const std::lock_guard lock(m_mutex);
    if (!IsUsable()) return "none: files are read within the program";
    std::string text = "a process of its own";
    for (const Loan& each : m_idle)
        if (each->HasGreeted() || each->LookForHello()) m_rights = each->Rights();
    if (!m_rights) return text + ", not needed yet";
    if ((*m_rights & kCallsFiltered) != 0) text += ", system calls filtered";
    if ((*m_rights & kFilesRefused) != 0) text += ", files and network closed";
    if ((*m_rights & kMemoryLimited) != 0) text += ", memory limited";
    return text;
}

} // namespace

void UseDecoders() {
    const auto threads = int(std::clamp(std::thread::hardware_concurrency(), 2U, 8U));
    UseDecoders({threads, HelperPath("tarn-decoder"), 0});
}

void UseDecoders(const DecoderUse& use) {
    DecoderPool::Get().Use(use);
}

void StartDecoderAhead() {
    DecoderPool::Get().StartAhead(DecoderKind::Pictures);
}

std::optional<DecoderAnswer> AskDecoder(const DecoderRequest& request, int file,
                                        const IsRight& isRight) {
    return DecoderPool::Get().Ask(request, file, isRight);
}

std::string DecoderProtection() {
    return DecoderPool::Get().Protection();
}

} // namespace tarn
