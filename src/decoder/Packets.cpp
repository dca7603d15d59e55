#include "decoder/Packets.h"

#include <array>
#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kMostParts = 4;

// Room for one descriptor, laid as the system wants it.
union Passed {
    std::array<char, CMSG_SPACE(sizeof(int))> bytes;
    cmsghdr head;
};

// Of several the others would stay open for ever.
int TakeDescriptor(msghdr& message, bool& wrong) {
    int taken = -1;
    for (cmsghdr* each = CMSG_FIRSTHDR(&message); each; each = CMSG_NXTHDR(&message, each)) {
        if (each->cmsg_level != SOL_SOCKET || each->cmsg_type != SCM_RIGHTS) continue;
        const std::size_t count = (each->cmsg_len - CMSG_LEN(0)) / sizeof(int);
        for (std::size_t i = 0; i < count; ++i) {
            int descriptor = -1;
            std::memcpy(&descriptor, CMSG_DATA(each) + i * sizeof(int), sizeof(int));
            if (taken >= 0) {
                ::close(descriptor);
                wrong = true;
            } else {
                taken = descriptor;
            }
        }
    }
    return taken;
}

} // namespace

bool SendPacket(int socket, std::initializer_list<std::string_view> parts, int descriptor) {
    std::array<iovec, kMostParts> pieces{};
    std::size_t count = 0;
    for (const std::string_view part : parts)
        pieces[count++] = {const_cast<char*>(part.data()), part.size()};
    msghdr message{};
    message.msg_iov = pieces.data();
    message.msg_iovlen = count;
    Passed passed{};
    if (descriptor >= 0) {
        message.msg_control = &passed;
        message.msg_controllen = sizeof passed;
        passed.head.cmsg_level = SOL_SOCKET;
        passed.head.cmsg_type = SCM_RIGHTS;
        passed.head.cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(&passed.head), &descriptor, sizeof(int));
    }
    ssize_t sent = 0;
    do {
        sent = ::sendmsg(socket, &message, MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    return sent >= 0;
}

Packet ReceivePacket(int socket, std::size_t most) {
    Packet packet;
    packet.bytes.resize(most);
    iovec piece{packet.bytes.data(), most};
    Passed passed{};
    msghdr message{};
    message.msg_iov = &piece;
    message.msg_iovlen = 1;
    message.msg_control = &passed;
    message.msg_controllen = sizeof passed;
    ssize_t got = 0;
    do {
        got = ::recvmsg(socket, &message, MSG_CMSG_CLOEXEC);
    } while (got < 0 && errno == EINTR);
    packet.bytes.resize(got > 0 ? std::size_t(got) : 0);
    bool wrong = got <= 0 || (message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0;
    packet.descriptor = got > 0 ? TakeDescriptor(message, wrong) : -1;
    packet.ends = wrong;
    return packet;
}

} // namespace tarn
