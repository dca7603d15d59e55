#include "console/Decoders.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>

namespace tarn {

namespace {

using LookFunction = void (*)(const std::string* path, PictureLook* look);
using ConvertFunction = void (*)(const std::string* path, const std::string* folder,
                                 const ConvertOptions* options, ConvertedFile* result);
using ThumbnailsFunction = void (*)(const ThumbnailOrder* order, ThumbnailOutcome* outcome);
using SheetFunction = void (*)(const SheetRequest* request, SheetResult* result);

using PageFunction = void (*)(const PageRequest* request, PageResult* result);

constexpr char kNotInstalled[] = "the decoders are not installed";

std::string ProgramFolder() {
    char path[PATH_MAX];
    const ssize_t length = ::readlink("/proc/self/exe", path, sizeof path);
    const std::string program(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    return program.substr(0, program.rfind('/') + 1);
}

// Beside the program, as in the build tree, then where it is installed. Lazily, as most of what the
// libraries bring is never called.
void* LoadDecoders() {
    for (const char* place :
         {"libtarn-decoders.so", "../lib/tarn-view/plugins/libtarn-decoders.so"})
        if (void* module = ::dlopen((ProgramFolder() + place).c_str(), RTLD_LAZY | RTLD_LOCAL))
            return module;
    return nullptr;
}

// Null when the module is not installed.
template <typename Function> Function FromModule(const char* name) {
    static void* const module = LoadDecoders();
    return module ? reinterpret_cast<Function>(::dlsym(module, name)) : nullptr;
}

} // namespace

PictureLook LookAtPicture(const std::string& path) {
    static const auto kLook = FromModule<LookFunction>("TarnLook");
    PictureLook look;
    if (kLook) kLook(&path, &look);
    return look;
}

ConvertedFile ConvertToJpeg(const std::string& path, const std::string& folder,
                            const ConvertOptions& options) {
    static const auto kConvert = FromModule<ConvertFunction>("TarnConvert");
    ConvertedFile result;
    if (kConvert)
        kConvert(&path, &folder, &options, &result);
    else
        result.error = kNotInstalled;
    return result;
}

namespace {

PageResult Page(const char* function, const PageRequest& request) {
    const auto make = FromModule<PageFunction>(function);
    PageResult result;
    if (make)
        make(&request, &result);
    else
        result.error = kNotInstalled;
    return result;
}

} // namespace

PageResult MakePage(const PageRequest& request) {
    return Page("TarnPage", request);
}

PageResult MakeGallery(const PageRequest& request) {
    return Page("TarnGallery", request);
}

SheetResult PrintSheet(const SheetRequest& request) {
    static const auto kSheet = FromModule<SheetFunction>("TarnSheet");
    SheetResult result;
    if (kSheet)
        kSheet(&request, &result);
    else
        result.error = kNotInstalled;
    return result;
}

ThumbnailOutcome ThumbnailsOfFolder(const ThumbnailOrder& order) {
    static const auto kThumbnails = FromModule<ThumbnailsFunction>("TarnThumbnails");
    ThumbnailOutcome outcome;
    if (kThumbnails)
        kThumbnails(&order, &outcome);
    else
        outcome.fault = kNotInstalled;
    return outcome;
}

} // namespace tarn
