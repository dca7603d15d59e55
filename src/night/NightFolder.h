// The frames of the folder shown, with what has been measured of them so far.
#pragma once

#include "night/NightFrames.h"
#include "sky/night/FolderMeasuring.h"
#include "sky/night/LateJudging.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tarn {

class NightFolder {
public:
    NightFolder();

    // In the order of the list; what was known of others is forgotten, and what was known of these
    // stands until it is asked for anew.
    void Show(const std::vector<std::string>& paths);
    void Prefer(const std::string& path) { m_measuring.Prefer(path); }
    void Cancel();
    void Resume();

    const std::vector<NightFrame>& Frames() const { return m_frames; }
    int IndexOf(const std::string& path) const; // -1: none
    MeasuringProgress Progress() const { return m_measuring.Progress(); }
    bool IsSettled() const; // all is measured and judged, or cancelled

    void SetMark(std::size_t index, const Mark& mark) { m_frames[index].mark = mark; }

    std::function<void()> onChanged;

private:
    void Post();
    void TakeAnswers();
    void TakeJudged();
    void Judge();

    QObject m_here; // what comes from threads is done in its thread
    QTimer m_soon;
    std::vector<NightFrame> m_frames;
    std::unordered_map<std::string, int> m_indices; // by path
    std::size_t m_taken = 0;                        // answers, of what is shown
    int m_ticket = 0;                               // of what is to be judged now
    bool m_isUnjudged = false;                      // something has come since
    QElapsedTimer m_judged;                         // when that began last
    qint64 m_judging = 0;                           // milliseconds that it took
    std::atomic<bool> m_isPosted = false;
    LateJudging m_judge; // last: their threads end first
    FolderMeasuring m_measuring;
};

} // namespace tarn
