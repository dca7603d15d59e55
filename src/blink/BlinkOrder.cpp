#include "blink/BlinkOrder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace tarn {

void BlinkOrder::Arrange(const std::vector<BlinkFrame>& frames, bool byScore, bool skipRejected) {
    const std::size_t current = m_order.empty() ? frames.size() : Current();
    std::vector<std::size_t> all(frames.size());
    std::iota(all.begin(), all.end(), std::size_t(0));
    const auto worth = [&](std::size_t i) {
        return std::isfinite(frames[i].score) ? -frames[i].score
                                              : std::numeric_limits<double>::infinity();
    };
    const auto time = [&](std::size_t i) {
        return frames[i].taken.value_or(std::numeric_limits<std::int64_t>::max());
    };
    std::stable_sort(all.begin(), all.end(), [&](std::size_t one, std::size_t other) {
        return byScore ? worth(one) < worth(other) : time(one) < time(other);
    });
    m_ranks.assign(frames.size(), 0);
    for (std::size_t rank = 0; rank < all.size(); ++rank) m_ranks[all[rank]] = rank;
    const auto without = [&](std::vector<std::size_t> order, const auto& isOut) {
        std::vector<std::size_t> left;
        for (const std::size_t i : order)
            if (!isOut(frames[i])) left.push_back(i);
        return left.empty() ? order : left;
    };
    m_order = without(all, [](const BlinkFrame& frame) { return frame.isUnread; });
    if (skipRejected)
        m_order = without(m_order, [](const BlinkFrame& frame) {
            return frame.mark.decision == Decision::Reject;
        });
    m_position = 0;
    if (current < frames.size()) GoTo(current);
}

void BlinkOrder::GoTo(std::size_t frame) {
    const auto at = std::find_if(m_order.begin(), m_order.end(),
                                 [&](std::size_t each) { return m_ranks[each] >= m_ranks[frame]; });
    m_position = at == m_order.end() ? m_order.size() - 1 : std::size_t(at - m_order.begin());
}

void BlinkOrder::Step(int by) {
    if (m_order.empty()) return;
    const auto count = std::int64_t(m_order.size());
    m_position = std::size_t(((std::int64_t(m_position) + by) % count + count) % count);
}

void BlinkOrder::SetWay(BlinkWay way) {
    m_way = way;
    m_back = way == BlinkWay::Back;
}

std::size_t BlinkOrder::Next(std::size_t position, bool& back) const {
    const std::size_t last = m_order.size() - 1;
    if (m_way != BlinkWay::ToAndFro) {
        if (back) return position == 0 ? last : position - 1;
        return position == last ? 0 : position + 1;
    }
    if (last == 0) return 0;
    if (position == last) back = true;
    if (position == 0) back = false;
    return back ? position - 1 : position + 1;
}

bool BlinkOrder::Advance(const std::function<bool(std::size_t frame)>& isMade, bool waits) {
    if (m_order.size() < 2) return false;
    std::size_t position = m_position;
    bool back = m_back;
    const std::size_t most = waits ? 1 : 2 * m_order.size();
    for (std::size_t tries = 0; tries < most; ++tries) {
        position = Next(position, back);
        if (position == m_position && m_way != BlinkWay::ToAndFro) return false;
        if (position == m_position || !isMade(m_order[position])) continue;
        m_position = position;
        m_back = back;
        return true;
    }
    return false;
}

std::vector<std::size_t> BlinkOrder::Ahead() const {
    std::vector<std::size_t> ahead;
    if (m_order.empty()) return ahead;
    std::vector<bool> known(m_ranks.size());
    std::size_t position = m_position;
    bool back = m_back;
    for (std::size_t i = 0; i < 2 * m_order.size() && ahead.size() < m_order.size(); ++i) {
        if (!known[m_order[position]]) ahead.push_back(m_order[position]);
        known[m_order[position]] = true;
        position = Next(position, back);
    }
    return ahead;
}

} // namespace tarn
