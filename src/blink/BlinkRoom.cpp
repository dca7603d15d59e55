#include "blink/BlinkRoom.h"

#include "blink/frmBlink.h"
#include "blink/frmMovers.h"
#include "blink/frmSum.h"
#include "common/paths.h"
#include "desk/batch/PictureNames.h"
#include "widgets/FileListBox.h"

#include <QAction>

#include <algorithm>
#include <numeric>

namespace tarn {

BlinkRoom::BlinkRoom(Context& context) : m(context) {}

BlinkRoom::~BlinkRoom() = default;

void BlinkRoom::ConnectControls() {
    Connect(m.controls.BlinkButton, [this] { BlinkButton_Click(); });
    Connect(m.controls.MoversButton, [this] { MoversButton_Click(); });
    Connect(m.controls.SumButton, [this] { SumButton_Click(); });
    m.night.FollowFrames([this] {
        if (m_blink) m_blink->FramesChanged();
        if (m_movers) m_movers->FramesChanged();
        if (m_sum) m_sum->FramesChanged();
    });
    m.marks.Follow([this] {
        if (m_blink) m_blink->MarksChanged();
    });
}

// Their threads are waited for when the windows go: a disk that does not answer holds no end.
void BlinkRoom::BreakOff() {
    if (m_movers) m_movers->close();
    if (m_blink) m_blink->close();
    if (m_sum) m_sum->close();
}

bool BlinkRoom::MayBegin() const {
    return !m.state.SlideViewing && !m.state.BatchRuns;
}

// The pictures that are selected; of fewer than two, all that are listed.
BlinkRoom::Choice BlinkRoom::Chosen() const {
    const FileListBox& list = *m.controls.FileListBox;
    Choice choice;
    std::vector<int> rows = list.SelectedRows();
    choice.isSelected = rows.size() > 1;
    if (!choice.isSelected) {
        rows.resize(std::size_t(list.Count()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    for (const int row : rows)
        if (IsPictureName(m.state, list.Text(row)))
            choice.paths.push_back(JoinPath(list.Path(), list.Text(row)));
    return choice;
}

Decision BlinkRoom::DecisionOf(const std::string& path) const {
    return m.marks.MarkOf(path).value_or(Mark()).decision;
}

frmBlink& BlinkRoom::Blink() {
    if (!m_blink) m_blink = std::make_unique<frmBlink>(m);
    return *m_blink;
}

void BlinkRoom::BlinkButton_Click() {
    if (MayBegin()) Blink().Blink(Chosen().paths);
}

void BlinkRoom::MoversButton_Click() {
    if (!MayBegin()) return;
    const Choice choice = Chosen();
    std::vector<std::string> left;
    for (const std::string& path : choice.paths)
        left.emplace_back(
            !choice.isSelected && DecisionOf(path) == Decision::Reject ? "marked as rejected" : "");
    if (!m_movers) {
        m_movers = std::make_unique<frmMovers>(m);
        m_movers->onBlink = [this](const std::vector<std::string>& paths, const BlinkPlace& at) {
            if (MayBegin()) Blink().Blink(paths, at);
        };
    }
    m_movers->Find(choice.paths, std::move(left));
}

// What is selected; else what is marked to keep, or where fewer than two are, what is not rejected.
void BlinkRoom::SumButton_Click() {
    if (!MayBegin()) return;
    const Choice choice = Chosen();
    const auto kept =
        std::count_if(choice.paths.begin(), choice.paths.end(),
                      [&](const std::string& path) { return DecisionOf(path) == Decision::Keep; });
    const auto reason = [&](const std::string& path) {
        const Decision decision = DecisionOf(path);
        if (choice.isSelected) return "";
        if (decision == Decision::Reject) return "marked as rejected";
        return kept > 1 && decision != Decision::Keep ? "not marked to keep" : "";
    };
    std::vector<std::string> left;
    for (const std::string& path : choice.paths) left.emplace_back(reason(path));
    if (!m_sum) m_sum = std::make_unique<frmSum>(m);
    m_sum->Sum(choice.paths, std::move(left), choice.isSelected);
}

} // namespace tarn
