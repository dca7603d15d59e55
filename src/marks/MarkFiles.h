// The marks of single files on the disk. No toolkit.
#pragma once

#include "common/mark.h"
#include "common/sidecar_names.h"
#include "platform/Files.h"

#include <optional>
#include <string>
#include <vector>

namespace tarn {

// The names of sidecars in a folder; none where it cannot be read.
std::optional<SidecarNames> SidecarsIn(const Files& files, const std::string& folder,
                                       std::string* error);

struct FoundMark {
    Mark mark;
    std::string error = {}; // the sidecar cannot be read or is none
};

// By its sidecar; where there is none, what the picture says itself.
FoundMark ReadMark(const Files& files, const std::string& picture, const SidecarNames& sidecars);

struct WrittenMark {
    bool done = false;
    Mark mark;                // as it stands on the disk now
    std::string error;        // why it does not
    bool ofFolder = false;    // it is the folder's fault
    bool isGone = false;      // the picture is not there any more: it gets no sidecar
    std::string sidecar = {}; // the name of the one that has it
};

// What the change will make of the picture's sidecar; none where it stays as it is, or cannot be
// written.
struct SidecarBytes {
    std::string path;
    std::string bytes;
};
std::optional<SidecarBytes> SidecarWith(const Files& files, const std::string& picture,
                                        const SidecarNames& sidecars, const MarkChange& change);

// Into the sidecar as it stands now, or a new one: read, changed, written beside it and renamed
// into place. One that is no XMP, may not be written or is being written by another program stands
// as it stood. A change that changes nothing writes nothing.
WrittenMark WriteMark(Files& files, const std::string& picture, const SidecarNames& sidecars,
                      const MarkChange& change);

} // namespace tarn
