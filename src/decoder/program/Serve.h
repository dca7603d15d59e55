// The work of the decoder process: a request, an answer, and so on to the end of the socket.
#pragma once

#include "decoder/program/Answers.h"

#include <functional>

namespace tarn {

using Answering = std::function<Reply(const DecoderRequest& request, int file)>;

// Ends the process with the program, also in the midst of a reading. Never comes back.
[[noreturn]] void Serve(std::uint32_t rights, const Answering& answering);

} // namespace tarn
