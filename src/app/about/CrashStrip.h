// After a run that ended by a crash: a strip below the menu that offers the note about it. It asks
// for nothing and blocks nothing.
#pragma once

#include <memory>
#include <string>

class QMainWindow;

namespace tarn {

class Clipboard;
class Files;
class frmText;

class CrashStrip {
public:
    CrashStrip(QMainWindow& window, Files& files, Clipboard& clipboard);
    ~CrashStrip();

    // Shows the strip when the last run left a note, which is kept under another name.
    void Offer();

private:
    void ShowNote(const std::string& path);

    QMainWindow& m_window;
    Files& m_files;
    Clipboard& m_clipboard;
    std::unique_ptr<frmText> m_note;
};

} // namespace tarn
