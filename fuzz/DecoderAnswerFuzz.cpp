// Takes the input for what a decoder process sends that has been taken over: a packet, and memory
// of as many blocks as the first byte says.
#include "Demand.h"
#include "Input.h"

#include "decoder/DecodedPicture.h"
#include "decoder/Packets.h"
#include "imaging/fits/SkyWire.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

using namespace tarn;
using namespace tarn::fuzz;

namespace {

constexpr std::size_t kBlock = 4096;

volatile double seen = 0; // so that what is looked at is read

int Memory(std::uint8_t blocks) {
    const int memory = ::memfd_create("answer", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    Demand(memory >= 0 && ::ftruncate(memory, off_t(kBlock * (blocks % 16))) == 0);
    return memory;
}

// The protocol's number is right, or nothing else would ever be looked at.
Packet PacketOf(std::string bytes, int memory) {
    const AnswerHead head;
    const std::size_t most = std::min(bytes.size(), sizeof head.protocol);
    static_assert(offsetof(AnswerHead, protocol) == 0);
    std::memcpy(bytes.data(), &head.protocol, most);
    Packet packet;
    packet.ends = false;
    packet.bytes = std::move(bytes);
    packet.descriptor = memory;
    return packet;
}

void Look(DecoderAnswer answer) {
    if (!IsDecodedPicture(answer)) return;
    const QImage picture = TakeDecodedPicture(std::move(answer));
    if (!picture.isNull())
        seen = picture.pixel(0, 0) ^ picture.pixel(picture.width() - 1, picture.height() - 1);
}

void LookAtSamples(DecoderAnswer answer) {
    if (!AreSkySamples(answer)) return;
    const auto samples = TakeSkySamples(answer);
    if (!samples) return;
    const std::size_t last = samples->All() - 1;
    seen = samples->words ? samples->words[last] : samples->floats[last];
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const int memory = Memory(input.Byte());
    const Packet packet = PacketOf(input.Rest(), memory);
    for (const auto look : {Look, LookAtSamples}) {
        DecoderAnswer answer;
        if (AnswerFrom(packet, answer)) look(std::move(answer));
    }
    DecoderAnswer answer;
    if (AnswerFrom(packet, answer) && IsSkyHeader(answer)) {
        const auto header = SkyHeaderOf(answer);
        Demand(!header || (header->width > 0 && header->height > 0));
    }
    ::close(memory);
    return 0;
}
