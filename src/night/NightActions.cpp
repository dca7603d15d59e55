// What is chosen in the window "Night", and what is done with it.
#include "night/frmNight.h"

#include "common/mark_text.h"
#include "common/numbers.h"
#include "night/NightWords.h"
#include "platform/QtText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FileListBox.h"
#include "widgets/MeasureGraph.h"

#include <QAction>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double kSigmas = 3;
constexpr int kMainComes = 150; // milliseconds

std::string Are(std::size_t count) {
    return CountedFrames(count) + (count == 1 ? " is" : " are");
}

} // namespace

std::optional<std::size_t> frmNight::CurrentFrame() const {
    const QModelIndex current = m_view->currentIndex();
    if (!current.isValid()) return {};
    return m_table.FrameOf(current.row());
}

FrameIndices frmNight::Chosen() const {
    FrameIndices chosen;
    for (const QModelIndex& row : m_view->selectionModel()->selectedRows())
        chosen.push_back(m_table.FrameOf(row.row()));
    std::sort(chosen.begin(), chosen.end());
    return chosen;
}

// The picture that is shown stays.
void frmNight::Choose(const FrameIndices& frames, const QString& said) {
    {
        const QScopedValueRollback<bool> choosing(m_choosing, true);
        QItemSelection rows;
        for (const std::size_t frame : frames) {
            const QModelIndex row = m_table.index(m_table.RowOf(frame), 0);
            rows.select(row, row);
        }
        m_view->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect |
                                                   QItemSelectionModel::Rows);
    }
    if (!frames.empty()) m_view->scrollTo(m_table.index(m_table.RowOf(frames.front()), 0));
    m_choiceSaid = said;
    ChoiceChanged();
}

void frmNight::WorstButton_Click() {
    const FrameIndices worst = WorstTenth(m_folder.Frames(), Upper());
    m_graph->SetLimit({});
    Choose(worst, ToQt(Are(worst.size()) + " the worst tenth by " + std::string(Upper().title)));
}

void frmNight::SigmaButton_Click() {
    const FrameIndices outside = OutsideSigma(m_folder.Frames(), Upper(), kSigmas);
    m_graph->SetLimit({});
    Choose(outside,
           ToQt(Are(outside.size()) + " worse than 3 sigma by " + std::string(Upper().title)));
}

void frmNight::FewStarsButton_Click() {
    const FrameIndices without = WithoutStars(m_folder.Frames());
    m_graph->SetLimit({});
    Choose(without, ToQt(CountedFrames(without.size()) + (without.size() == 1 ? " has" : " have") +
                         " too few stars to be judged"));
}

void frmNight::LimitMoved(double limit) {
    FrameIndices worse = WorseThan(m_folder.Frames(), Upper(), limit);
    std::erase_if(worse, [this](std::size_t i) { // only what the line was drawn under
        return !std::binary_search(m_points.begin(), m_points.end(), i);
    });
    Choose(worse, ToQt(Are(worse.size()) + " worse than " + std::string(Upper().title) + " " +
                       FormatFixed(limit, std::max(1, Upper().digits))));
}

// Also of one that the user makes in the table.
void frmNight::ChoiceChanged() {
    const FrameIndices chosen = Chosen();
    m_chosenPaths.clear();
    for (const std::size_t frame : chosen) m_chosenPaths.insert(m_folder.Frames()[frame].path);
    std::vector<bool> points;
    const auto current = CurrentFrame();
    int shown = -1;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        points.push_back(chosen.size() > 1 &&
                         std::binary_search(chosen.begin(), chosen.end(), m_points[i]));
        if (current && m_points[i] == *current) shown = int(i);
    }
    m_graph->SetChosen(std::move(points));
    m_graph->SetCurrent(shown);
    ShowActs();
}

void frmNight::ShowActs() {
    const FrameIndices chosen = Chosen();
    const auto& frames = m_folder.Frames();
    const auto open =
        std::size_t(std::count_if(chosen.begin(), chosen.end(), [&](std::size_t frame) {
            return frames[frame].mark.decision != Decision::Reject;
        }));
    m_reject->setEnabled(open > 0);
    m_reject->setText(open > 0 ? ToQt("&Reject " + CountedFrames(open))
                               : QStringLiteral("&Reject"));
    const auto current = CurrentFrame();
    m_compare->setEnabled(current && BestBeside(frames, *current).has_value());
    const bool judged = std::any_of(frames.begin(), frames.end(),
                                    [](const NightFrame& frame) { return frame.group >= 0; });
    m_worst->setEnabled(judged);
    m_sigma->setEnabled(judged);
    m_fewStars->setEnabled(judged);
    const QString said = !m_choiceSaid.isEmpty() ? m_choiceSaid
                         : chosen.size() > 1     ? ToQt(CountedFrames(chosen.size()) + " chosen")
                                                 : QString();
    m_said->SetText(FromQt(said));
}

void frmNight::PointClicked(int point) {
    m_choiceSaid.clear();
    const QModelIndex row = m_table.index(m_table.RowOf(m_points[std::size_t(point)]), 0);
    m_view->selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect |
                                                       QItemSelectionModel::Rows);
    m_view->scrollTo(row);
}

void frmNight::MarkChosen(const MarkChange& change, const std::string& verb) {
    std::vector<MarkWish> wishes;
    for (const std::size_t frame : Chosen()) {
        const NightFrame& chosen = m_folder.Frames()[frame];
        if (Changed(chosen.mark, change) != chosen.mark) wishes.push_back({chosen.path, change});
    }
    if (wishes.empty()) return;
    const std::string count = CountedFrames(wishes.size());
    m.marks.MarkFiles(verb + " " + count, wishes);
    const std::string said = SaidOfChange(change) + " - " + count;
    m_choiceSaid = ToQt(said + "; Ctrl+Z takes it back");
    m.shell.ShowMessage(said);
    ShowActs();
}

void frmNight::RejectButton_Click() {
    MarkChosen(Decide(Decision::Reject), "Reject");
}

void frmNight::CompareButton_Click() {
    const auto current = CurrentFrame();
    const auto best = current ? BestBeside(m_folder.Frames(), *current) : std::nullopt;
    if (!best || m.state.BatchRuns) return;
    const FileListBox& list = *m.controls.FileListBox;
    const int stays = list.RowOf(m_folder.Frames()[*best].name);
    const int other = list.RowOf(m_folder.Frames()[*current].name);
    if (stays < 0 || other < 0)
        return m.shell.ShowMessage("Both frames must be in the list to be compared");
    m.slides.CompareRows(stays, other);
    if (m.state.Closing) return;
    QTimer::singleShot(kMainComes, this, [this] { // over the main window, which comes back, too
        raise();
        activateWindow();
    });
}

namespace {

struct MarkKey {
    int keycode;
    MarkChange change;
    const char* verb;
    const char* says;
};
const MarkKey kMarkKeys[] = {
    {'K', Decide(Decision::Keep), "Keep", "marks what is chosen to keep"},
    {'J', Decide(Decision::Reject), "Reject", "marks what is chosen as rejected"},
    {'H', ClearMark(), "Clear marks of", "takes the marks of what is chosen away"},
};

const MarkKey* MarkKeyOf(const QKeyEvent& event) {
    for (const MarkKey& key : kMarkKeys)
        if (event.modifiers() == Qt::NoModifier && keys::KeyCode(event.key()) == key.keycode)
            return &key;
    return nullptr;
}

} // namespace

std::vector<keys::KeyLine> frmNight::KeyLines() {
    std::vector<keys::KeyLine> lines;
    for (const MarkKey& key : kMarkKeys) keys::AddLine(lines, keys::NameOf(key.keycode), key.says);
    lines.push_back({"Ctrl+Z", "takes the last command back"});
    lines.push_back({"Left, Right", "in the graph: the frame before, the next one"});
    lines.push_back({"Up, Down", "in the graph: move the line"});
    lines.push_back({"Esc", "closes the window"});
    return lines;
}

// The table would search for a name that begins so.
bool frmNight::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && MarkKeyOf(*static_cast<QKeyEvent*>(event))) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void frmNight::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Undo)) return m.controls.UndoButton->trigger();
    if (const MarkKey* key = MarkKeyOf(*event)) return MarkChosen(key->change, key->verb);
    QDialog::keyPressEvent(event);
}

} // namespace tarn
