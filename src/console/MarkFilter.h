// "--kept" and "--stars N": of a folder's pictures only those that were marked so.
#pragma once

#include "console/Arguments.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// For the options of a command that takes them.
inline constexpr OptionRule kKeptOption{"--kept"};
inline constexpr OptionRule kStarsOption{"--stars", "N"};

struct MarkFilter {
    bool kept = false;
    int stars = 0; // at least

    bool IsOn() const { return kept || stars > 0; }
};

// False with the fault where the number is none.
bool TakeFilter(const Arguments& arguments, MarkFilter& filter, std::string& fault);

// Files whose marks cannot be read have none.
void Narrow(const MarkFilter& filter, const std::string& folder, std::vector<std::string>& names);

} // namespace tarn
