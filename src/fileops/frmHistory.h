// What the program did to files: a row for each command, its steps below, taken back or done again
// from here. It stands beside the other windows and blocks none.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "fileops/HistoryTable.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QSpinBox;
class QTreeView;

namespace tarn {

class frmHistory : public QWidget {
public:
    explicit frmHistory(Context& context);

    void ShowHistory();
    // After a command: read anew, the chosen row stays chosen.
    void ReadAgain();

    std::function<void(const CommandRow& row)> onUndo;
    std::function<void(const CommandRow& row)> onRedo;
    std::function<void(const std::string& path)> onShowFile;
    std::function<void()> onForgotten;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void MakeContents();
    QWidget* MakeFilter();
    QWidget* MakeLimits();
    QWidget* MakeCommands();
    void ShowSteps();
    void SetCommands();
    void Export();
    void Forget();
    void KeepLimits();
    std::string ChosenFile() const;
    const CommandRow* Chosen() const;

    Context& m;
    HistoryTable m_table;
    QTreeView* m_list;
    QListWidget* m_steps;
    QLineEdit* m_find;
    QLabel* m_say;
    QPushButton* m_undo;
    QPushButton* m_redo;
    QPushButton* m_show;
    QSpinBox* m_days;
    QSpinBox* m_size;
    std::vector<std::string> m_files; // of the steps that are listed
    KeptPlace m_place;
};

} // namespace tarn
