#include "notes/NoteBox.h"

#include "platform/QtText.h"

#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextCursor>

namespace tarn {

// Not the box's plain text, in which no-break blanks are blanks.
std::string NoteBox::Text() const {
    QString text = m_edit.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1String("\r\n"));
    text.replace(QChar::LineSeparator, QLatin1String("\r\n"));
    return FromQt(text);
}

void NoteBox::Load(const std::string& text) {
    const QSignalBlocker silent(m_edit);
    m_edit.setPlainText(ToQt(text));
}

void NoteBox::Replace(const std::string& text) {
    QTextCursor cursor(m_edit.document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(ToQt(text));
    m_edit.setTextCursor(cursor);
}

void NoteBox::Focus() {
    m_edit.setFocus(Qt::OtherFocusReason);
}

} // namespace tarn
