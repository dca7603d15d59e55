#include "clips/AvFile.h"

#include "platform/OpenRegular.h"

extern "C" {
#include <libavutil/display.h>
}

#include <array>
#include <cerrno>
#include <cmath>

#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

constexpr int kBuffer = 64 * 1024; // bytes read at a time

// Containers of films, by the library's names. It knows hundreds more: play lists that name other
// files, pictures, games' own.
constexpr char kContainers[] = "avi,mov,mp4,m4a,3gp,3g2,mj2,matroska,webm,mpeg,mpegts,mpegvideo,"
                               "asf,flv,ogg,dv,mxf,wtv,vob,m4v,h264,hevc,nut,rm,ivf";

// Where it reads, and how far the library has come.
struct Source {
    Source(const std::string& path, std::string& error) : file(path, error) {}
    OpenFile file;
    std::int64_t place = 0;
    std::int64_t left = INT64_MAX; // bytes that may still be read
};

int ReadSource(void* opaque, std::uint8_t* bytes, int most) {
    auto& source = *static_cast<Source*>(opaque);
    const ssize_t got = ::pread(source.file.Number(), bytes, std::size_t(most), source.place);
    if (got < 0) return AVERROR(errno);
    source.place += got;
    source.left -= got;
    return got == 0 || source.left < 0 ? AVERROR_EOF : int(got);
}

std::int64_t SeekSource(void* opaque, std::int64_t place, int from) {
    auto& source = *static_cast<Source*>(opaque);
    struct stat facts {};
    if (::fstat(source.file.Number(), &facts) != 0) return AVERROR(errno);
    if ((from & AVSEEK_SIZE) != 0) return facts.st_size;
    switch (from & ~AVSEEK_FORCE) {
    case SEEK_CUR:
        place += source.place;
        break;
    case SEEK_END:
        place += facts.st_size;
        break;
    default:
        break;
    }
    return place < 0 ? AVERROR(EINVAL) : source.place = place;
}

void FreeSource(AVIOContext* context) {
    if (!context) return;
    delete static_cast<Source*>(context->opaque);
    av_freep(&context->buffer); // it may have been exchanged meanwhile
    avio_context_free(&context);
}

AVIOContext* MakeSource(std::unique_ptr<Source> source) {
    auto* buffer = static_cast<unsigned char*>(av_malloc(kBuffer));
    AVIOContext* context = buffer ? avio_alloc_context(buffer, kBuffer, 0, source.get(), ReadSource,
                                                       nullptr, SeekSource)
                                  : nullptr;
    if (context)
        source.release();
    else
        av_free(buffer);
    return context;
}

} // namespace

std::string AvErrorText(int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return text.data();
}

void AvCloser::operator()(AVFormatContext* context) const {
    AVIOContext* source = context->pb;
    avformat_close_input(&context);
    FreeSource(source);
}

AvFile OpenAvFile(const std::string& path, const std::atomic<bool>& stop, std::string& error,
                  std::int64_t most) {
    av_log_set_level(AV_LOG_QUIET);
    std::string fault;
    auto file = std::make_unique<Source>(path, fault);
    if (!file->file) return error = fault, nullptr;
    file->left = most;
    AVIOContext* source = MakeSource(std::move(file));
    AVFormatContext* opened = source ? avformat_alloc_context() : nullptr;
    if (!opened) return FreeSource(source), error = "Not enough memory", nullptr;
    opened->pb = source;
    opened->io_open = [](AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
        return AVERROR(EACCES); // a second file
    };
    opened->interrupt_callback = {
        [](void* asked) { return static_cast<const std::atomic<bool>*>(asked)->load() ? 1 : 0; },
        const_cast<std::atomic<bool>*>(&stop)};
    AVDictionary* options = nullptr;
    av_dict_set(&options, "format_whitelist", kContainers, 0);
    // The name helps to tell the kind.
    int code = avformat_open_input(&opened, path.c_str(), nullptr, &options);
    av_dict_free(&options);
    if (code < 0) return FreeSource(source), error = AvErrorText(code), nullptr;
    AvFile clip(opened);
    code = avformat_find_stream_info(opened, nullptr);
    if (code < 0) return error = AvErrorText(code), nullptr;
    return clip;
}

int QuarterTurnsOf(const AVStream& stream) {
    constexpr std::size_t kMatrixBytes = 9 * sizeof(std::int32_t);
    std::size_t bytes = 0;
    const std::uint8_t* matrix =
        av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &bytes);
    if (!matrix || bytes < kMatrixBytes) return 0;
    const double left = av_display_rotation_get(reinterpret_cast<const std::int32_t*>(matrix));
    return std::isfinite(left) ? (4 - int(std::lround(left / 90)) % 4) % 4 : 0;
}

} // namespace tarn
