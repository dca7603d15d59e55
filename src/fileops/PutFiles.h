// Files that go into another folder, moved or copied, with their sidecars. Notes lie in one folder
// by the names of their pictures: a file keeps its note, and one that gets a new name takes it
// along.
#pragma once

#include "desk/Context.h"
#include "fileops/CopyPlan.h"
#include "fileops/CopyRun.h"
#include "fileops/PicturePlan.h"

#include <functional>
#include <string>

namespace tarn {

class BatchRun;

class PutFiles {
public:
    PutFiles(Context& context, NotesPlace notes)
        : m(context), m_notes(std::move(notes)), m_belongings(context.files, m_notes) {}

    // What was done is in `changes`.
    Outcome Run(const FolderDrop& drop, Changes& changes);

private:
    void StepThrough(const CopyPlan& plan, const FolderDrop& drop, Changes& changes);
    bool Plan(const CopyPlan& plan, bool copy, const BatchRun& batch, Changes& changes);
    bool PutOne(const PlannedCopy& file, bool copy, Changes& changes, std::string* error);

    Context& m;
    NotesPlace m_notes;
    Belongings m_belongings;
    CopyCounts m_counts;
    bool m_cancelled = false;
    LeftBehind m_left; // the first
};

} // namespace tarn
