// Notes for the frames of a night that have none: which, and what they will say, before they are
// written by one command.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "notes/NightNotes.h"

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QListWidget;
class QPlainTextEdit;
class QPushButton;

namespace tarn {

class frmFillNotes : public QDialog {
public:
    explicit frmFillNotes(Context& context);

    // Holds the other windows until it is closed; why it cannot be. `lists` are the user's own.
    Outcome ShowNotes(const FactLists& lists);

    void WriteButton_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override; // Esc

private:
    bool Plan(const FactLists& lists, std::string& fault);
    std::vector<NightNote> Ticked() const;
    void ShowCount();
    void ShowNote(int row);

    Context& m;
    KeptPlace m_place;
    QListWidget* m_list;
    QPlainTextEdit* m_text;
    QLabel* m_said;
    QPushButton* m_write;
    QPushButton* m_cancel;
    QPushButton* m_close;
    NightNotes m_plan;
};

} // namespace tarn
