// A note's lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarn {

// At most so many of the first; line ends in all their forms. An empty note has none.
std::vector<std::string> NoteLines(std::string_view note, std::size_t most);

} // namespace tarn
