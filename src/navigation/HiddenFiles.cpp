#include "navigation/HiddenFiles.h"

#include <algorithm>

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
            classes.push_back({{each, 0}, NamePatterns(TypesOf(state, each))});
    const NamePatterns listed(state.FileTypes);
    for (const std::string& name : leftOut) {
        if (listed.Matches(name)) continue;
        const auto of = std::find_if(classes.begin(), classes.end(),
                                     [&](const Class& c) { return c.types.Matches(name); });
        if (of != classes.end()) ++of->files.count;
    }
    std::vector<HiddenFiles> hidden;
    for (const Class& each : classes)
        if (each.files.count > 0) hidden.push_back(each.files);
    return hidden;
}

std::string HiddenText(const std::vector<HiddenFiles>& hidden) {
    if (hidden.empty()) return {};
    std::string text;
    for (std::size_t i = 0; i < hidden.size(); ++i) {
        if (i > 0) text += i + 1 == hidden.size() ? " and " : ", ";
        text += std::to_string(hidden[i].count) + " " + WordOf(hidden[i].fileClass) +
                (hidden[i].count == 1 ? " file" : " files");
    }
    const bool one = hidden.size() == 1 && hidden.front().count == 1;
    return text + (one ? " is not listed" : " are not listed");
}

} // namespace tarn
