// The one way to the text of a box that holds a note: UTF-8 with CR LF line ends, every character
// as it was put in.
#pragma once

#include <string>

class QPlainTextEdit;

namespace tarn {

class NoteBox {
public:
    explicit NoteBox(QPlainTextEdit& edit) : m_edit(edit) {}

    std::string Text() const;

    // The text of another note: undo does not reach behind it, and no change is told.
    void Load(const std::string& text);

    // A new text for the same note, as one edit that undo takes back.
    void Replace(const std::string& text);

    void Focus();

private:
    QPlainTextEdit& m_edit;
};

} // namespace tarn
