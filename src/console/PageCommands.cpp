#include "console/PageCommands.h"

#include "common/numbers.h"
#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"
#include "console/MarkFilter.h"
#include "web/SavedValues.h"

#include <cstdio>
#include <filesystem>

namespace tarn {

namespace {

constexpr OptionRule kSet{"--set", "KEY=VALUE", true};
constexpr OptionRule kPageOptions[] = {kSet,          {"--notes", "DIR"}, {"--append"},
                                       {"--reverse"}, {"--now", "TEXT"},  {"--preview", "WxH"},
                                       kKeptOption,   kStarsOption};
constexpr OptionRule kGalleryOptions[] = {
    kSet,        {"--notes", "DIR"}, {"--frames"}, {"--now", "TEXT"}, {"--thumbnails"},
    kKeptOption, kStarsOption};
constexpr UsageLine kPageLines[] = {{kPageOptions, "OUT.html FOLDER"}};
constexpr UsageLine kGalleryLines[] = {{kGalleryOptions, "OUT.html FOLDER"}};

// Options that no page carries.
bool SetNumber(std::string_view name, std::string_view text,
               std::initializer_list<std::pair<std::string_view, int*>> known) {
    for (const auto& [key, field] : known) {
        if (key != name) continue;
        const auto number = ParseInt32(text);
        if (number) *field = *number;
        return number.has_value();
    }
    return false;
}

bool SetPage(HtmlSettings& s, std::string_view name, std::string_view text) {
    return SetSavedValue(s, name, text) || SetNumber(name, text,
                                                     {{"html_auto", &s.HtmlAuto},
                                                      {"html_exif_info", &s.HtmlExifInfo},
                                                      {"html_append_option", &s.HtmlAppendOption}});
}

bool SetGallery(GallerySettings& s, std::string_view name, std::string_view text) {
    return SetSavedValue(s, name, text) || SetNumber(name, text,
                                                     {{"SizeCheck", &s.SizeCheck},
                                                      {"NoLinkCheck", &s.NoLinkCheck},
                                                      {"CheckOrder", &s.CheckOrder}});
}

// "800x533".
bool TakePreview(const std::string& text, PageRequest& request) {
    const std::size_t at = text.find('x');
    if (at == std::string::npos) return false;
    const auto width = ParseInt32(text.substr(0, at));
    const auto height = ParseInt32(text.substr(at + 1));
    if (!width || !height || *width < 1 || *height < 1) return false;
    request.previewWidth = *width;
    request.previewHeight = *height;
    return true;
}

template <class Setter>
bool TakeSettings(const Arguments& arguments, const Setter& set, std::string& fault) {
    for (const std::string& pair : arguments.Values("--set")) {
        const std::size_t at = pair.find('=');
        if (at != std::string::npos && set(pair.substr(0, at), pair.substr(at + 1))) continue;
        fault = "no setting can be made of " + pair;
        return false;
    }
    return true;
}

std::string Absolute(const std::string& path) {
    std::error_code code;
    const auto absolute = std::filesystem::absolute(path, code);
    return code ? path : absolute.lexically_normal().string();
}

// Folder, file and notes; the exit status when they will not do, else -1.
int TakePaths(const Arguments& arguments, const Usage& usage, PageRequest& request) {
    MarkFilter filter;
    std::string fault;
    if (!TakeFilter(arguments, filter, fault)) return ComplainOfUsage(fault, usage);
    if (arguments.Operands().size() != 2)
        return ComplainOfUsage("a page and the folder of its pictures are needed", usage);
    request.out = Absolute(arguments.Operands()[0]);
    request.folder = WithoutTrailingSeparator(Absolute(arguments.Operands()[1]));
    request.notes = arguments.ValueOf("--notes");
    request.now = arguments.ValueOf("--now");
    std::error_code code;
    if (!request.notes.empty() && !std::filesystem::is_directory(request.notes, code)) {
        ComplainOfFile(request.notes, "is not a folder");
        return kExitFailedFile;
    }
    const auto names = ListedPictures(request.folder);
    if (!names) {
        ComplainOfFile(request.folder, "is not a folder that can be read");
        return kExitFailedFile;
    }
    request.names = *names;
    Narrow(filter, request.folder, request.names);
    return -1;
}

int Make(const PageRequest& request, const PageMaker& make, std::string_view what) {
    const PageResult result = make(request);
    for (const std::string& complaint : result.complaints)
        std::fprintf(stderr, "tarn: %s\n", complaint.c_str());
    if (!result.error.empty()) {
        ComplainOfFile(request.out, result.error);
        return kExitFailedFile;
    }
    std::printf("%s: %d %s\n", request.out.c_str(), result.count, std::string(what).c_str());
    return result.complaints.empty() ? kExitSuccess : kExitFailedFile;
}

} // namespace

constinit const Usage kPageUsage{"page", kPageLines};
constinit const Usage kGalleryUsage{"gallery", kGalleryLines};

int RunPage(std::span<const std::string> words, std::string_view version, const PageMaker& make) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kPageOptions, fault);
    PageRequest request;
    request.version = version;
    if (arguments && arguments->Has("--preview") &&
        !TakePreview(arguments->ValueOf("--preview"), request))
        fault = "--preview must be a width and a height, 800x533";
    request.page.HtmlWidth = request.previewWidth;
    request.page.HtmlHeight = request.previewHeight;
    if (!arguments || !fault.empty() ||
        !TakeSettings(
            *arguments,
            [&](const std::string& name, const std::string& text) {
                return SetPage(request.page, name, text);
            },
            fault))
        return ComplainOfUsage(fault, kPageUsage);
    request.set = arguments->Values("--set");
    request.append = arguments->Has("--append");
    request.reverse = arguments->Has("--reverse");
    const int status = TakePaths(*arguments, kPageUsage, request);
    return status >= 0 ? status : Make(request, make, "images");
}

int RunGallery(std::span<const std::string> words, std::string_view version,
               const PageMaker& make) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kGalleryOptions, fault);
    PageRequest request;
    request.version = version;
    if (!arguments || !TakeSettings(
                          *arguments,
                          [&](const std::string& name, const std::string& text) {
                              return SetGallery(request.gallery, name, text);
                          },
                          fault))
        return ComplainOfUsage(fault, kGalleryUsage);
    request.frames = arguments->Has("--frames");
    request.thumbnails = arguments->Has("--thumbnails");
    const int status = TakePaths(*arguments, kGalleryUsage, request);
    return status >= 0 ? status : Make(request, make, "pictures");
}

} // namespace tarn
