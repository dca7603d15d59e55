#include "decoder/program/Rights.h"

#include "decoder/Protocol.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tarn {

namespace {

// The sanitizers' own memory is without bounds, and what they write at a fault is wanted.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

constexpr rlim_t kMostFiles = 64;

bool Limit(__rlimit_resource what, rlim_t most) {
    const rlimit limit{most, most};
    return ::setrlimit(what, &limit) == 0;
}

bool LimitMemory() {
    Limit(RLIMIT_CORE, 0);
    Limit(RLIMIT_NOFILE, kMostFiles);
    const long long half = 1LL * ::sysconf(_SC_PHYS_PAGES) * ::sysconf(_SC_PAGESIZE) / 2;
    return !kSanitized && half > 0 && Limit(RLIMIT_AS, rlim_t(half)) &&
           Limit(RLIMIT_FSIZE, rlim_t(half));
}

// Where memory runs out, the system ends this process and not the window.
void OfferItself() {
    const int file = ::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC);
    if (file < 0) return;
    [[maybe_unused]] const ssize_t written = ::write(file, "800", 3);
    ::close(file);
}

// Everything that the kernel knows to refuse of files and the network, by rules without exception.
bool RefuseFiles() {
    constexpr std::uint64_t kEveryKernel = (1ULL << 13U) - 1;
    constexpr std::uint64_t kRefer = 1ULL << 13U;
    constexpr std::uint64_t kTruncate = 1ULL << 14U;
    constexpr std::uint64_t kDevices = 1ULL << 15U;
    constexpr std::uint64_t kConnections = 3; // to bind and to connect
    constexpr std::uint64_t kScopes = 3;      // abstract sockets and signals
    struct {
        std::uint64_t files = kEveryKernel;
        std::uint64_t network = 0;
        std::uint64_t scoped = 0;
    } rules;
    const long version =
        ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) return false;
    if (version >= 2) rules.files |= kRefer;
    if (version >= 3) rules.files |= kTruncate;
    if (version >= 4) rules.network = kConnections;
    if (version >= 5) rules.files |= kDevices;
    if (version >= 6) rules.scoped = kScopes;
    const std::size_t size = version >= 6 ? sizeof rules : version >= 4 ? 16 : 8;
    const long set = ::syscall(SYS_landlock_create_ruleset, &rules, size, 0);
    if (set < 0) return false;
    const bool held = ::syscall(SYS_landlock_restrict_self, set, 0) == 0;
    ::close(int(set));
    return held;
}

struct Release {
    void operator()(void* filter) const { seccomp_release(filter); }
};

class Filter {
public:
    Filter() : m_filter(seccomp_init(SCMP_ACT_ERRNO(EACCES))) {
        m_right = m_filter && seccomp_attr_set(Get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0;
    }

    void Allow(int call) { Add(SCMP_ACT_ALLOW, call, {}); }
    void Allow(int call, std::initializer_list<scmp_arg_cmp> when) {
        Add(SCMP_ACT_ALLOW, call, when);
    }
    void Refuse(int call, int code) { Add(SCMP_ACT_ERRNO(std::uint32_t(code)), call, {}); }
    bool Load() { return m_right && seccomp_load(Get()) == 0; }

private:
    scmp_filter_ctx Get() { return m_filter.get(); }
    void Add(std::uint32_t action, int call, std::initializer_list<scmp_arg_cmp> when) {
        m_right = m_right && seccomp_rule_add_array(Get(), action, call, unsigned(when.size()),
                                                    when.begin()) == 0;
    }

    std::unique_ptr<void, Release> m_filter;
    bool m_right = false;
};

// A number that a call is given, and what it has to be.
scmp_arg_cmp Is(unsigned place, std::uint64_t value) {
    return {place, SCMP_CMP_EQ, value, 0};
}
scmp_arg_cmp Has(unsigned place, std::uint64_t bits) {
    return {place, SCMP_CMP_MASKED_EQ, bits, bits};
}
scmp_arg_cmp HasNot(unsigned place, std::uint64_t bits) {
    return {place, SCMP_CMP_MASKED_EQ, bits, 0};
}

// Reading and writing what is open, its own memory, threads, time. All else, and all calls that no
// one has thought of yet, answer that they are not allowed.
constexpr std::array kCalls{
    SCMP_SYS(read),
    SCMP_SYS(readv),
    SCMP_SYS(pread64),
    SCMP_SYS(preadv),
    SCMP_SYS(write),
    SCMP_SYS(writev),
    SCMP_SYS(pwrite64),
    SCMP_SYS(lseek),
    SCMP_SYS(close),
    SCMP_SYS(fstat),
    SCMP_SYS(dup),
    SCMP_SYS(fadvise64),
    SCMP_SYS(ftruncate),
    SCMP_SYS(memfd_create),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(madvise),
    SCMP_SYS(brk),
    SCMP_SYS(futex),
    SCMP_SYS(eventfd2), // with which the toolkit wakes its threads
    SCMP_SYS(pipe2),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(rseq),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(getpid),
    SCMP_SYS(gettid),
    SCMP_SYS(getuid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getegid),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(nanosleep),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(time),
    SCMP_SYS(alarm),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(getrandom),
    SCMP_SYS(sysinfo),
    SCMP_SYS(uname),
    SCMP_SYS(getrusage),
    SCMP_SYS(getcpu),
};

void AllowWithin(Filter& filter) {
    filter.Allow(SCMP_SYS(mmap), {HasNot(2, PROT_EXEC)});
    filter.Allow(SCMP_SYS(mprotect), {HasNot(2, PROT_EXEC)});
    filter.Allow(SCMP_SYS(sendmsg), {Is(0, kDecoderSocket)});
    filter.Allow(SCMP_SYS(recvmsg), {Is(0, kDecoderSocket)});
    for (const int command : {F_GETFD, F_GETFL, F_SETFD, F_DUPFD_CLOEXEC, F_ADD_SEALS, F_GET_SEALS})
        filter.Allow(SCMP_SYS(fcntl), {Is(1, std::uint64_t(command))});
    // What is open, by its number, and not by a name.
    const scmp_arg_cmp number{0, SCMP_CMP_LT, kMostFiles, 0};
    filter.Allow(SCMP_SYS(newfstatat), {number, Has(3, AT_EMPTY_PATH)});
    filter.Allow(SCMP_SYS(statx), {number, Has(2, AT_EMPTY_PATH)});
    // Threads, and no processes. The other call hides its flags from the filter.
    filter.Allow(SCMP_SYS(clone), {Has(0, CLONE_THREAD | CLONE_VM)});
    filter.Refuse(SCMP_SYS(clone3), ENOSYS);
    filter.Allow(SCMP_SYS(prctl), {Is(0, PR_SET_NAME)});
    filter.Allow(SCMP_SYS(prlimit64), {Is(0, 0), Is(2, 0)}); // only asked
    filter.Allow(SCMP_SYS(tgkill), {Is(0, std::uint64_t(::getpid()))});
}

bool FilterCalls() {
    Filter filter;
    for (const int call : kCalls) filter.Allow(call);
    AllowWithin(filter);
    if (kSanitized) filter.Allow(SCMP_SYS(pipe)); // to look at memory
    return filter.Load();
}

} // namespace

std::uint32_t GiveUpRights() {
    OfferItself();
    std::uint32_t rights = LimitMemory() ? kMemoryLimited : 0;
    ::prctl(PR_SET_DUMPABLE, 0);
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return rights;
    if (RefuseFiles()) rights |= kFilesRefused;
    if (FilterCalls()) rights |= kCallsFiltered;
    return rights;
}

} // namespace tarn
