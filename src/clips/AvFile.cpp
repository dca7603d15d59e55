#include "clips/AvFile.h"

extern "C" {
#include <libavutil/display.h>
}

#include <array>
#include <cmath>

namespace tarn {

std::string AvErrorText(int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return text.data();
}

AvFile OpenAvFile(const std::string& path, const std::atomic<bool>& stop, std::string& error) {
    av_log_set_level(AV_LOG_QUIET);
    AVFormatContext* opened = avformat_alloc_context();
    if (!opened) return error = "Not enough memory", nullptr;
    opened->interrupt_callback = {
        [](void* asked) { return static_cast<const std::atomic<bool>*>(asked)->load() ? 1 : 0; },
        const_cast<std::atomic<bool>*>(&stop)};
    AVDictionary* options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    // "file:" keeps colons and percent signs in names from being taken for protocols.
    int code = avformat_open_input(&opened, ("file:" + path).c_str(), nullptr, &options);
    av_dict_free(&options);
    if (code < 0) return error = AvErrorText(code), nullptr;
    AvFile file(opened);
    code = avformat_find_stream_info(opened, nullptr);
    if (code < 0) return error = AvErrorText(code), nullptr;
    return file;
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
