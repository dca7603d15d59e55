// Says that looking at a picture has set its file's date, as long as nobody has said whether that
// is to be so. It asks for nothing, blocks nothing, and goes by its buttons alone.
#pragma once

#include "desk/Context.h"

#include <QTimer>
#include <QWidget>

#include <string>

namespace tarn {

class ElidedLabel;
class frmMain;

class DateStrip : public QWidget {
public:
    DateStrip(Context& context, frmMain& window); // once the commands are connected

    // What viewing has set since; a show or a batch is waited for.
    void Follow();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Show();
    void Hide();
    std::string WhichFiles() const; // "'a.jpg'", "'a.jpg' and 2 more files"
    std::string PutBack();
    void Undo();
    void Close();

    Context& m;
    frmMain& m_window;
    ElidedLabel* m_text;
    QTimer m_later;
    bool m_notNow = false; // put away unanswered, for this run
};

} // namespace tarn
