#include "blink/AwaitedFrames.h"

#include "common/paths.h"
#include "widgets/FileListBox.h"

namespace tarn {

void AwaitedFrames::Begin(std::vector<std::string> paths) {
    m_paths = std::move(paths);
    m_isWaiting = true;
    m.night.WantFrames(this, true); // tells what is known at once
    FramesChanged();
}

void AwaitedFrames::GiveUp() {
    m_isWaiting = false;
    m.night.WantFrames(this, false);
}

AwaitedFrames::Known AwaitedFrames::Take() {
    Known known;
    for (const std::string& path : m_paths) {
        const JudgedFrame* frame = m.night.FrameOf(path);
        JudgedFrame& taken = known.frames.emplace_back();
        if (frame) taken = *frame;
        taken.path = path;
        known.measures.push_back(taken.measures);
        known.left.emplace_back(frame ? "" : "not measured");
    }
    return known;
}

void AwaitedFrames::FramesChanged() {
    if (!m_isWaiting) return;
    std::size_t count = 0;
    for (const std::string& path : m_paths) count += m.night.FrameOf(path) ? 1 : 0;
    // Of a folder that was left nothing more comes.
    const bool isLeft =
        !m_paths.empty() && FolderOf(m_paths.front()) != m.controls.FileListBox->Path();
    if (count < m_paths.size() && !isLeft && !m.night.AllMeasured())
        return onWaiting("Measuring: " + std::to_string(count) + " of " +
                         std::to_string(m_paths.size()));
    Known known = Take();
    GiveUp();
    onKnown(std::move(known));
}

} // namespace tarn
