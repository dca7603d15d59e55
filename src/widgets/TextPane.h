// A text pane that is filled part by part.
#pragma once

#include "platform/QtText.h"

#include <QPlainTextEdit>
#include <QTextCursor>

namespace tarn {

// Behind what stands there; selection and place stay.
inline void AppendText(QPlainTextEdit& pane, const std::string& text) {
    QTextCursor end(pane.document());
    end.movePosition(QTextCursor::End);
    end.insertText(ToQt(text));
}

} // namespace tarn
