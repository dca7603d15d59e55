#include "notes/NoteText.h"

#include "common/text.h"

namespace tarn {

namespace {

constexpr std::string_view kQuoteAndLineEnd = "\"\r\n";

} // namespace

std::string_view WithoutOldMarks(std::string_view bytes) {
    const std::size_t marks = 1 + kQuoteAndLineEnd.size();
    if (bytes.size() < marks || bytes.front() != '"' || !bytes.ends_with(kQuoteAndLineEnd))
        return bytes;
    return bytes.substr(1, bytes.size() - marks);
}

std::optional<std::string> WithoutQuotes(std::string_view text) {
    const std::size_t before = text.size();
    if (text.starts_with('"')) text.remove_prefix(1);
    if (text.ends_with('"')) text.remove_suffix(1);
    std::string repaired(text);
    if (text.ends_with(kQuoteAndLineEnd))
        repaired.erase(repaired.size() - kQuoteAndLineEnd.size(), 1);
    if (repaired.size() == before) return {};
    return repaired;
}

} // namespace tarn
