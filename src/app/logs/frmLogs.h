// The log and text files of the shown folder, one of them on show, with a field that finds words in
// it. It stands beside the other windows and blocks none.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "platform/LogFile.h"
#include "widgets/WindowKeys.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace tarn {

class frmLogs : public QWidget {
public:
    explicit frmLogs(Context& context);

    // Shows the window with the files of the shown folder; on the current file if it is one.
    void ShowFolder();
    // Reads folder and file again; the same file stays on show, at the same place.
    void RefreshFolder();
    void FindNext();

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    void changeEvent(QEvent* event) override;

private:
    void MakeContents();
    void GoToFind();
    void Close() { close(); }
    static const WindowKey<frmLogs> kKeys[];
    void FillList(const std::string& wanted);
    void ShowChosen();
    void ShowMore();
    void Say();

    Context& m;
    LogFile m_file;
    std::string m_folder;
    QListWidget* m_list;
    QPlainTextEdit* m_text;
    QLineEdit* m_find;
    QPushButton* m_more;
    QLabel* m_say;
    KeptPlace m_place;
};

} // namespace tarn
