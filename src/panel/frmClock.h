// Puts right what a camera's clock did wrong: one picture whose true time is known tells by how
// much, and all pictures of that camera in the folder are moved by it.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "panel/ClockPictures.h"

#include <QDialog>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QVBoxLayout;

namespace tarn {

class frmClock : public QDialog {
public:
    explicit frmClock(Context& context);

    // For the picture shown; holds the other windows until it is closed. Why it cannot be.
    Outcome ShowCurrent();

    void TrueTimeChanged();
    void SetButton_Click();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override; // Esc

private:
    void MakeTimes(QVBoxLayout& all);
    void MakeButtons(QVBoxLayout& all);
    bool ReadFolder();
    void ShowPictures();
    std::string TrueTime() const;
    std::vector<ClockPicture> Ticked() const;
    void ShowCount();
    void SetRuns(bool runs);

    Context& m;
    KeptPlace m_place;
    QLabel* m_file;
    QLineEdit* m_shows; // the date that its camera wrote
    QLineEdit* m_true;
    QLabel* m_error; // of the clock, and what it mostly comes from
    QTableWidget* m_table;
    QLabel* m_said;
    QPushButton* m_set = nullptr;
    QPushButton* m_close = nullptr;
    QPushButton* m_cancel = nullptr;
    ClockPicture m_picture;               // of the clock
    std::vector<ClockPicture> m_pictures; // of that camera, in the order of the list
    std::size_t m_others = 0;             // of other cameras, or without a date
    std::optional<std::int64_t> m_seconds;
};

} // namespace tarn
