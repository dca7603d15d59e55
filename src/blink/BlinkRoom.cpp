#include "blink/BlinkRoom.h"

#include "blink/frmBlink.h"
#include "common/paths.h"
#include "desk/batch/PictureNames.h"
#include "widgets/FileListBox.h"

#include <QAction>

#include <numeric>

namespace tarn {

BlinkRoom::BlinkRoom(Context& context) : m(context) {}

BlinkRoom::~BlinkRoom() = default;

void BlinkRoom::ConnectControls() {
    Connect(m.controls.BlinkButton, [this] { BlinkButton_Click(); });
    m.night.FollowFrames([this] {
        if (m_blink) m_blink->FramesChanged();
    });
    m.marks.Follow([this] {
        if (m_blink) m_blink->MarksChanged();
    });
}

// Threads go while the desk still stands.
void BlinkRoom::BreakOff() {
    m_blink.reset();
}

// The pictures that are selected; of fewer than two, all that are listed.
std::vector<std::string> BlinkRoom::Chosen() const {
    const FileListBox& list = *m.controls.FileListBox;
    std::vector<int> rows = list.SelectedRows();
    if (rows.size() < 2) {
        rows.resize(std::size_t(list.Count()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    std::vector<std::string> paths;
    for (const int row : rows)
        if (IsPictureName(m.state, list.Text(row)))
            paths.push_back(JoinPath(list.Path(), list.Text(row)));
    return paths;
}

void BlinkRoom::BlinkButton_Click() {
    if (m.state.SlideViewing || m.state.BatchRuns) return;
    if (!m_blink) m_blink = std::make_unique<frmBlink>(m);
    m_blink->Blink(Chosen());
}

} // namespace tarn
