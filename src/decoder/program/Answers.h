// What the decoder process says to a request.
#pragma once

#include "decoder/Protocol.h"
#include "decoder/SharedMemory.h"

namespace tarn {

struct Reply {
    std::string error;
    std::array<std::int64_t, 4> numbers{};
    std::string bytes;
    SharedMemory memory; // with the bytes behind `used` where they are too many for a packet
    std::size_t used = 0;
};

// Loads what reads files of the kind, before the rights are given up.
void LoadReaders(DecoderKind kind);

// `file` stays the caller's. Never throws.
Reply AnswerTo(const DecoderRequest& request, int file);

} // namespace tarn
