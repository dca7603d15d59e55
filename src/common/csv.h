// Fields of comma-separated tables, as other programs read them.
#pragma once

#include <string>
#include <string_view>

namespace tarn {

// In quotes where the separator, a quote or a line end would break the row.
inline std::string CsvField(std::string_view text) {
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
    std::string field = "\"";
    for (const char sign : text) {
        if (sign == '"') field += sign;
        field += sign;
    }
    return field + "\"";
}

} // namespace tarn
