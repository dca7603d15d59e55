#include "clips/MciLibraries.h"

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

std::string MpvVersion(unsigned long version) {
    return std::to_string(version >> 16) + "." + std::to_string(version & 0xFFFF);
}

} // namespace

std::vector<Library> MciLibraries() {
    return {
        {"libmpv (interface)", MpvVersion(MPV_CLIENT_API_VERSION),
         MpvVersion(mpv_client_api_version())},
        {"libavformat", AvVersion(LIBAVFORMAT_VERSION_INT), AvVersion(avformat_version())},
        {"libavcodec", AvVersion(LIBAVCODEC_VERSION_INT), AvVersion(avcodec_version())},
        {"libavutil", AvVersion(LIBAVUTIL_VERSION_INT), AvVersion(avutil_version())},
        {"libswscale", AvVersion(LIBSWSCALE_VERSION_INT), AvVersion(swscale_version())},
    };
}

} // namespace tarn
