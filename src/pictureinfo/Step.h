// The rule under which the reader works: a step that fails is passed over, its field keeps the
// value that it had, and the next step runs.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace tarn {

// Stores the value unless it could not be had or does not fit the field.
template <typename Field> void StoreIfFits(Field& field, std::optional<std::int64_t> value) {
    if (!value) return;
    if (*value < std::numeric_limits<Field>::min()) return;
    if (*value > std::numeric_limits<Field>::max()) return;
    field = static_cast<Field>(*value);
}

} // namespace tarn
