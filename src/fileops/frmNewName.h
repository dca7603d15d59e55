// Asks for the new name of the current picture; once as frmRename, once as frmDuplicate.
#pragma once

#include <QDialog>

#include <functional>
#include <string>

class QLabel;
class QLineEdit;

namespace tarn {

// What differs between the twins.
struct NewNameTexts {
    const char* form;
    const char* title;
    const char* box; // name of the control that takes the new name
    const char* button;
    const char* caption; // of the button
};

class frmNewName : public QDialog {
public:
    frmNewName(QWidget& main, const NewNameTexts& texts);

    // Asks with the old name to begin with, and holds the other windows meanwhile. `accept` gets
    // the new name, one that is fit to be one; nothing is called when the user gives up.
    void Ask(const std::string& folder, const std::string& name,
             std::function<void(const std::string& newName)> accept);

private:
    void ActionButton_Click();

    QLabel* m_path;   // PathText
    QLabel* m_old;    // the old name
    QLineEdit* m_new; // RenameText or DupText
    QLabel* m_error;  // ErrorLabel
    std::string m_oldName;
    std::function<void(const std::string&)> m_accept;
};

} // namespace tarn
