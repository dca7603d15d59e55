#include "marks/MarkControls.h"

#include "common/mark_text.h"
#include "common/paths.h"
#include "desk/batch/DroppedNote.h"
#include "platform/QtText.h"
#include "widgets/FileListBox.h"
#include "widgets/Themes.h"

#include <QAction>
#include <QLabel>

namespace tarn {

namespace {

constexpr char kAside[] = "Kept in the settings folder: its sidecar could not be written";

bool GivesMark(const MarkChange& change) {
    return change.decision.value_or(Decision::None) != Decision::None ||
           change.stars.value_or(0) > 0;
}

} // namespace

void MarkControls::ConnectControls() {
    MainControls& c = m.controls;
    const auto marks = [this](QAction* entry, const MarkChange& change) {
        Connect(entry, [this, change] { Set(change); });
    };
    marks(c.MarkKeepButton, Decide(Decision::Keep));
    marks(c.MarkRejectButton, Decide(Decision::Reject));
    marks(c.MarkClearButton, ClearMark());
    QAction* const stars[] = {c.MarkStars0Button, c.MarkStars1Button, c.MarkStars2Button,
                              c.MarkStars3Button, c.MarkStars4Button, c.MarkStars5Button};
    for (int number = 0; number <= kMostStars; ++number) marks(stars[number], Rate(number));
    c.FileListBox->SetMarks([this](const std::string& name) {
        return ShownOf(JoinPath(m.controls.FileListBox->Path(), name));
    });
    QObject::connect(c.FileListBox, &FileListBox::folderRead, c.FileListBox, [this] {
        if (m.controls.FileListBox->Path() != m_columnFolder) m_column = false;
        m_columnFolder = m.controls.FileListBox->Path();
    });
    m.current.Follow([this] { ShowCurrent(); });
}

// What is selected together is marked together; else the file that is shown.
std::vector<std::string> MarkControls::Marked() const {
    const FileListBox& list = *m.controls.FileListBox;
    const std::vector<int> rows = list.SelectedRows();
    if (rows.size() < 2) return {m.state.Filename};
    std::vector<std::string> paths;
    for (const int row : rows) paths.push_back(JoinPath(list.Path(), list.Text(row)));
    return paths;
}

void MarkControls::Set(const MarkChange& change) {
    const MainControls& c = m.controls;
    if (m.state.Filename.empty() || c.FileListBox->Count() < 1) return;
    const std::vector<std::string> paths = Marked();
    m_column = m_column || GivesMark(change);
    m.marks.MarkFiles(paths, change);
    const std::string said = SaidOfChange(change);
    if (paths.size() > 1) {
        m.shell.ShowMessage(said + " - " + std::to_string(paths.size()) + " files");
        return;
    }
    const bool advances = m.state.MarkAdvance && GivesMark(change) && !m.state.SlideViewing;
    const std::string name = LastPart(paths.front());
    const DroppedNote dropped(m);
    // The list keeps the keyboard, so that its keys go on there.
    if (advances)
        m.navigation.StepBy(1, c.FileListBox->hasFocus() ? KeepingKeyboard() : Stepping());
    m.shell.ShowMessage(said + (advances ? "+ '" : " '") + name + "'" +
                        (advances ? dropped.Word() : std::string()));
}

ShownMark MarkControls::ShownOf(const std::string& path) const {
    const auto mark = m.marks.MarkOf(path);
    if (!mark) return {};
    return {*mark, m.marks.KeptAside(path).has_value()};
}

// A column that has come stays as long as the folder does.
void MarkControls::ShowMarks() {
    m_column = m_column || m.marks.AnyMarked();
    m.controls.FileListBox->ShowMarks(m_column);
    ShowCurrent();
}

void MarkControls::ShowCurrent() {
    QLabel& label = *m.controls.MarkLabel;
    const ShownMark shown = ShownOf(m.state.Filename);
    const std::string text = MarkText(shown.mark);
    label.setVisible(!text.empty());
    if (text.empty()) return;
    label.setText(ToQt(text + (shown.keptAside ? " !" : "")));
    label.setToolTip(ToToolTip(shown.keptAside ? kAside : "Mark of the file"));
}

} // namespace tarn
