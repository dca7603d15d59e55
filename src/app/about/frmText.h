// A text to be read, and taken along with the Copy button: "About", and the note of a crash.
#pragma once

#include <QWidget>

#include <string>

class QLabel;
class QPlainTextEdit;

namespace tarn {

class Clipboard;

class frmText : public QWidget {
public:
    // `name` is the window's object name.
    frmText(const char* name, const char* title, Clipboard& clipboard);

    // Shows the window with a heading above the text.
    void ShowText(const std::string& heading, const std::string& text);

private:
    void Copy();

    Clipboard& m_clipboard;
    QLabel* m_heading;
    QPlainTextEdit* m_text;
    QLabel* m_say;
};

} // namespace tarn
