// Between the program's text (UTF-8 or file name bytes in std::string) and the toolkit's.
#pragma once

#include <QString>
#include <QTextDocument>

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

// A tooltip that shows the text as it is: what looks like markup is taken for it otherwise.
inline QString ToToolTip(std::string_view text) {
    const QString plain = ToQt(text);
    return Qt::mightBeRichText(plain) ? QStringLiteral("<qt>%1</qt>").arg(plain.toHtmlEscaped())
                                      : plain;
}

} // namespace tarn
