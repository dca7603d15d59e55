// All chance of a run: one seed, and a throw of its own for each act, so that an act which draws
// more or less than before does not shift the acts behind it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace tarn::testing {

class Dice {
public:
    void Begin(std::uint64_t seed, std::uint64_t act) {
        constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
        m_engine.seed((seed + 1) * kSpread + act);
    }
    int Below(int count) {
        return count < 2 ? 0 : static_cast<int>(m_engine() % static_cast<std::uint64_t>(count));
    }
    bool OneIn(int count) { return Below(count) == 0; }
    template <typename List> const auto& Of(const List& list) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(std::size(list))))];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace tarn::testing
