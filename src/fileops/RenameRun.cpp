#include "fileops/RenameRun.h"

#include "common/paths.h"

namespace tarn {

void AddSteps(const RenamePlan& plan, Changes& changes, std::vector<Step>& steps) {
    steps.reserve(steps.size() + plan.steps.size());
    for (const RenameStep& step : plan.steps) {
        const std::string from = JoinPath(plan.folder, step.from);
        const std::string to = JoinPath(plan.folder, step.to);
        steps.push_back(plan.rows[step.row].copies ? changes.PlanCopy(from, to)
                                                   : changes.PlanRename(from, to));
        // The name between is taken up by the last step of the exchange.
        if (step.circle) changes.WillStand(to, steps.back().before);
    }
}

RenameRun::RenameRun(RenamePlan plan, Changes& changes)
    : m_plan(std::move(plan)), m_changes(changes) {
    m_moved.reserve(m_plan.rows.size());
}

std::size_t RenameRun::EndOfPiece() const {
    std::size_t end = m_next + 1;
    while (m_plan.steps[m_next].circle && end < Size() && m_plan.steps[end].circle &&
           m_plan.steps[end].follows)
        ++end;
    return end;
}

bool RenameRun::CarryOut(const RenameStep& step, std::string* error) {
    const std::string from = JoinPath(m_plan.folder, step.from);
    const std::string to = JoinPath(m_plan.folder, step.to);
    return m_plan.rows[step.row].copies ? m_changes.Copy(from, to, error)
                                        : m_changes.Rename(from, to, error);
}

void RenameRun::AddFault(std::size_t row, const std::string& why) {
    m_plan.faults.push_back({m_plan.rows[row].from, m_plan.rows[row].to, why});
}

void RenameRun::Step() {
    const std::size_t first = m_next;
    const std::size_t kept = m_changes.Count();
    m_next = EndOfPiece();
    const bool exchange = m_next - first > 1;
    for (std::size_t at = first; at < m_next; ++at) {
        std::string error;
        if (CarryOut(m_plan.steps[at], &error)) continue;
        if (exchange) {
            TakeExchangeBack(first, m_next, kept, error);
            return;
        }
        AddFault(m_plan.steps[at].row, error);
        for (; !IsDone() && m_plan.steps[m_next].follows; ++m_next)
            AddFault(m_plan.steps[m_next].row, "the file of this name keeps it");
        return;
    }
    // The first step of an exchange is for the row that its last step ends.
    for (std::size_t at = exchange ? first + 1 : first; at < m_next; ++at)
        m_moved.push_back(m_plan.rows[m_plan.steps[at].row]);
}

void RenameRun::TakeExchangeBack(std::size_t first, std::size_t end, std::size_t kept,
                                 const std::string& why) {
    std::string stuck;
    m_changes.TakeBack(kept, &stuck);
    std::string text = why;
    if (!stuck.empty())
        text += "; not all could be put back, see '" + m_plan.steps[first].to + "': " + stuck;
    for (std::size_t at = first + 1; at < end; ++at) AddFault(m_plan.steps[at].row, text);
}

} // namespace tarn
