#include "blink/BlinkRoom.h"

#include "blink/frmBlink.h"
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
    Connect(m.controls.SumButton, [this] { SumButton_Click(); });
    m.night.FollowFrames([this] {
        if (m_blink) m_blink->FramesChanged();
        if (m_sum) m_sum->FramesChanged();
    });
    m.marks.Follow([this] {
        if (m_blink) m_blink->MarksChanged();
    });
}

// Threads go while the desk still stands.
void BlinkRoom::BreakOff() {
    m_blink.reset();
    m_sum.reset();
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

void BlinkRoom::BlinkButton_Click() {
    if (!MayBegin()) return;
    if (!m_blink) m_blink = std::make_unique<frmBlink>(m);
    m_blink->Blink(Chosen().paths);
}

// What is selected; else what is marked to keep, or where fewer than two are, what is not rejected.
void BlinkRoom::SumButton_Click() {
    if (!MayBegin()) return;
    const Choice choice = Chosen();
    const auto decisionOf = [this](const std::string& path) {
        return m.marks.MarkOf(path).value_or(Mark()).decision;
    };
    const auto kept =
        std::count_if(choice.paths.begin(), choice.paths.end(),
                      [&](const std::string& path) { return decisionOf(path) == Decision::Keep; });
    std::vector<std::string> left;
    for (const std::string& path : choice.paths) {
        const Decision decision = decisionOf(path);
        left.emplace_back(choice.isSelected                        ? ""
                          : decision == Decision::Reject           ? "marked as rejected"
                          : kept > 1 && decision != Decision::Keep ? "not marked to keep"
                                                                   : "");
    }
    if (!m_sum) m_sum = std::make_unique<frmSum>(m);
    m_sum->Sum(choice.paths, std::move(left));
}

} // namespace tarn
