#include "print/NoteLines.h"

namespace tarn {

std::vector<std::string> NoteLines(std::string_view note, std::size_t most) {
    std::vector<std::string> lines;
    while (!note.empty() && lines.size() < most) {
        const std::size_t end = note.find_first_of("\r\n");
        lines.emplace_back(note.substr(0, end));
        if (end == std::string_view::npos) break;
        const bool both = note.substr(end, 2) == "\r\n";
        note.remove_prefix(end + (both ? 2 : 1));
    }
    return lines;
}

} // namespace tarn
