// The program's side of what reads FITS files: the decoder process, or the module itself.
#include "imaging/fits/FitsLibrary.h"
#include "imaging/fits/FitsModule.h"
#include "imaging/fits/SkyWire.h"
#include "platform/Modules.h"

#include <fitsio.h> // its numbers alone: nothing of it is called here

namespace tarn {

namespace {

constexpr char kNoModule[] = "The program's reader of FITS files is not installed";

} // namespace

std::optional<FitsHeader> ReadFitsHeader(const std::string& path, int image, std::string& error) {
    std::optional<FitsHeader> header;
    if (AskForSkyHeader(DecoderFormat::Fits, path, image, header, error)) return header;
    if (const auto* fits = FromModule<FitsModule>()) return fits->header(path, image, error);
    error = kNoModule;
    return std::nullopt;
}

std::optional<FitsSamples> ReadFitsSamples(const std::string& path, int image, std::string& error) {
    std::optional<FitsSamples> samples;
    if (AskForSkySamples(DecoderFormat::Fits, path, image, samples, error)) return samples;
    if (const auto* fits = FromModule<FitsModule>()) return fits->samples(path, image, error);
    error = kNoModule;
    return std::nullopt;
}

std::string FitsLibraryBuilt() {
    return std::to_string(CFITSIO_MAJOR) + "." + std::to_string(CFITSIO_MINOR) + "." +
           std::to_string(CFITSIO_MICRO);
}

std::string FitsLibraryRuns() {
    const auto* fits = FromModule<FitsModule>();
    return fits ? fits->version() : std::string();
}

} // namespace tarn
