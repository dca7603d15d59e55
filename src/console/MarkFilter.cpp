#include "console/MarkFilter.h"

#include "common/paths.h"
#include "console/Decoders.h"

namespace tarn {

bool TakeFilter(const Arguments& arguments, MarkFilter& filter, std::string& fault) {
    filter.kept = arguments.Has(kKeptOption.name);
    return arguments.ReadNumber(kStarsOption.name, 0, kMostStars, filter.stars, fault);
}

void Narrow(const MarkFilter& filter, const std::string& folder, std::vector<std::string>& names) {
    if (!filter.IsOn()) return;
    std::vector<std::string> paths;
    for (const std::string& name : names) paths.push_back(JoinPath(folder, name));
    const std::vector<FileMark> files = MarksOf(paths);
    names.clear();
    for (const FileMark& file : files)
        if (file.error.empty() && file.mark.stars >= filter.stars &&
            (!filter.kept || file.mark.decision == Decision::Keep))
            names.push_back(LastPart(file.path));
}

} // namespace tarn
