#include "clips/ClipsModule.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avutil.h>
#include <libswscale/swscale.h>
}

#include <mpv/client.h>

namespace tarn {

namespace {

std::string AvVersion(unsigned version) {
    return std::to_string(AV_VERSION_MAJOR(version)) + "." +
           std::to_string(AV_VERSION_MINOR(version)) + "." +
           std::to_string(AV_VERSION_MICRO(version));
}

std::string Version(const std::string& library) {
    if (library == "libavformat") return AvVersion(avformat_version());
    if (library == "libavcodec") return AvVersion(avcodec_version());
    if (library == "libavutil") return AvVersion(avutil_version());
    if (library == "libswscale") return AvVersion(swscale_version());
    const unsigned long player = mpv_client_api_version();
    return std::to_string(player >> 16) + "." + std::to_string(player & 0xFFFF);
}

} // namespace

extern "C" const ClipsModule TarnModule{OpenWithMpv, Version};

} // namespace tarn
