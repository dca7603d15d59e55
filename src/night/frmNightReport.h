// The window "Night Report": folders, what goes into the report, and where it goes.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "sky/paper/SaveReport.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QVBoxLayout;

namespace tarn {

class frmNightReport : public QDialog {
public:
    explicit frmNightReport(Context& context);

    void Form_Load(); // with the folder shown, unless several are chosen

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeFolders(QVBoxLayout& all);
    void MakeChoices(QVBoxLayout& all);
    void MakeCommands(QVBoxLayout& all);
    void AddFolder(const std::string& folder);
    void SaveButton_Click(ReportKind kind);
    std::optional<ReportDocument> Read(std::string& fault);
    void TakeMarksAndNotes(std::vector<ReportFrame>& frames);
    ReportChoice Choice() const;
    void Say(const std::string& text);

    Context& m;
    KeptPlace m_place;
    QListWidget* m_folders;
    QLabel* m_said;
    QPushButton* m_cancel;
    std::vector<QPushButton*> m_commands;
};

} // namespace tarn
