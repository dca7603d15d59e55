// What stands in an XMP file around the RDF root: comments, the packet's wrapper and the blanks
// that fill it up, the outer element. The library that changes properties keeps none of it. No
// toolkit.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// `file` with its root replaced by that of `other`; empty where one of them has none.
std::string WithRootOf(std::string_view file, std::string_view other);

} // namespace tarn
