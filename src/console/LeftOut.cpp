#include "console/LeftOut.h"

#include "imaging/fits/KeptCards.h"

#include <algorithm>
#include <map>
#include <utility>

#include <sys/stat.h>

namespace tarn {

namespace {

void NameRepeated(const std::vector<std::string>& paths, std::vector<std::string>& reasons) {
    std::map<std::pair<dev_t, ino_t>, std::string> first;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        struct stat facts {};
        if (!reasons[i].empty() || ::stat(paths[i].c_str(), &facts) != 0) continue;
        const auto [known, isNew] = first.try_emplace({facts.st_dev, facts.st_ino}, paths[i]);
        if (!isNew) reasons[i] = "the same file as " + known->second;
    }
}

} // namespace

std::vector<std::string> LeftOut(const std::vector<std::string>& paths,
                                 const std::vector<std::string>& operands, const MarkReader& read) {
    std::vector<std::string> reasons;
    for (const FileMark& file : read(paths))
        reasons.emplace_back(file.mark.decision == Decision::Reject ? "marked as rejected" : "");
    reasons.resize(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i)
        if (reasons[i].empty() &&
            std::find(operands.begin(), operands.end(), paths[i]) == operands.end() &&
            IsSumOfFrames(paths[i]))
            reasons[i] = "itself a sum of frames";
    NameRepeated(paths, reasons);
    return reasons;
}

} // namespace tarn
