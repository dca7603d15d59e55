// Carries a plan out, one unit a step, and counts. A file that fails is counted and the rest goes
// on. No widgets.
#pragma once

#include "desk/commands/Outcome.h"
#include "fileops/CopyPlan.h"
#include "fileops/UndoLog.h"

#include <string>
#include <vector>

namespace tarn {

struct CopyCounts {
    int files = 0;
    int notes = 0;
    int skipped = 0;
    int failed = 0;
    std::vector<FileFault> faults; // of those that failed
};

class CopyRun {
public:
    CopyRun(CopyPlan plan, Files& files) : m_plan(std::move(plan)), m_files(files) {}

    bool Done() const { return m_next >= m_plan.size(); }
    int Size() const { return static_cast<int>(m_plan.size()); } // units
    int Number() const { return static_cast<int>(m_next) + 1; }  // of the unit to come, from 1
    const std::string& NextPath() const { return m_plan[m_next].copies.front().from; }

    // Copies the next unit whole: a file never stands without the note that came with it.
    void Step();

    CopyCounts counts;
    std::vector<tarn::Done> copied; // files, not what belongs to them

private:
    CopyPlan m_plan;
    Files& m_files;
    std::size_t m_next = 0;
};

// "3 files and 2 notes", "1 note"; nothing copied is "nothing".
std::string CountText(int files, int notes);

// What the message line says at the end: counts, what was skipped, the first failure, and whether
// the run was cancelled. `verb` is "Imported" or "Exported", `to` the target folder.
std::string ReportText(const CopyCounts& counts, const std::string& verb, const std::string& to,
                       bool cancelled);

} // namespace tarn
