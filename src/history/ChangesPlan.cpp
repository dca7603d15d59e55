// What a command is going to do, before it does it.
#include "history/Changes.h"

#include "history/History.h"
#include "history/StepsOnDisk.h"

#include <iterator>

namespace tarn {

namespace {

constexpr std::int64_t kGap = 1 << 20; // between the numbers of planned steps

} // namespace

bool Changes::Plan(std::vector<Step> steps, std::string* error) {
    m_planned.clear();
    const std::size_t before = m_steps.size();
    std::int64_t number = before == 0 ? 0 : m_steps.back().number / kGap * kGap;
    for (Step& step : steps) step.number = number += kGap;
    if (before == 0)
        m_steps = std::move(steps);
    else
        m_steps.insert(m_steps.end(), std::make_move_iterator(steps.begin()),
                       std::make_move_iterator(steps.end()));
    if (m_id == 0 || m_history.Add(m_book, m_id, std::span(m_steps).subspan(before), error))
        return true;
    m_steps.resize(before);
    return false;
}

void Changes::PlanWhole(std::vector<Step> steps) {
    m_isWhole = m_steps.empty() && !steps.empty();
    Plan(std::move(steps));
}

Step Changes::PlanRename(const std::string& from, const std::string& to) {
    return NewStep(StepKind::Renamed, from, to);
}

Step Changes::PlanCopy(const std::string& from, const std::string& to) {
    return NewStep(StepKind::Made, from, to);
}

Step Changes::PlanThrow(const std::string& path) {
    return NewStep(StepKind::ThrownAway, path);
}

Step Changes::PlanWriteAt(const std::string& path, std::size_t offset, std::string oldBytes,
                          std::string newBytes) {
    Step step = NewStep(StepKind::WrittenAt, path);
    step.offset = static_cast<std::int64_t>(offset);
    step.oldBytes = std::move(oldBytes);
    step.newBytes = std::move(newBytes);
    return step;
}

Step Changes::PlanWrite(const std::string& path, std::optional<std::string> newBytes) {
    Step step = NewStep(StepKind::Written, path);
    if (step.before.inode != 0 && step.before.bytes <= std::int64_t(kMostKept))
        step.oldBytes = m_files.Read(path, kMostKept);
    step.newBytes = std::move(newBytes);
    return step;
}

Step Changes::PlanTimes(const std::string& path, std::int64_t when) {
    Step step = NewStep(StepKind::Dated, path);
    step.after = step.before;
    step.after.seconds = when;
    step.after.nanoseconds = 0;
    return step;
}

Step Changes::PlanMark(const std::string& path, const Mark& before, const Mark& after) {
    Step step;
    step.kind = StepKind::Marked;
    step.from = path;
    step.oldBytes = PackMark(before);
    step.newBytes = PackMark(after);
    return step;
}

} // namespace tarn
