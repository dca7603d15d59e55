#include "night/NightFolder.h"

#include "common/paths.h"
#include "sky/night/MeasuresFile.h"

#include <utility>

namespace tarn {

namespace {

constexpr int kSoon = 100;            // milliseconds in which answers gather
constexpr qint64 kJudgesAfter = 1500; // milliseconds, while more is coming
constexpr qint64 kJudgingPart = 8;    // times as long as the last judging took

} // namespace

NightFolder::NightFolder()
    : m_judge([this] { Post(); }), m_measuring(MeasuresFile(), [this] { Post(); }) {
    m_soon.setSingleShot(true);
    m_soon.setInterval(kSoon);
    QObject::connect(&m_soon, &QTimer::timeout, &m_here, [this] { TakeAnswers(); });
}

// On the threads.
void NightFolder::Post() {
    if (m_isPosted.exchange(true)) return;
    QMetaObject::invokeMethod(
        &m_here, [this] { m_soon.start(); }, Qt::QueuedConnection);
}

void NightFolder::Show(const std::vector<std::string>& paths) {
    std::vector<NightFrame> before = std::exchange(m_frames, {});
    const auto indices = std::exchange(m_indices, {});
    for (const std::string& path : paths) {
        const auto known = indices.find(path);
        NightFrame frame;
        if (known != indices.end()) frame = std::move(before[std::size_t(known->second)]);
        frame.path = path;
        frame.name = LastPart(path);
        frame.order = int(m_frames.size());
        m_indices[path] = frame.order;
        m_frames.push_back(std::move(frame));
    }
    m_taken = 0;
    ++m_ticket;
    m_isUnjudged = false;
    m_judged.invalidate();
    m_measuring.Show(paths);
    if (onChanged) onChanged();
}

void NightFolder::Cancel() {
    m_measuring.Cancel();
    Post(); // what is there is judged
}

void NightFolder::Resume() {
    m_measuring.Resume();
    Post();
}

int NightFolder::IndexOf(const std::string& path) const {
    const auto found = m_indices.find(path);
    return found == m_indices.end() ? -1 : found->second;
}

bool NightFolder::IsSettled() const {
    const MeasuringProgress progress = Progress();
    return (progress.IsDone() || progress.cancelled) && m_taken == progress.done && !m_isUnjudged &&
           !m_judge.IsBusy() && !m_isPosted;
}

void NightFolder::TakeAnswers() {
    m_isPosted = false;
    for (MeasuredFile& file : m_measuring.Take()) {
        ++m_taken;
        const int index = IndexOf(file.path);
        if (index < 0) continue;
        NightFrame& frame = m_frames[std::size_t(index)];
        frame.isMeasured = true;
        frame.taken = file.taken;
        frame.measures = std::move(file.measures);
        TakeSeries(frame);
        m_isUnjudged = true;
    }
    TakeJudged();
    Judge();
    if (onChanged) onChanged();
}

void NightFolder::TakeJudged() {
    const auto answer = m_judge.Take();
    if (!answer || answer->ticket != m_ticket) return; // of another folder
    m_judging = m_judged.isValid() ? m_judged.elapsed() : 0;
    const JudgedFrames& judged = answer->judged;
    for (std::size_t i = 0; i < m_frames.size() && i < judged.scores.size(); ++i) {
        m_frames[i].transparency = judged.transparency[i];
        m_frames[i].score = judged.scores[i];
        m_frames[i].group = judged.groups[i];
        m_frames[i].look = judged.looks[i];
    }
}

// Often enough to see it grow, and seldom enough to leave the time to measuring.
void NightFolder::Judge() {
    if (!m_isUnjudged) return;
    const MeasuringProgress progress = Progress();
    const bool goesOn = !progress.IsDone() && !progress.cancelled;
    const bool early = goesOn && m_judged.isValid() &&
                       m_judged.elapsed() < std::max(kJudgesAfter, kJudgingPart * m_judging);
    if (m_judge.IsBusy()) return; // its answer comes back here
    if (early) return;            // so does the next frame
    m_isUnjudged = false;
    m_judged.start();
    std::vector<FrameMeasures> measures;
    for (const NightFrame& frame : m_frames) measures.push_back(frame.measures);
    m_judge.Ask(m_ticket, std::move(measures));
}

} // namespace tarn
