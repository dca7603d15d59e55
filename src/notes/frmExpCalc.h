// The exposure calculator: four groups of exposures, their sum, and its text for the composer.
#pragma once

#include "desk/state/WindowState.h"
#include "notes/ExposureSum.h"

#include <QDialog>

#include <array>
#include <optional>

class QLabel;
class QLayout;
class QLineEdit;

namespace tarn {

class FrmNewNotes;

class frmExpCalc : public QDialog {
public:
    frmExpCalc(const WindowState& places, FrmNewNotes& composer);

    void CommandCalc_Click();
    void CommandFill_Click();
    void CommandClear_Click();

private:
    struct Row {
        QLineEdit* seconds = nullptr;
        QLineEdit* frames = nullptr;
        QLabel* result = nullptr;
    };
    QLayout* MakeRows();
    QLayout* MakeCommands();

    FrmNewNotes& m_composer;
    std::array<Row, kExposureRows> m_rows;
    QLabel* m_labelTotal = nullptr;
    std::optional<ExposureSum> m_sum; // none before the first calculation
};

} // namespace tarn
