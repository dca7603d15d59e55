#include "decoder/Decoder.h"

#include "common/stop_flag.h"
#include "common/utf8.h"
#include "decoder/Packets.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstring>
#include <mutex>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr int kSlice = 5; // milliseconds between two looks at the stop flag

std::int64_t Now() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// The system takes down a large process in its own time, and nobody waits for it.
void Reap(pid_t ended) {
    static std::mutex mutex;
    static std::vector<pid_t> left;
    const std::lock_guard lock(mutex);
    if (ended > 0) left.push_back(ended);
    std::erase_if(left, [](pid_t each) { return ::waitpid(each, nullptr, WNOHANG) != 0; });
}

// The process gets its socket, three times nothing, and no other file; no variables but those that
// keep the toolkit's texts in UTF-8 and give pictures large pages, which pays for their way here.
pid_t Spawn(const std::string& program, DecoderKind kind, int socket) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, socket, kDecoderSocket);
    for (int i = 0; i < kDecoderSocket; ++i)
        posix_spawn_file_actions_addopen(&actions, i, "/dev/null", O_RDWR, 0);
    posix_spawn_file_actions_addclosefrom_np(&actions, kDecoderSocket + 1);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    std::string name = program;
    std::string argument = kind == DecoderKind::Clips ? "clips" : "pictures";
    std::string locale = "LC_ALL=C.UTF-8";
    std::string pages = "GLIBC_TUNABLES=glibc.malloc.hugetlb=1";
    char* const argv[] = {name.data(), argument.data(), nullptr};
    std::string loop = "QT_NO_GLIB=1"; // whose event loop wants more rights
    char* const variables[] = {locale.data(), pages.data(), loop.data(), nullptr};
    pid_t process = -1;
    if (::posix_spawn(&process, program.c_str(), &actions, &attributes, argv, variables) != 0)
        process = -1;
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

} // namespace

bool IsLowThread() {
    return ::getpriority(PRIO_PROCESS, static_cast<id_t>(::gettid())) >
           ::getpriority(PRIO_PROCESS, static_cast<id_t>(::getpid()));
}

std::unique_ptr<Decoder> Decoder::Start(const std::string& program, DecoderKind kind) {
    Reap(0);
    int sockets[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, sockets) != 0) return nullptr;
    const pid_t process = Spawn(program, kind, sockets[1]);
    ::close(sockets[1]);
    if (process > 0) return std::unique_ptr<Decoder>(new Decoder(kind, sockets[0], process));
    ::close(sockets[0]);
    return nullptr;
}

Decoder::~Decoder() {
    ::kill(m_process, SIGKILL);
    ::close(m_socket);
    Reap(m_process);
}

// A place in the file that both have in common is left where it was.
Decoder::End Decoder::Ask(const DecoderRequest& request, int file, int seconds,
                          DecoderAnswer& answer) {
    const std::int64_t until = Now() + 1000LL * seconds;
    const off_t place = ::lseek(file, 0, SEEK_CUR);
    RequestHead head = request.head;
    head.payload = std::uint32_t(request.payload.size());
    if (!SendPacket(m_socket, {BytesOf(head), request.payload}, file)) return End::Died;
    End end = End::Answered;
    if (!m_greeted) {
        end = Wait(until);
        if (end == End::Answered && !TakeHello()) end = End::Died;
    }
    if (end == End::Answered) end = Wait(until);
    if (end == End::Answered && !TakeAnswer(answer)) end = End::Died;
    if (end != End::Answered) ::kill(m_process, SIGKILL); // it must not move the place any more
    ::lseek(file, place, SEEK_SET);
    return end;
}

Decoder::End Decoder::Wait(std::int64_t until) const {
    for (;;) {
        if (IsStopped()) return End::Stopped;
        const std::int64_t left = until - Now();
        if (left <= 0) return End::TooLate;
        pollfd socket{m_socket, POLLIN, 0};
        const int slice = HasStopFlag() ? int(std::min<std::int64_t>(left, kSlice)) : int(left);
        if (::poll(&socket, 1, slice) > 0) return End::Answered;
    }
}

bool Decoder::IsAlive() const {
    pollfd socket{m_socket, 0, 0};
    return ::poll(&socket, 1, 0) == 0; // else the other end is gone
}

bool Decoder::LookForHello() {
    pollfd socket{m_socket, POLLIN, 0};
    return !m_greeted && ::poll(&socket, 1, 0) > 0 && TakeHello();
}

bool Decoder::TakeHello() {
    const Packet packet = ReceivePacket(m_socket, kMostPacket);
    if (packet.descriptor >= 0) ::close(packet.descriptor);
    DecoderHello hello;
    if (packet.ends || packet.bytes.size() != sizeof hello) return false;
    std::memcpy(&hello, packet.bytes.data(), sizeof hello);
    m_greeted = hello.protocol == kProtocol;
    m_rights = hello.rights;
    return m_greeted;
}

bool Decoder::TakeAnswer(DecoderAnswer& answer) {
    const Packet packet = ReceivePacket(m_socket, kMostPacket);
    const bool right = AnswerFrom(packet, answer);
    if (packet.descriptor >= 0) ::close(packet.descriptor);
    return right;
}

bool AnswerFrom(const Packet& packet, DecoderAnswer& answer) {
    AnswerHead head;
    if (packet.ends || packet.bytes.size() < sizeof head) return false;
    std::memcpy(&head, packet.bytes.data(), sizeof head);
    const bool tail = head.bytesInMemory != 0;
    if (head.protocol != kProtocol || head.error > kMostText ||
        head.bytes > (tail ? kMostBytes : kMostInline) ||
        packet.bytes.size() != sizeof head + head.error + (tail ? 0 : head.bytes))
        return false;
    answer.error = packet.bytes.substr(sizeof head, head.error);
    if (!IsUtf8(answer.error)) return false;
    answer.numbers = head.numbers;
    const std::uint64_t all = head.memory + (tail ? head.bytes : 0);
    if (head.memory > (1ULL << 40U)) return false;
    if (all > 0) {
        answer.memory = SharedMemory::Adopt(packet.descriptor, all);
        if (!answer.memory) return false;
    }
    const char* const from =
        tail ? reinterpret_cast<const char*>(answer.memory.Bytes()) + head.memory
             : packet.bytes.data() + sizeof head + head.error;
    answer.bytes.assign(from, head.bytes);
    return true;
}

} // namespace tarn
