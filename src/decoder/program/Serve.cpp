#include "decoder/program/Serve.h"

#include "common/utf8.h"
#include "common/worker.h"
#include "decoder/Packets.h"

#include <cstdlib>
#include <cstring>

#include <malloc.h>
#include <poll.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr std::size_t kKept = 64U << 20U; // bytes of free memory that may stay with the process

[[noreturn]] void End() {
    ::_exit(0); // nothing is to be written any more
}

// The signal at a parent's death comes with that of its thread, and those come and go.
void EndWithProgram() {
    static const Worker kWatch([] {
        pollfd socket{kDecoderSocket, 0, 0};
        while (::poll(&socket, 1, -1) <= 0) {
        }
        End();
    });
}

std::string ShortText(std::string text) {
    if (text.size() > kMostText) text.resize(kMostText);
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Char each = DecodeUtf8(text, at);
        if (!each.valid) text[at] = '?';
        at += std::size_t(each.length);
    }
    return text;
}

bool Take(const Packet& packet, DecoderRequest& request) {
    if (packet.ends || packet.bytes.size() < sizeof request.head) return false;
    std::memcpy(&request.head, packet.bytes.data(), sizeof request.head);
    request.payload = packet.bytes.substr(sizeof request.head);
    return request.head.protocol == kProtocol && request.payload.size() == request.head.payload;
}

bool Send(Reply reply) {
    AnswerHead head;
    reply.error = ShortText(std::move(reply.error));
    head.error = std::uint32_t(reply.error.size());
    head.bytes = std::uint32_t(reply.bytes.size());
    head.memory = reply.memory ? reply.used : 0;
    head.numbers = reply.numbers;
    head.bytesInMemory = reply.bytes.size() > kMostInline ? 1 : 0;
    if (head.bytesInMemory != 0) {
        if (!reply.memory) reply.memory = SharedMemory::Filled({reply.bytes});
        if (!reply.memory) return false;
        reply.bytes.clear();
    }
    const int descriptor = reply.memory ? reply.memory.Descriptor() : -1;
    // Seen by the program alone from here on.
    if (void* bytes = reply.memory.Release()) SharedMemory::Free(bytes, reply.memory.Size());
    return SendPacket(kDecoderSocket, {BytesOf(head), reply.error, reply.bytes}, descriptor);
}

} // namespace

void Serve(std::uint32_t rights, const Answering& answering) {
    EndWithProgram();
    DecoderHello hello;
    hello.rights = rights;
    if (!SendPacket(kDecoderSocket, {BytesOf(hello)}, -1)) End();
    for (;;) {
        const Packet packet = ReceivePacket(kDecoderSocket, sizeof(RequestHead) + kMostPayload);
        DecoderRequest request;
        if (!Take(packet, request) || packet.descriptor < 0) End();
        ::alarm(unsigned(SecondsFor(request.head.format)) + 1); // if nobody ends it
        Reply reply = answering(request, packet.descriptor);
        ::alarm(0);
        ::close(packet.descriptor);
        if (!Send(std::move(reply))) End();
        if (::mallinfo2().fordblks > kKept) ::malloc_trim(0);
    }
}

} // namespace tarn
