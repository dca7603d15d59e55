#include "navigation/HiddenFiles.h"

#include "common/patterns.h"

#include <algorithm>
#include <span>
#include <utility>

namespace tarn {

namespace {

const char* WordOf(FileClass fileClass) {
    switch (fileClass) {
    case FileClass::Pictures:
        return "picture";
    case FileClass::Videos:
        return "video";
    case FileClass::Web:
        return "web";
    case FileClass::Fits:
        return "FITS";
    case FileClass::Raw:
        return "raw";
    case FileClass::Text:
        return "text";
    }
    return "";
}

// Endings of files that can be shown, beyond those that a new user has in the classes.
constexpr const char* kPictureEndings[] = {
    ".jpeg", ".jpe", ".jfif", ".tiff", ".png", ".webp", ".heic", ".heif", ".hif", ".avif",
    ".jxl",  ".pbm", ".pgm",  ".ppm",  ".xpm", ".ico",  ".cr3",  ".crw",  ".nef", ".nrw",
    ".arw",  ".dng", ".orf",  ".pef",  ".raf", ".rw2",  ".srw",  ".fts"};
constexpr const char* kVideoEndings[] = {".mp4",  ".mov", ".m4v",  ".mkv", ".webm", ".mpg",
                                         ".mpeg", ".mts", ".m2ts", ".3gp", ".wmv"};

void Count(HiddenFiles& hidden, const std::string& name, std::span<const char* const> endings) {
    const auto of = std::find_if(endings.begin(), endings.end(), [&](const char* ending) {
        return NamePatterns(std::string("*") + ending).Matches(name);
    });
    if (of == endings.end()) return;
    ++hidden.count;
    const std::string type = std::string("*") + *of;
    if (std::find(hidden.types.begin(), hidden.types.end(), type) == hidden.types.end())
        hidden.types.push_back(type);
}

std::string TextOf(const HiddenFiles& hidden) {
    const std::string word = WordOf(hidden.fileClass);
    const std::string files = hidden.count == 1 ? " file" : " files";
    std::string text = std::to_string(hidden.count) + " " + word + files;
    if (hidden.types.empty()) return text;
    text += " of other types (";
    for (const std::string& type : hidden.types)
        text += (text.back() == '(' ? "" : ", ") + type.substr(2);
    return text + ")";
}

} // namespace

std::string TypesOf(const SelectionState& state, FileClass fileClass) {
    switch (fileClass) {
    case FileClass::Pictures:
        break;
    case FileClass::Videos:
        return state.VideoTypes;
    case FileClass::Web:
        return state.WebTypes;
    case FileClass::Fits:
        return state.FitsClassTypes();
    case FileClass::Raw:
        return state.RawTypes;
    case FileClass::Text:
        return state.TextTypes;
    }
    return state.PictureTypes;
}

std::vector<HiddenFiles> CountHidden(const SelectionState& state,
                                     const std::vector<std::string>& leftOut) {
    struct Class {
        HiddenFiles files;
        NamePatterns types;
    };
    std::vector<Class> classes;
    for (const FileClass each : kFileClasses)
        if (!TypesOf(state, each).empty())
            classes.push_back({{each, 0, {}}, NamePatterns(TypesOf(state, each))});
    HiddenFiles pictures{FileClass::Pictures, 0, {}};
    HiddenFiles videos{FileClass::Videos, 0, {}};
    const NamePatterns listed(state.FileTypes);
    for (const std::string& name : leftOut) {
        if (listed.Matches(name)) continue;
        const auto of = std::find_if(classes.begin(), classes.end(),
                                     [&](const Class& c) { return c.types.Matches(name); });
        if (of != classes.end()) {
            ++of->files.count;
        } else {
            Count(pictures, name, kPictureEndings);
            Count(videos, name, kVideoEndings);
        }
    }
    std::vector<HiddenFiles> hidden;
    for (const Class& each : classes)
        if (each.files.count > 0) hidden.push_back(each.files);
    for (HiddenFiles* each : {&pictures, &videos})
        if (each->count > 0) hidden.push_back(std::move(*each));
    return hidden;
}

std::string HiddenText(const std::vector<HiddenFiles>& hidden) {
    if (hidden.empty()) return {};
    std::string text;
    for (std::size_t i = 0; i < hidden.size(); ++i) {
        if (i > 0) text += i + 1 == hidden.size() ? " and " : ", ";
        text += TextOf(hidden[i]);
    }
    const bool one = hidden.size() == 1 && hidden.front().count == 1;
    return text + (one ? " is not listed" : " are not listed");
}

void AddTypes(SelectionState& state, FileClass fileClass, const std::vector<std::string>& types) {
    std::string& list = fileClass == FileClass::Videos ? state.VideoTypes : state.PictureTypes;
    for (const std::string& type : types) list += (list.empty() ? "" : ";") + type;
}

} // namespace tarn
