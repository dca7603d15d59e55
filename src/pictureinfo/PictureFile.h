// The one look at a picture file that the reader takes.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tarn {

inline constexpr int kRecordSize = 20041;
using FileRecord = std::array<std::uint8_t, kRecordSize>;

struct FileFacts {
    bool known = false;       // the file is there
    std::int64_t size = 0;    // bytes
    std::int64_t changed = 0; // last change of its contents, seconds since 1970, UTC
};

FileFacts ReadFileFacts(const std::string& path);

// The first bytes of a file. The rest of the record becomes zero when the file is shorter; a file
// that cannot be read leaves the record as it is and gives false. `facts` are read in any case.
bool ReadFileRecord(const std::string& path, FileRecord& record, FileFacts& facts);

// The date of a file as text ("06/22/2004 8:15:30 PM"), empty when the file is not there.
std::string FormatFileDate(const FileFacts& facts);

} // namespace tarn
