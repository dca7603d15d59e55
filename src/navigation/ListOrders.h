// How the rows of the file list are chosen and ordered beyond its pattern: the kinds of sorting and
// the choices by mark, a row each, and what is kept of them for each folder. No widgets.
#pragma once

#include "common/file_look.h"
#include "common/mark.h"
#include "sky/judging/FrameNumbers.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// What a kind asks of each file beside its name.
enum class SortNeeds { Nothing, Look, CaptureTime, Mark, Measures };

struct SortKind {
    const char* word;    // as it is kept
    const char* caption; // "&" marks its letter in the menu
    SortNeeds needs;
    // By these the rows rise; equal ones stay in the order of their names. Null: by name alone.
    std::int64_t (*keyOfLook)(const FileLook&) = nullptr;
    std::string (*keyOfName)(std::string_view name) = nullptr;
    // Of what is measured, whose rows begin with the best.
    const FrameNumber* number = nullptr;
};
const std::vector<SortKind>& SortKinds(); // by name is the first

struct ListOrder {
    int kind = 0;         // of SortKinds
    bool natural = false; // "2" ahead of "10"
    bool operator==(const ListOrder&) const = default;
};

// "M31_2.fit" ahead of "M31_10.fit", in any case.
bool NaturalLess(std::string_view a, std::string_view b);

// Rises from what is kept with five stars to what is rejected.
std::int64_t SortKeyOf(const Mark& mark);

// Rises from the best one; none where it is not known.
std::optional<std::int64_t> SortKeyOf(const JudgedFrame& frame, const FrameNumber& number);

// `names` are in the order of names. What `keyOf` does not know comes last.
using SortKeyOfName = std::function<std::optional<std::int64_t>(const std::string& name)>;
std::vector<std::string> Sorted(std::vector<std::string> names, const ListOrder& order,
                                const SortKeyOfName& keyOf);

struct MarkChoiceRow {
    const char* caption;
    bool (*takes)(const Mark&);
};
const std::vector<MarkChoiceRow>& MarkChoices();

// The orders of folders as the one text that is stored; the folders used last come first, and those
// in the order of names are not among them.
ListOrder OrderOfFolder(std::string_view stored, std::string_view folder);
std::string WithOrder(std::string_view stored, std::string_view folder, const ListOrder& order);

} // namespace tarn
