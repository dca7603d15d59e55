// Head and close of a hand-laid page. All texts are page bytes.
#pragma once

#include "desk/state/HtmlSettings.h"

#include <string>
#include <string_view>

namespace tarn {

// From the document type to the body tag, with the zoom lines where they are on: then the script
// must lie beside the page before anything else is written. `now` is the date and time.
std::string PageHead(const HtmlSettings& settings, std::string_view version, std::string_view now);

// What follows: the table with title, links and date.
std::string PageTitleTable(const HtmlSettings& settings, std::string_view now);

// The last two lines of a page.
std::string PageClose();

// The line that an appending run begins with. It goes over the close of the page, from
// `AppendOffset` on; what it does not cover stays.
std::string AppendLine(std::string_view now);

inline constexpr long long kLargestAppend = 32767; // bytes of a page that can be appended to

// Where in a page of this many bytes appending begins; negative when the page is too short or too
// long to be appended to.
long long AppendOffset(long long pageBytes);

// "../" when the page's folder is not as deep as the folder of the pictures, else empty.
std::string RelativePrefix(std::string_view pagePath, std::string_view pictureFolder);

// The link from a page to a home page above it; none when that lies deeper than the page. Only the
// depths are compared.
bool HomeLink(std::string_view pagePath, std::string_view homePath, std::string& link);

} // namespace tarn
