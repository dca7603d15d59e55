// The one look at a picture file that the reader takes.
#pragma once

#include "common/file_look.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace tarn {

inline constexpr int kRecordSize = kFileFront;
using FileRecord = std::array<std::uint8_t, kRecordSize>;

struct FileFacts {
    bool known = false;       // the file is there
    std::int64_t size = 0;    // bytes
    std::int64_t changed = 0; // last change of its contents, seconds since 1970, UTC
};

FileFacts ReadFileFacts(const std::string& path);

// An open file, for all who read its head.
class PictureFile {
public:
    explicit PictureFile(const std::string& path);

    // The same of a file that was read before: its first bytes, which outlive this; none when they
    // could not be read.
    PictureFile(const FileLook& look, const std::optional<std::string>& front);
    ~PictureFile();
    PictureFile(const PictureFile&) = delete;
    PictureFile& operator=(const PictureFile&) = delete;

    int Number() const { return m_number; } // the system's; -1 for what is no file to read
    const FileFacts& Facts() const { return m_facts; }

    // The first bytes, or what stands for them (ReadFileFront). The rest of the record becomes zero
    // when the file is shorter; a file that cannot be read leaves the record as it is and gives
    // false.
    bool ReadRecord(FileRecord& record) const;

private:
    int m_number = -1;
    const std::optional<std::string>* m_front = nullptr;
    FileFacts m_facts;
};

// The date of a file as text ("06/22/2004 8:15:30 PM"), empty when the file is not there.
std::string FormatFileDate(const FileFacts& facts);

} // namespace tarn
