// The first frame of a clip that the libraries know.
#include "clips/AvFile.h"
#include "clips/AvFrames.h"
#include "clips/ClipFrame.h"
#include "clips/FramesModule.h"

extern "C" {
#include <libswscale/swscale.h>
}

#include <QTransform>

#include <memory>

namespace tarn {

namespace {

constexpr int kMostPackets = 200;                 // looked at for a frame
constexpr std::int64_t kMostBytes = 64 << 20;     // of the file
constexpr std::int64_t kMostPixels = 100'000'000; // of it

struct Closer {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};

QImage Scaled(const AVFrame& frame, int side) {
    const QSize size = SmallSize(QSize(frame.width, frame.height), side);
    // The scaler writes whole vectors, beyond the end of a line and of the picture.
    constexpr int kVector = 16; // pixels
    QImage picture(size + QSize(2 * kVector - size.width() % kVector, 1), QImage::Format_RGB32);
    if (picture.isNull()) return {};
    const std::unique_ptr<SwsContext, Closer> scaler(
        sws_getContext(frame.width, frame.height, AVPixelFormat(frame.format), size.width(),
                       size.height(), AV_PIX_FMT_BGRA, SWS_AREA, nullptr, nullptr, nullptr));
    if (!scaler) return {};
    std::uint8_t* const lines[] = {picture.bits(), nullptr, nullptr, nullptr};
    const int strides[] = {int(picture.bytesPerLine()), 0, 0, 0};
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, lines, strides);
    return picture.copy(QRect(QPoint(), size));
}

bool DecodeOne(AVFormatContext& file, int stream, AVCodecContext& decoder, AVFrame& frame) {
    const AvPacket packet(av_packet_alloc());
    for (int i = 0; i < kMostPackets; ++i) {
        const bool ends = av_read_frame(&file, packet.get()) < 0;
        if (ends || packet->stream_index == stream)
            avcodec_send_packet(&decoder, ends ? nullptr : packet.get());
        av_packet_unref(packet.get());
        if (avcodec_receive_frame(&decoder, &frame) == 0) return true;
        if (ends) return false;
    }
    return false;
}

QImage FirstOfAv(const std::string& path, int side) {
    const std::atomic<bool> never = false;
    std::string error;
    const AvFile file = OpenAvFile(path, never, error, kMostBytes);
    if (!file) return {};
    const AVCodec* codec = nullptr;
    const int stream = av_find_best_stream(file.get(), AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (stream < 0 || !codec) return {};
    const std::unique_ptr<AVCodecContext, Closer> decoder(avcodec_alloc_context3(codec));
    const std::unique_ptr<AVFrame, Closer> frame(av_frame_alloc());
    if (avcodec_parameters_to_context(decoder.get(), file->streams[stream]->codecpar) < 0)
        return {};
    decoder->thread_count = 1;
    decoder->max_pixels = kMostPixels;
    if (avcodec_open2(decoder.get(), codec, nullptr) < 0) return {};
    if (!DecodeOne(*file, stream, *decoder, *frame)) return {};
    const QTransform upright = QTransform().rotate(90.0 * QuarterTurnsOf(*file->streams[stream]));
    return Scaled(*frame, side).transformed(upright);
}

} // namespace

extern "C" const FramesModule TarnModule{FirstOfAv, FramesOfAv};

} // namespace tarn
