// The window "Night": the measured frames of the folder as a table and as a graph. What is selected
// in the table is what is chosen; its current row is the picture that is shown.
#pragma once

#include "common/keys.h"
#include "desk/Context.h"
#include "desk/places/KeptPlace.h"
#include "night/NightChoice.h"
#include "night/NightFolder.h"
#include "night/NightTable.h"

#include <QDialog>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

class QBoxLayout;
class QComboBox;
class QMenu;
class QProgressBar;
class QPushButton;
class QSplitter;
class QTableView;

namespace tarn {

class ElidedLabel;
class MeasureGraph;

class frmNight : public QDialog {
public:
    frmNight(Context& context, NightFolder& folder);

    void Form_Load();
    void FramesShown(); // of another folder, or the same anew
    void Refresh();     // more is known of them, or their marks have changed
    void FollowCurrent();

    std::function<void()> onClosed;

    static std::vector<keys::KeyLine> KeyLines(); // as they are read

protected:
    void closeEvent(QCloseEvent* event) override;
    void done(int result) override; // Esc
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The layout.
    QWidget* MakeTable();
    QWidget* MakeGraph();
    QBoxLayout* MakeChoosers();
    QBoxLayout* MakeActs();
    QComboBox* MeasureBox(const char* name, const char* spoken, const std::string& chosen);
    QPushButton* Act(QBoxLayout& bar, const char* name, const char* caption, const char* tip,
                     void (frmNight::*act)());

    // Columns.
    void FillColumns();
    void ShowColumns();
    void KeepColumns();

    // The choice.
    FrameIndices Chosen() const;
    void Choose(const FrameIndices& frames, const QString& said);
    void WorstButton_Click();
    void SigmaButton_Click();
    void FewStarsButton_Click();
    void LimitMoved(double limit);
    void ChoiceChanged();
    void MarkChosen(const MarkChange& change, const std::string& verb);
    void RejectButton_Click();
    void CompareButton_Click();
    void CancelButton_Click();

    void RowShown();
    void PointClicked(int point);
    void MeasuresChosen();
    void FillGraph();
    void ShowTitles();
    void ShowProgress();
    void ShowActs();
    const NightColumn& Upper() const;
    const NightColumn& Lower() const;
    bool IsOverTime() const;
    std::optional<std::size_t> CurrentFrame() const;

    Context& m;
    NightFolder& m_folder;
    NightTable m_table;
    KeptPlace m_place;
    QSplitter* m_parts;
    QTableView* m_view;
    MeasureGraph* m_graph;
    QComboBox* m_upper;
    QComboBox* m_lower;
    QComboBox* m_along;
    QMenu* m_columns;
    ElidedLabel* m_summary;
    ElidedLabel* m_said;
    QProgressBar* m_progress;
    QPushButton* m_cancel;
    QPushButton* m_worst;
    QPushButton* m_sigma;
    QPushButton* m_fewStars;
    QPushButton* m_reject;
    QPushButton* m_compare;
    std::vector<std::size_t> m_points; // the frames of the graph's points
    std::set<std::string> m_chosenPaths;
    QString m_choiceSaid;     // how the choice came about
    bool m_choosing = false;  // by code: no picture is stepped to
    bool m_isWaiting = false; // for the first answer of this folder
};

} // namespace tarn
