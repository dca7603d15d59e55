// The formats whose libraries stand in modules, loaded with the first file of the kind.
#include "imaging/PictureFormat.h"
#include "platform/Modules.h"

namespace tarn {

namespace {

constexpr char kRaw[] = "raw";
constexpr char kHeif[] = "heif";
constexpr char kJxl[] = "jxl";
constexpr char kTiff[] = "tiff";

template <const char* kName> struct Late {
    static const PictureFormat* Format(std::string& error) {
        static const auto* const kModule = static_cast<const FormatModule*>(LoadModule(kName));
        if (!kModule) error = "The program's reader of this kind of file is not installed";
        return kModule ? kModule->format : nullptr;
    }
    static QSize Size(std::FILE* file, std::string& error) {
        const PictureFormat* format = Format(error);
        return format ? format->size(file, error) : QSize(0, 0);
    }
    static QImage Decode(std::FILE* file, QSize wanted, std::string& error) {
        const PictureFormat* format = Format(error);
        return format ? format->decode(file, wanted, error) : QImage();
    }
    static std::string Profile(std::FILE* file) {
        std::string error;
        const PictureFormat* format = Format(error);
        return format ? format->profile(file) : std::string();
    }
};

} // namespace

const PictureFormat kRawFormat{Late<kRaw>::Size, Late<kRaw>::Decode, true, true, nullptr};
const PictureFormat kHeifFormat{Late<kHeif>::Size, Late<kHeif>::Decode, false, true,
                                Late<kHeif>::Profile};
const PictureFormat kJxlFormat{Late<kJxl>::Size, Late<kJxl>::Decode, false, true,
                               Late<kJxl>::Profile};
const PictureFormat kTiffFormat{Late<kTiff>::Size, Late<kTiff>::Decode, false, false,
                                nullptr,           IsContainerTurned};

} // namespace tarn
