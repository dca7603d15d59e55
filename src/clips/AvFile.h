// A container opened by the library that reads it: the file that the gate has let in, of the kinds
// that are played, and nothing else. What a file names elsewhere stays there.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

#include <atomic>
#include <memory>
#include <string>

namespace tarn {

struct AvCloser {
    void operator()(AVFormatContext* context) const;
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using AvFile = std::unique_ptr<AVFormatContext, AvCloser>;
using AvPacket = std::unique_ptr<AVPacket, AvCloser>;

// With its streams looked at. Null and an error text when it cannot be read; `stop`, which has to
// live as long as the file, breaks a reading off from another thread.
// It seems to end once `most` bytes are read in all.
AvFile OpenAvFile(const std::string& path, const std::atomic<bool>& stop, std::string& error,
                  std::int64_t most = INT64_MAX);

std::string AvErrorText(int code);

// Quarters of a turn clockwise by which the file wants its frames shown, 0 to 3: telephones film as
// they are held.
int QuarterTurnsOf(const AVStream& stream);

} // namespace tarn
