// Files of kinds whose readers are large and often wrong are read by processes without rights: by
// none of them until the program says so. Any thread.
#pragma once

#include "decoder/Decoder.h"

#include <functional>
#include <optional>
#include <string>

namespace tarn {

struct DecoderUse {
    int threads = 0;     // served at once, and the first thread, which others do not keep waiting
    std::string program; // of the process
    int seconds = 0;     // that an answer may take, 0: the usual
};

// From now on files are read by such processes, where they can be started, as they are installed
// and as many as suit the machine; or as is said, with 0 threads by none.
void UseDecoders();
void UseDecoders(const DecoderUse& use);

// Starts one for pictures, so that the first file does not wait for it.
void StartDecoderAhead();

// Whether an answer is one that can be.
using IsRight = std::function<bool(const DecoderAnswer&)>;

// None where the file is to be read in this process. An answer with an error when the process dies
// of the file for the second time, which is then passed over for the rest of the run, when it takes
// too long, or when this thread's work is not wanted any more.
std::optional<DecoderAnswer> AskDecoder(const DecoderRequest& request, int file,
                                        const IsRight& isRight);

// What protects the program, for "About".
std::string DecoderProtection();

inline constexpr char kGaveUp[] = "The reader gave up on this file";
inline constexpr char kNotStarted[] = "The reader cannot be started";
inline constexpr char kBrokenOff[] = "The reading was broken off";

// Whether an error speaks of the process and not of what is in the file.
inline bool IsDecoderFault(const std::string& error) {
    return error == kGaveUp || error == kNotStarted || error == kBrokenOff;
}

} // namespace tarn
