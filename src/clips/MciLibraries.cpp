#include "clips/MciLibraries.h"

#include "clips/ClipsModule.h"
#include "platform/Modules.h"

// The numbers alone: what is called stands in the module.
extern "C" {
#include <libavcodec/version.h>
#include <libavformat/version.h>
#include <libavutil/version.h>
#include <libswscale/version.h>
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

std::vector<Library> MciLibraries(Versions asked) {
    std::vector<Library> all{
        {"libmpv (interface)", MpvVersion(MPV_CLIENT_API_VERSION), {}},
        {"libavformat", AvVersion(LIBAVFORMAT_VERSION_INT), {}},
        {"libavcodec", AvVersion(LIBAVCODEC_VERSION_INT), {}},
        {"libavutil", AvVersion(LIBAVUTIL_VERSION_INT), {}},
        {"libswscale", AvVersion(LIBSWSCALE_VERSION_INT), {}},
    };
    const auto* clips = asked == Versions::Running ? FromModule<ClipsModule>() : nullptr;
    if (clips)
        for (Library& library : all) library.running = clips->version(library.name);
    return all;
}

} // namespace tarn
