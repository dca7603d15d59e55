// Narrows the file list for as long as it is open: by the single patterns of the list, or by a
// pattern of the user's own. It stands above all windows and blocks none.
#pragma once

#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "navigation/NameFilter.h"
#include "widgets/WindowKeys.h"

#include <QDialog>

#include <array>
#include <string>
#include <vector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace tarn {

class frmFilter : public QDialog {
public:
    explicit frmFilter(Context& context);

    // Loads the window anew and shows it.
    void ShowFilter();

    // Also Esc outside the text: the list goes back to what it was.
    void reject() override { close(); }

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPoint BesideTheList() const;
    void MakeContents();
    void LoadBoxes();
    void LoadPresets();
    void TakeBackLastClosing();
    void Form_Unload();
    void CheckFilter_Click();
    void CheckCustom_Click();
    void ComboFilter_Click();
    void TextFilter_Enter();
    void LeaveText();
    static const WindowKey<frmFilter> kKeys[];
    void CommandAdd_Click();
    void CommandDelete_Click();
    void EnableBoxes(bool enabled);
    void EnableClassBoxes(bool enabled);
    void PutOnList(const std::string& pattern);
    void PutTextOnList();
    void TellFound();
    std::array<bool, kFilterBoxes> Ticked() const;
    std::vector<std::string> Presets() const;

    Context& m;
    std::array<QCheckBox*, kFilterBoxes> m_boxes; // CheckFilter(0..15)
    QCheckBox* m_custom;                          // CheckCustom
    QLineEdit* m_text;                            // TextFilter
    QComboBox* m_presets;                         // ComboFilter
    QLabel* m_found;                              // how many files are listed
    KeptPlace m_place;
    bool m_loading = false;

    std::string m_openedWith;            // pattern that the list had when the window opened
    std::vector<std::string> m_captions; // its patterns, one a box
    bool m_closedBefore = false;         // and what stood at that closing:
    std::array<bool, kFilterBoxes> m_lastTicked{};
    bool m_lastCustom = false;
    std::string m_lastPattern;
};

} // namespace tarn
