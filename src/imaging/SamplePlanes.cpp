#include "imaging/SamplePlanes.h"

#include "imaging/FormatOf.h"
#include "imaging/RawModule.h"
#include "imaging/fits/SkyFile.h"
#include "imaging/fits/SkyWire.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"

namespace tarn {

std::optional<FitsSamples> ReadSamplePlanes(const std::string& path, std::string& error) {
    const FileHandle file = OpenRegular(path, error);
    if (!file) return std::nullopt;
    const PictureFormat& format = FormatOf(file.get());
    const std::string name = NameOfOpen(::fileno(file.get()));
    if (&format == &kFitsFormat) return ReadSkySamples(name, error);
    if (&format != &kRawFormat) {
        error = "The file has no samples of a sensor";
        return std::nullopt;
    }
    std::optional<FitsSamples> samples;
    if (AskForSkySamples(DecoderFormat::Raw, name, 0, samples, error)) return samples;
    if (const auto* raw = FromModule<RawModule>()) return raw->samples(file.get(), error);
    error = "The program's reader of this kind of file is not installed";
    return std::nullopt;
}

} // namespace tarn
