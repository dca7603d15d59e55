// Which files a batch could not work on, and why: up to ten are seen, all are copied.
#pragma once

#include "desk/commands/Outcome.h"

#include <QWidget>

#include <string>
#include <vector>

class QLabel;
class QPlainTextEdit;

namespace tarn {

class Clipboard;

class FaultList : public QWidget {
public:
    FaultList(QWidget& window, Clipboard& clipboard);

    // Under what the batch said. The keyboard stays where it is.
    void ShowFaults(const std::string& text, const std::vector<FileFault>& faults);

private:
    void CopyList();

    Clipboard& m_clipboard;
    QLabel* m_heading;
    QPlainTextEdit* m_list;
    QLabel* m_more;
    std::string m_all; // a line a file: whole path, tab, why
};

} // namespace tarn
