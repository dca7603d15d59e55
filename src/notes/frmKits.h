// The user's telescopes, cameras and mounts with the names by which headers mean them: a table,
// kept as a file of the notes folder. What is not valid is told and not kept.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "notes/KitList.h"

#include <QDialog>

#include <string>
#include <vector>

class QLabel;
class QTableWidget;

namespace tarn {

class frmKits : public QDialog {
public:
    explicit frmKits(Context& context);

    Outcome ShowKits(); // why it cannot be

private:
    void MakeButtons();
    void AddRow(const KitItem& item);
    void AddFromPicture();
    KitItem ItemOf(int row) const;
    std::string Cell(int row, int column) const;
    void KeepButton_Click();

    Context& m;
    KeptPlace m_place;
    QTableWidget* m_table;
    QLabel* m_fault;
    std::string m_path;   // of the file
    std::string m_before; // its bytes
};

} // namespace tarn
