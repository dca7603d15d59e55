// Between the program's text (UTF-8 or file name bytes in std::string) and the toolkit's.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace tarn {

inline QString ToQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) {
    return text.toStdString();
}

// For labels, tabs and buttons built from names: "&" would otherwise mark a shortcut.
inline QString ToCaption(std::string_view text) {
    return ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace tarn
