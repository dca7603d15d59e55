#include "clips/FrameTimes.h"

#include "clips/AvFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tarn {

namespace {

constexpr double kUsualRate = 25;                // frames a second, where nothing tells
constexpr std::size_t kMostPackets = 20'000'000; // looked at: days of film

// All packets are looked at, none is decoded: indices of containers are not to be trusted.
void ReadTimes(AVFormatContext& file, const AVStream& stream, ClipFacts& clip) {
    const AvPacket packet(av_packet_alloc());
    for (unsigned i = 0; i < file.nb_streams; ++i)
        if (file.streams[i] != &stream) file.streams[i]->discard = AVDISCARD_ALL;
    const double base = av_q2d(stream.time_base);
    const double step = 1 / (clip.rate > 0 ? clip.rate : kUsualRate);
    bool known = false;
    bool unknown = false;
    double first = std::numeric_limits<double>::max();
    std::size_t packets = 0;
    while (clip.times.size() < kMostFrames && ++packets < kMostPackets &&
           av_read_frame(&file, packet.get()) >= 0) {
        const bool ours = packet->stream_index == stream.index && packet->size > 0 &&
                          (packet->flags & AV_PKT_FLAG_DISCARD) == 0;
        const bool shown = packet->pts != AV_NOPTS_VALUE; // else it says when it is decoded
        const std::int64_t time = shown ? packet->pts : packet->dts;
        if (ours) {
            (shown ? known : unknown) = true;
            if (shown) first = std::min(first, double(time) * base);
            clip.times.push_back(time != AV_NOPTS_VALUE ? double(time) * base
                                                        : double(clip.times.size()) * step);
        }
        av_packet_unref(packet.get());
    }
    std::sort(clip.times.begin(), clip.times.end());
    // Streams give a time to some frames only: the others follow by the rate.
    if (!clip.indexed && known && unknown)
        for (std::size_t i = 0; i < clip.times.size(); ++i)
            clip.times[i] = first + double(i) * step;
}

} // namespace

ClipFacts ReadClipFacts(const std::string& path, const std::atomic<bool>& stop) {
    ClipFacts clip;
    const AvFile file = OpenAvFile(path, stop, clip.error);
    if (!file) return clip;
    const int index = av_find_best_stream(file.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (index < 0) {
        clip.error = AvErrorText(index);
        return clip;
    }
    const AVStream& stream = *file->streams[index];
    if (file->start_time != AV_NOPTS_VALUE) clip.start = double(file->start_time) / AV_TIME_BASE;
    clip.indexed = (file->iformat->flags & AVFMT_TS_DISCONT) == 0;
    clip.width = stream.codecpar->width;
    clip.height = stream.codecpar->height;
    clip.quarters = QuarterTurnsOf(stream);
    if (clip.quarters % 2 != 0) std::swap(clip.width, clip.height);
    if (stream.avg_frame_rate.den > 0) clip.rate = av_q2d(stream.avg_frame_rate);
    ReadTimes(*file, stream, clip);
    if (clip.times.empty() || stop) {
        clip.error = stop ? "The clip was broken off" : "The clip has no frames";
        return clip;
    }
    clip.frames = int(clip.times.size());
    const double length = clip.times.back() - clip.times.front();
    if (clip.rate <= 0 || !std::isfinite(clip.rate))
        clip.rate = length > 0 ? double(clip.times.size() - 1) / length : kUsualRate;
    return clip;
}

} // namespace tarn
