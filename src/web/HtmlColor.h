// Colours of pages: hexadecimal digits, red first, without "#". The colour's number has red in its
// lowest byte.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// Six digits for most colours. Two ranges come out with five (256 to 4095, 65536 to 1048575), and
// pages keep them so.
std::string HtmlColorOf(int number);

// The number of such a text; 0 when it is none.
int NumberOfHtmlColor(std::string_view text);

} // namespace tarn
