// Asks for the name of the folder for thumbnails.
#pragma once

#include <QDialog>

#include <functional>
#include <string>

class QLabel;
class QLineEdit;

namespace tarn {

class frmThumbFolder : public QDialog {
public:
    // `accept` gets a new name, and says whether it can be one; the window stays when not.
    frmThumbFolder(QWidget& main, std::function<bool(const std::string& name)> accept);

    // Shows the name as it stands and holds the other windows meanwhile.
    void Ask(const std::string& name);

private:
    void SetThumbFolderButton_Click();

    std::function<bool(const std::string&)> m_accept;
    QLineEdit* m_text;  // ThumbFolderText
    QLabel* m_notValid; // ThumbNotValidLabel
};

} // namespace tarn
