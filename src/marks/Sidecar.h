// The mark in XMP, as other programs write and read it:
//   xmp:Rating          0 to 5 stars, -1 for a reject (also as a decimal number)
//   xmpDM:pick          1 keep, -1 reject, 0 neither
//   digiKam:PickLabel   1 reject, 2 undecided, 3 keep; kept in step where it stands already
// Where they differ: a reject in Rating or pick is one, since a program that knows one of them may
// not know the other; then pick, and the label only where there is no pick. Stars of a rejected
// picture have no place in Rating and stand in a property of our own; beside a Rating that is no
// reject it tells that another program has lifted ours. No toolkit.
#pragma once

#include "common/mark.h"

#include <string>
#include <string_view>

namespace tarn {

// More are no sidecar.
inline constexpr std::size_t kLargestSidecar = 16U << 20U;

// None, and why, when these bytes are no XMP. XMP without a word of it is no mark.
std::optional<Mark> MarkOfXmp(std::string_view bytes, std::string* error);

// The same XMP with the change; without bytes a new one. None, and why, when it is no XMP. All
// properties stay, known or not, and what stands around the RDF root. Within it the library keeps
// no comments, nor the form (a property may become an attribute or an element); UTF-16 becomes
// UTF-8.
std::optional<std::string> XmpWithMark(std::string_view bytes, const MarkChange& change,
                                       std::string* error);

} // namespace tarn
