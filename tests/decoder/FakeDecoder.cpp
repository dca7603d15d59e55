// A decoder process that does as the file tells it by its first word, behind the rights of the real
// one. Of its name depends what it does before.
#include "decoder/Packets.h"
#include "decoder/program/Rights.h"
#include "decoder/program/Serve.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tarn::AnswerHead;
using tarn::BytesOf;
using tarn::DecoderVerb;
using tarn::Reply;

std::string ownName;

// Whether this is the first process of this name. Tells by a file, before the rights are gone.
bool isFirst = false;

int FileOf(off_t bytes) {
    const int file = ::memfd_create("fake", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    return ::ftruncate(file, bytes) == 0 ? file : -1;
}

[[noreturn]] void SayAndWait(const AnswerHead& head, std::string_view behind, int descriptor) {
    tarn::SendPacket(tarn::kDecoderSocket, {BytesOf(head), behind}, descriptor);
    for (;;) ::pause();
}

// What of all that it should not be able to do it can, a word each.
std::string Tried() {
    std::string done;
    const auto note = [&](const char* what, bool could) {
        if (could) done += std::string(what) + " ";
    };
    note("open", ::open("/etc/passwd", O_RDONLY) >= 0);
    note("open-own", ::open("/proc/self/fd/4", O_RDONLY) >= 0);
    note("create", ::open((ownName + ".written").c_str(), O_WRONLY | O_CREAT, 0600) >= 0);
    note("remove", ::unlink((ownName + ".first").c_str()) == 0);
    note("look", ::access("/etc/passwd", F_OK) == 0);
    note("socket", ::socket(AF_INET, SOCK_STREAM, 0) >= 0);
    note("unix", ::socket(AF_UNIX, SOCK_STREAM, 0) >= 0);
    note("fork", [] {
        const pid_t child = ::fork();
        if (child == 0) ::_exit(0);
        return child > 0;
    }());
    char name[] = "/bin/true";
    char* const argv[] = {name, nullptr};
    note("exec", ::execv(name, argv) == 0);
    note("kill", ::kill(::getppid(), 0) == 0);
    note("code", ::mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) !=
                     MAP_FAILED);
    note("limit", ::memfd_create("other", 0) < 0);
    bool thread = false;
    std::thread([&] { thread = true; }).join();
    note("no-thread", !thread);
    return done.empty() ? "nothing" : done;
}

void Obey(const std::string& order, Reply& reply) {
    AnswerHead head;
    const bool once = order == "die-once" && isFirst;
    if (order == "die" || once) ::raise(SIGKILL);
    if (order == "stop") ::raise(SIGSTOP);
    if (order == "hang")
        for (;;) ::pause();
    if (order == "nonsense") {
        tarn::SendPacket(tarn::kDecoderSocket, {"what?"}, -1);
        for (;;) ::pause();
    }
    if (order == "lies") { // more pixels than there are
        head.memory = 4000 * 4000 * 4;
        head.numbers = {4000, 4000, 0};
        SayAndWait(head, {}, FileOf(4096));
    }
    if (order == "huge") {
        head.memory = 64;
        head.numbers = {1 << 24, 1 << 24, 0};
        SayAndWait(head, {}, FileOf(64));
    }
    if (order == "kind") {
        head.memory = 64;
        head.numbers = {4, 4, 7};
        SayAndWait(head, {}, FileOf(64));
    }
    if (order == "negative") {
        head.memory = 64;
        head.numbers = {-4, -4, 0};
        SayAndWait(head, {}, FileOf(64));
    }
    if (order == "no-memory") { // a descriptor that is none
        head.memory = 64;
        head.numbers = {4, 4, 0};
        SayAndWait(head, {}, tarn::kDecoderSocket);
    }
    if (order == "too-long") {
        head.bytes = 1U << 31U;
        head.bytesInMemory = 1;
        SayAndWait(head, {}, FileOf(64));
    }
    if (order == "bytes") { // no text
        head.error = 3;
        SayAndWait(head, "\xFF\xFE\xFD", -1);
    }
    if (order == "try") reply.error = Tried();
    if (order == "fill") {
        try {
            for (;;) std::memset(new char[256U << 20U], 1, 16);
        } catch (const std::bad_alloc&) {
            reply.error = "Not enough memory";
        }
    }
}

Reply Answer(const tarn::DecoderRequest& request, int file) {
    std::string order(32, '\0');
    const ssize_t got = ::pread(file, order.data(), order.size(), 0);
    order.resize(got > 0 ? std::size_t(got) : 0);
    std::string stage = order.substr(0, order.find(' ')); // "decode": obeyed later
    order.erase(0, order.find(' ') + 1);
    Reply reply;
    reply.numbers = {2, 2};
    if (request.head.verb == DecoderVerb::Decode) {
        reply.memory = tarn::SharedMemory::Make(16);
        reply.used = 16;
        std::memset(reply.memory.Bytes(), 0x77, 16);
    }
    if (request.head.verb == DecoderVerb::Profile) reply.numbers = {};
    if ((stage == "decode") == (request.head.verb == DecoderVerb::Decode)) Obey(order, reply);
    return reply;
}

} // namespace

int main(int, char** argv) {
    ownName = argv[0];
    isFirst = ::open((ownName + ".first").c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600) >= 0;
    if (ownName.ends_with("ends")) return 1;
    if (ownName.ends_with("waits"))
        for (;;) ::pause();
    if (ownName.ends_with("babbles")) {
        tarn::SendPacket(tarn::kDecoderSocket, {"hello"}, -1);
        for (;;) ::pause();
    }
    tarn::Serve(tarn::GiveUpRights(), Answer);
}
