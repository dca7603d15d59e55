// What a note file's bytes mean. A note is code page text with CR LF line ends, no header and no
// closing line end; an earlier version wrote it between double quotes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarn {

inline constexpr std::size_t kNoteReadLimit = 8000;     // bytes that a reader takes
inline constexpr std::size_t kLargestNote = 16U << 20U; // bytes of one that is replaced

// Bytes of the older form (a quote in front; a quote, CR and LF behind) without its marks; any
// other bytes as they are.
std::string_view WithoutOldMarks(std::string_view bytes);

// The repair of old notes: one quote less at the start, one at the end, one before a closing line
// end. None when there is nothing to repair.
std::optional<std::string> WithoutQuotes(std::string_view text);

} // namespace tarn
