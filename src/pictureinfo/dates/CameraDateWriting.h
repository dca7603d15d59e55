// The date taken inside a picture file: its 19 bytes are written over in place, after a look that
// they are still those that were shown. No other byte changes.
#pragma once

#include "platform/Files.h"

#include <string>

namespace tarn {

// The date must end before this byte of the file, counted from 0.
inline constexpr std::size_t kDateReach = 3000;

// The 19 characters of the file at a position (bytes from its start), as UTF-8; fewer where the
// file ends, empty when it cannot be read.
std::string DateAt(const Files& files, const std::string& path, std::size_t position);

enum class DateWriting {
    Written,
    Differs,    // other characters stand there: `found`
    OutOfReach, // nothing was read
    Failed      // `error` is the system's text
};

struct DateWritten {
    DateWriting result = DateWriting::Failed;
    std::string found;
    std::string error;
};

// `newBytes` are 19 characters of the code page.
DateWritten WriteDate(Files& files, const std::string& path, std::size_t position,
                      const std::string& oldDate, const std::string& newBytes);

} // namespace tarn
