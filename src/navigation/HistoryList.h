// The folder history as a list in List1, in the place of the camera data until a file is selected.
#pragma once

#include "desk/Context.h"
#include "widgets/WindowKeys.h"

#include <QObject>

#include <functional>

namespace tarn {

class HistoryList : public QObject {
public:
    // `goTo` opens an entry of the history on the row last shown there.
    HistoryList(Context& context, std::function<void(int)> goTo);

    void ConnectControls();

    void FileHistoryButton_Click();

    // These act only while the history is in List1.
    void List1_DblClick();
    void List1_KeyPress(int key); // X takes a row out of the view; Enter is a double click

    // The rows go when a file is shown.
    void GiveUp();

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ClearHistory();
    void TakeRowOut();
    static const WindowKey<HistoryList> kKeys[];

    Context& m;
    std::function<void(int)> m_goTo;
};

} // namespace tarn
