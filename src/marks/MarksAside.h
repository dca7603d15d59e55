// Marks that no sidecar could take yet, in a small file of the state folder: a later run writes
// them where it can.
#pragma once

#include "common/mark.h"
#include "platform/Files.h"

#include <map>
#include <string>
#include <string_view>

namespace tarn {

using KeptMarks = std::map<std::string, MarkChange>; // by the picture's path

std::string PackMarks(const KeptMarks& marks);
KeptMarks UnpackMarks(std::string_view bytes); // as far as they are whole

class MarksAside {
public:
    explicit MarksAside(Files& files) : m_files(files) {}

    KeptMarks Read() const;

    // A change of what is kept of some pictures, beside what another window has kept meanwhile; no
    // change of a picture: it is kept no more. False, and why, when it cannot be written.
    bool Keep(const std::map<std::string, std::optional<MarkChange>>& changes, std::string* error);

private:
    std::string FilePath() const;

    Files& m_files;
};

} // namespace tarn
