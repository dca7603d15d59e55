#include "fileops/CopyQuestion.h"

#include "widgets/Dialogs.h"

namespace tarn {

bool AskWhatStands(Context& m, CopyPlan& plan, const std::string& verb, int& skipped) {
    const int standing = CountStanding(plan);
    if (standing == 0) return true;
    std::string first;
    int count = 0;
    for (const CopyUnit& unit : plan) {
        count += static_cast<int>(unit.copies.size());
        for (const PlannedCopy& copy : unit.copies)
            if (copy.stands && first.empty()) first = copy.to;
    }
    const std::string text = std::to_string(standing) + " of " + std::to_string(count) +
                             " files are there already, such as\n'" + first +
                             "'\n\nWhat is overwritten goes to the wastebasket.";
    switch (m.dialogs.Choose(Dialogs::Icon::Exclamation, "Tarn_View - " + verb, text,
                             {"Skip", "Overwrite", "Keep both", "Cancel"})) {
    case 0:
        skipped = standing;
        Resolve(plan, WhenStands::Skip, m.files);
        return true;
    case 1:
        return true;
    case 2:
        Resolve(plan, WhenStands::KeepBoth, m.files);
        return true;
    default:
        return false;
    }
}

} // namespace tarn
