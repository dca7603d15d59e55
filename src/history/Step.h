// One change of the disk, as the journal keeps it: what was done to which file, by what it is known
// again, and what is needed to take it back or to do it again.
#pragma once

#include "common/file_look.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarn {

enum class StepKind {
    ThrownAway,    // `from` stands in the wastebasket as `to`
    Renamed,       // from `from` to `to`
    Made,          // `to` is a copy of `from`
    Dropped,       // `from` is gone for good, its bytes stand at `to`
    Written,       // `from` anew; `oldBytes` is what stood there
    WrittenAt,     // `newBytes` over `oldBytes` at `offset` of `from`, in place
    Dated,         // the file time of `from`
    FolderMade,    // `from`
    FolderRemoved, // `from`, which was empty
    Removed,       // `from`, for good
    Marked         // the mark of `from`: `newBytes` for `oldBytes`, both as texts
};

enum class StepState {
    Planned,
    Done,
    NotDone, // it failed, or its command ended without it
    Undone
};

struct Step {
    StepKind kind = StepKind::Made;
    std::string from;
    std::string to;
    // Of the file before and after it. The device is the volume's own number, which outlasts a
    // restart; 0 for the inode: nothing stood there, or it is not known.
    FileLook before;
    FileLook after;
    std::int64_t offset = 0;
    std::optional<std::string> oldBytes; // none: too many to be kept
    std::optional<std::string> newBytes;
    std::string aside; // where in the wastebasket lies what it made, since it was taken back
    StepState state = StepState::Planned;
    std::int64_t number = 0; // in its command, rising in the order of doing, with gaps
};

// How far a step stands on the disk.
enum class Stands { Not, InPart, Whole };

} // namespace tarn
