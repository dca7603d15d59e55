// Captions as they are read: the marks of letters and the keys behind are for the toolkit.
#pragma once

#include <QAction>
#include <QString>

namespace tarn {

// "Copy && &Paste\tCtrl+V" is "Copy & Paste".
inline QString WithoutMarks(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size() && text[i] != QLatin1Char('\t'); ++i) {
        if (text[i] == QLatin1Char('&') && ++i == text.size()) break;
        plain += text[i];
    }
    return plain;
}

inline QString CaptionOf(const QAction& entry) {
    return WithoutMarks(entry.text());
}

} // namespace tarn
