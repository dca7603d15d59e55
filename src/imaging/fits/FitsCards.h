// A look at the cards of a header before the library sees them: it stops the whole program on some.
#pragma once

#include <string>

namespace tarn {

// Whether the header that begins at this byte of the file may be given to the library. Of a packed
// picture it writes a number that it cannot read into a message too short for it, and divides by
// sizes of 0. True for a file that is not
// there, or without such a header.
bool HasReadableCards(const std::string& path, long long begin);

// Whether the first header has no more lines than programs write: the library goes through all of
// them for each word that it is asked for.
bool HasFewCards(const std::string& path);

} // namespace tarn
