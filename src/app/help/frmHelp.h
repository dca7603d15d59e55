// The help: a list of pages, the page chosen, and a field that finds words in all of them. It
// stands beside the other windows and blocks none.
#pragma once

#include "desk/places/KeptPlace.h"
#include "widgets/WindowKeys.h"

#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QListWidget;

namespace tarn {

class HelpText;

class frmHelp : public QWidget {
public:
    frmHelp(WindowPlace& place, std::function<QString()> keysPage); // the page of all keys

    // Shows the window on a page of HelpPages(); another number shows it on the page it has.
    void ShowPage(int page);

    // The next place of the text in the field: in this page behind the cursor, then in the pages
    // after it, round to the start.
    void FindNext();

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

private:
    void MakeContents();
    void GoToFind();
    void Close() { close(); }
    static const WindowKey<frmHelp> kKeys[];
    void ShowRow(int row);
    QString HtmlOf(int row) const;
    bool FindFromStart(const QString& text, int row);

    std::function<QString()> m_keysPage;
    QListWidget* m_pages;
    HelpText* m_page;
    QLineEdit* m_find;
    QLabel* m_found;
    KeptPlace m_place;
};

} // namespace tarn
