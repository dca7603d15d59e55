// The composer: the facts of an observation picked from lists, written into the note as one line
// each, and read back from it. It stays open beside the main window.
#pragma once

#include "common/late.h"
#include "desk/Context.h"
#include "notes/FilledFacts.h"
#include "notes/NoteBox.h"
#include "notes/NoteFormats.h"

#include <QDialog>

#include <array>
#include <memory>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tarn {

class ElidedLabel;
class frmExpCalc;
class NotesRoom;

class FrmNewNotes : public QDialog {
public:
    FrmNewNotes(Context& context, NotesRoom& room);
    ~FrmNewNotes() override;

    void OpenWindow();
    void EnableSave(bool enabled);
    void KeepValues(); // chosen rows and places onto the desk
    void SetExposure(const std::string& text);

    void LoadNoteFormats();
    void CommandSet_Click();
    void CommandAdd_Click();
    void CommandSetLine_Click();
    void CommandSetLine1_Click();
    void CommandToggle_Click();
    void CommandCalcExposure_Click();
    void CommandFill_Click();
    void FollowCurrent();       // another file is shown
    void CommandCancel_Click(); // hides it and the calculator

    void reject() override { CommandCancel_Click(); } // Esc and the window's cross

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct EntryControls {
        QCheckBox* check = nullptr;
        QComboBox* combo = nullptr;
        ElidedLabel* source = nullptr; // where a value that was filled in came from
        bool isFilled = false;         // and stands there
        bool isOwn = false;            // chosen or typed since
    };

    QLayout* MakeFirstLines();
    QLayout* MakeEntries();
    QLayout* MakeCommands();
    void MakeEntry(QGridLayout& grid, int row);
    QPushButton* Command(QLayout& to, const char* name, const char* caption, const char* tooltip,
                         void (FrmNewNotes::*command)());
    void ShowList(std::size_t entry, bool selectFirst);
    void ApplyStoredChoices();
    void KeepChoices();
    void TextFirstLines_KeyUp(int key);
    EntryTicks Ticks() const;
    void AskForFacts();
    void TakeFacts();
    void MakeOwn(std::size_t entry);

    // Commands of other rooms.
    void CommandPrev_Click();
    void CommandNext_Click();
    void CommandSave_Click();
    void CommandRestore_Click();
    void CommandEdit_Click();
    void CommandClear_Click();

    Context& m;
    NotesRoom& m_room;
    FormatLists m_lists;
    std::string m_path;      // of the format file in use
    bool m_fromFile = false; // the lists as they stand
    bool m_choicesApplied = false;
    bool m_allOff = false; // the toggle

    std::array<EntryControls, kNoteEntries> m_entries;
    QCheckBox* m_checkFirst = nullptr;
    QPlainTextEdit* m_textLine1 = nullptr;
    QLineEdit* m_textFirstLines = nullptr;
    QLabel* m_label1 = nullptr;
    QPushButton* m_commandSave = nullptr;
    QPushButton* m_commandToggle = nullptr;
    int m_pressedInFirstLines = 0; // a key counts on its release where it was pressed
    std::unique_ptr<NoteBox> m_firstLines;
    std::unique_ptr<frmExpCalc> m_calculator;
    QCheckBox* m_fillEach = nullptr;
    bool m_fills = false;   // a fill is under way that was asked for by its button
    std::string m_filledOf; // path of the picture that sources are shown of
    struct PictureFacts {
        std::string path;
        FilledFacts facts;
        std::string fault;
    };
    std::unique_ptr<Late<std::pair<std::string, FactLists>, PictureFacts>> m_facts; // at first need
};

} // namespace tarn
