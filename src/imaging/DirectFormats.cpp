// Most libraries stand in modules, loaded with the first file of the kind.
#include "imaging/DirectFormats.h"

#include "platform/Modules.h"

namespace tarn {

namespace {

template <const char* kName> const PictureFormat* FromModule(std::string& error) {
    static const auto* const kModule = static_cast<const FormatModule*>(LoadModule(kName));
    if (!kModule) error = "The program's reader of this kind of file is not installed";
    return kModule ? kModule->format : nullptr;
}

constexpr char kRaw[] = "raw";
constexpr char kHeif[] = "heif";
constexpr char kJxl[] = "jxl";
constexpr char kTiff[] = "tiff";

} // namespace

const PictureFormat* DirectFormat(DecoderFormat format, std::string& error) {
    switch (format) {
    case DecoderFormat::Raw:
        return FromModule<kRaw>(error);
    case DecoderFormat::Heif:
        return FromModule<kHeif>(error);
    case DecoderFormat::Jxl:
        return FromModule<kJxl>(error);
    case DecoderFormat::Tiff:
        return FromModule<kTiff>(error);
    case DecoderFormat::Toolkit:
        return &kDirectToolkit;
    case DecoderFormat::Fits:
        return &kDirectFits;
    default:
        error = "Not a picture that can be read";
        return nullptr;
    }
}

} // namespace tarn
