// Changes the date taken inside the current picture's file, and steps through the list meanwhile.
#pragma once

#include "desk/Context.h"
#include "pictureinfo/dates/CameraDateText.h"

#include <QDialog>

#include <functional>
#include <string>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace tarn {

class frmDate : public QDialog {
public:
    // `setFileDates` makes the file's own times follow a date that was written.
    frmDate(Context& context, std::function<Outcome()> setFileDates);

    // Shows the current picture's date and holds the other windows until it is closed.
    void ShowCurrent();

    void HourMinusButton_Click() { MoveHour(-1); }
    void HourPlusButton_Click() { MoveHour(1); }
    void AddButton_Click();
    void CopyButton_Click();
    void PrevButton_Click();
    void NextButton_Click();
    void SetButton_Click();

private:
    void MakeDates(QVBoxLayout& all);
    void MakeButtons(QVBoxLayout& all);
    void RefreshCurrent();
    void MoveHour(int by);
    std::string NewDate() const;
    std::size_t Position() const;
    void Say(const std::string& text, bool critical = false);
    void ShowInPanel(const std::string& line);
    void TakeOver(const std::string& date, const PictureDateText& shown);

    Context& m;
    std::function<Outcome()> m_setFileDates;
    QLabel* m_file;          // FileLabel
    QLineEdit* m_current;    // CurrentDateText
    QLineEdit* m_new;        // SetDateText
    QLabel* m_crosses;       // AutoErrorLabel
    QPushButton* m_set;      // SetButton
    QCheckBox* m_advance;    // CheckAdvance
    std::string m_shownFile; // FileLabel's
    std::string m_shownDate; // what CurrentDateText shows, as the camera wrote it
    bool m_placed = false;   // from the first showing on it stands where the user has put it
};

} // namespace tarn
