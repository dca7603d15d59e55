#include "clips/AvFrames.h"

#include "clips/AvFile.h"
#include "common/stop_flag.h"

extern "C" {
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace tarn {

namespace {

constexpr std::int64_t kMostPixels = 100'000'000; // of a frame

struct Closer {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};

// Gray stays gray; all else is red, green and blue; more than 8 bits are 16.
class Unpacker {
public:
    bool Unpack(const AVFrame& frame, ClipImage& image) {
        const AVPixFmtDescriptor* kind = av_pix_fmt_desc_get(AVPixelFormat(frame.format));
        if (!kind) return false;
        const bool isGray = kind->nb_components == 1 && (kind->flags & AV_PIX_FMT_FLAG_PAL) == 0;
        const bool isWide = kind->comp[0].depth > 8;
        const AVPixelFormat to = isGray ? (isWide ? AV_PIX_FMT_GRAY16LE : AV_PIX_FMT_GRAY8)
                                        : (isWide ? AV_PIX_FMT_RGB48LE : AV_PIX_FMT_RGB24);
        image = {&m_bytes, frame.width, frame.height, isWide ? 16 : 8, isGray ? 1 : 3};
        m_scaler.reset(sws_getCachedContext(
            m_scaler.release(), frame.width, frame.height, AVPixelFormat(frame.format), frame.width,
            frame.height, to, SWS_POINT | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
        if (!m_scaler) return false;
        const std::size_t row =
            std::size_t(frame.width) * std::size_t(image.samples) * (isWide ? 2 : 1);
        // The scaler writes whole vectors, beyond the end of a line.
        constexpr std::size_t kVector = 64;
        const std::size_t stride = (row + 2 * kVector) / kVector * kVector;
        m_rows.resize(stride * std::size_t(frame.height + 1));
        std::uint8_t* const lines[] = {m_rows.data(), nullptr, nullptr, nullptr};
        const int strides[] = {int(stride), 0, 0, 0};
        if (sws_scale(m_scaler.get(), frame.data, frame.linesize, 0, frame.height, lines,
                      strides) != frame.height)
            return false;
        m_bytes.clear();
        for (int y = 0; y < frame.height; ++y) {
            const auto from = m_rows.begin() + std::ptrdiff_t(stride * std::size_t(y));
            m_bytes.insert(m_bytes.end(), from, from + std::ptrdiff_t(row));
        }
        return true;
    }

private:
    std::unique_ptr<SwsContext, Closer> m_scaler;
    std::vector<std::uint8_t> m_rows;
    std::vector<std::uint8_t> m_bytes;
};

using Decoder = std::unique_ptr<AVCodecContext, Closer>;

Decoder OpenDecoder(AVFormatContext& file, int& stream, std::string& error) {
    const AVCodec* codec = nullptr;
    stream = av_find_best_stream(&file, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    error = "it has no pictures that can be read";
    if (stream < 0 || !codec) return nullptr;
    Decoder decoder(avcodec_alloc_context3(codec));
    if (!decoder ||
        avcodec_parameters_to_context(decoder.get(), file.streams[stream]->codecpar) < 0)
        return nullptr;
    decoder->thread_count = 1;
    decoder->max_pixels = kMostPixels;
    if (avcodec_open2(decoder.get(), codec, nullptr) < 0) return nullptr;
    error.clear();
    return decoder;
}

struct Walk {
    const ClipSink& sink;
    Unpacker unpacker = {};
    ClipImage first = {}; // its size and kind
    std::int64_t taken = 0;
    int broken = 0; // packets

    // False ends it, with a reason where it is one.
    bool Take(const AVFrame& frame, std::string& error) {
        ClipImage image;
        if (!unpacker.Unpack(frame, image)) {
            error = "a frame is of a kind that is not known";
            return false;
        }
        if (taken++ == 0) first = image;
        if (image.width != first.width || image.height != first.height ||
            image.bits != first.bits || image.samples != first.samples) {
            error = "frame " + std::to_string(taken - 1) + " has another size or kind";
            return false;
        }
        if (frame.decode_error_flags != 0) ++broken;
        return sink(image);
    }
};

} // namespace

bool FramesOfAv(const std::string& path, const ClipSink& sink, std::string& error) {
    const std::atomic<bool> never = false;
    const AvFile file = OpenAvFile(path, stopFlagOfThread ? *stopFlagOfThread : never, error);
    if (!file) return false;
    int stream = -1;
    const Decoder decoder = OpenDecoder(*file, stream, error);
    if (!decoder) return false;
    const std::unique_ptr<AVFrame, Closer> frame(av_frame_alloc());
    const AvPacket packet(av_packet_alloc());
    Walk walk{sink};
    std::int64_t packets = 0; // also of frames that an edit of the clip leaves out
    for (bool ends = false; !ends;) {
        const int read = av_read_frame(file.get(), packet.get());
        ends = read < 0;
        if (ends && read != AVERROR_EOF) error = AvErrorText(read);
        const bool isOurs = ends || packet->stream_index == stream;
        packets += isOurs && !ends ? 1 : 0;
        if (isOurs && avcodec_send_packet(decoder.get(), ends ? nullptr : packet.get()) < 0)
            walk.broken += ends ? 0 : 1;
        av_packet_unref(packet.get());
        while (isOurs && avcodec_receive_frame(decoder.get(), frame.get()) == 0)
            if (!walk.Take(*frame, error)) return error.empty();
    }
    const std::int64_t stated = file->streams[stream]->nb_frames;
    if (error.empty() && walk.broken > 0)
        error = std::to_string(walk.broken) + " frames cannot be decoded: those behind them have "
                                              "lower numbers";
    if (error.empty() && stated > packets)
        error = "it is cut off: " + std::to_string(walk.taken) + " of " + std::to_string(stated) +
                " frames are there";
    return error.empty();
}

} // namespace tarn
