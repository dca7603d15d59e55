// The places from which pictures are taken: a table, and which of them counts for pictures that do
// not say theirs. What is not valid is told and not kept.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QLabel;
class QTableWidget;

namespace tarn {

class frmSites : public QDialog {
public:
    explicit frmSites(Context& context);

    void ShowSites();

    std::function<void()> onKept;

private:
    void AddRow(const std::vector<std::string>& cells);
    void FillChoice();
    std::string Cell(int row, int column) const;
    void KeepButton_Click();

    Context& m;
    KeptPlace m_place;
    QTableWidget* m_table;
    QComboBox* m_otherwise;
    QLabel* m_fault;
};

} // namespace tarn
