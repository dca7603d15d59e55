// A log or text file in parts of a megabyte, in whole lines, so that one of any size opens at once.
// No widgets.
#pragma once

#include "platform/Files.h"

#include <string>
#include <vector>

namespace tarn {

inline constexpr std::size_t kPartBytes = 1 << 20;
inline constexpr std::size_t kLongestLine = 4000; // bytes; what is longer is shown in several lines

// Names of the log and text files of a folder, sorted in any case; empty when it cannot be read.
std::vector<std::string> LogNames(const Files& files, const std::string& folder);

class LogFile {
public:
    // Parts of at least 4 bytes.
    explicit LogFile(const Files& files, std::size_t partBytes = kPartBytes)
        : m_files(files), m_partBytes(partBytes) {}

    // Reads the first part of a file into Text(); false as below.
    bool ReadFirst(const std::string& path);
    // Reads the first part of a file into Text(), or again as much of it as was read before. False,
    // with the system's text in Error(), when it cannot be read.
    bool Read(const std::string& path);
    // The next part into Text(), in place of what stood there.
    bool ReadMore();

    const std::string& Path() const { return m_path; }
    const std::string& Text() const { return m_text; } // UTF-8, line ends as they stand
    bool HasMore() const { return m_hasMore; }
    const std::string& Error() const { return m_error; }

private:
    bool ReadPart(std::size_t from, std::size_t most);

    const Files& m_files;
    std::size_t m_partBytes;
    std::string m_path;
    std::string m_text;
    std::string m_error;
    std::size_t m_read = 0; // bytes
    bool m_hasMore = false;
};

} // namespace tarn
