// What the user thinks of a picture: a decision and stars, each by itself.
#pragma once

#include <optional>

namespace tarn {

enum class Decision { None, Keep, Reject };

inline constexpr int kMostStars = 5;

struct Mark {
    Decision decision = Decision::None;
    int stars = 0; // to kMostStars; 0: not rated

    bool operator==(const Mark&) const = default;
};

// What becomes of a mark; what is not given stays as it is. It is applied to what stands on the
// disk when it is written there, so that another program's change of the other part is kept.
struct MarkChange {
    std::optional<Decision> decision = {};
    std::optional<int> stars = {};

    bool operator==(const MarkChange&) const = default;
};

inline MarkChange Decide(Decision decision) {
    return {decision, {}};
}
inline MarkChange Rate(int stars) {
    return {{}, stars};
}
inline MarkChange SetTo(const Mark& mark) {
    return {mark.decision, mark.stars};
}
inline MarkChange ClearMark() {
    return SetTo({});
}

inline Mark Changed(const Mark& mark, const MarkChange& by) {
    return {by.decision.value_or(mark.decision), by.stars.value_or(mark.stars)};
}

// Both, the second after the first.
inline MarkChange Joined(const MarkChange& first, const MarkChange& then) {
    return {then.decision ? then.decision : first.decision, then.stars ? then.stars : first.stars};
}

} // namespace tarn
