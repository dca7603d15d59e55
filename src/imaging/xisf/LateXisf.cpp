// The program's side of what reads XISF files: the decoder process, or the module itself.
#include "imaging/fits/SkyWire.h"
#include "imaging/xisf/XisfModule.h"
#include "platform/Modules.h"

// Their numbers alone: nothing of them is called here.
#include <lz4.h>
#include <nettle/version.h>
#include <pugixml.hpp>
#include <zlib.h>
#include <zstd.h>

namespace tarn {

namespace {

constexpr char kNoModule[] = "The program's reader of XISF files is not installed";

} // namespace

std::optional<FitsHeader> ReadXisfHeader(const std::string& path, int image, std::string& error) {
    std::optional<FitsHeader> header;
    if (AskForSkyHeader(DecoderFormat::Xisf, path, image, header, error)) return header;
    if (const auto* xisf = FromModule<XisfModule>()) return xisf->header(path, image, error);
    error = kNoModule;
    return std::nullopt;
}

std::optional<FitsSamples> ReadXisfSamples(const std::string& path, int image, std::string& error) {
    std::optional<FitsSamples> samples;
    if (AskForSkySamples(DecoderFormat::Xisf, path, image, samples, error)) return samples;
    if (const auto* xisf = FromModule<XisfModule>()) return xisf->samples(path, image, error);
    error = kNoModule;
    return std::nullopt;
}

XisfVersions XisfLibrariesBuilt() {
    const auto version = [](int major, int minor) {
        return std::to_string(major) + "." + std::to_string(minor);
    };
    return {version(PUGIXML_VERSION / 1000, PUGIXML_VERSION / 10 % 100), // 1130 is 1.13
            ZLIB_VERSION, LZ4_VERSION_STRING, ZSTD_VERSION_STRING,
            version(NETTLE_VERSION_MAJOR, NETTLE_VERSION_MINOR)};
}

XisfVersions XisfLibrariesRun() {
    const auto* xisf = FromModule<XisfModule>();
    return xisf ? xisf->versions() : XisfVersions();
}

} // namespace tarn
