// Carries a plan of new names out, a file at a time. A fault stops only the rows that needed the
// name which the faulty one keeps. No widgets.
#pragma once

#include "fileops/RenamePlan.h"
#include "history/Changes.h"

#include <string>
#include <vector>

namespace tarn {

// The steps of a plan, for the command's own.
void AddSteps(const RenamePlan& plan, Changes& changes, std::vector<Step>& steps);

class RenameRun {
public:
    RenameRun(RenamePlan plan, Changes& changes);

    bool IsDone() const { return m_next >= m_plan.steps.size(); }
    std::size_t Number() const { return m_next; } // steps behind it
    std::size_t Size() const { return m_plan.steps.size(); }
    const std::string& NextName() const { return m_plan.steps[m_next].from; }

    // One file, or all of an exchange.
    void Step();

    const std::vector<RenameRow>& Moved() const { return m_moved; } // also what was copied
    const std::vector<RenameFault>& Faults() const { return m_plan.faults; }

private:
    std::size_t EndOfPiece() const;
    bool CarryOut(const RenameStep& step, std::string* error);
    void TakeExchangeBack(std::size_t first, std::size_t end, std::size_t kept,
                          const std::string& why);
    void AddFault(std::size_t row, const std::string& why);

    RenamePlan m_plan;
    Changes& m_changes;
    std::size_t m_next = 0;
    std::vector<RenameRow> m_moved;
};

} // namespace tarn
