// A log or text file in parts: its first megabyte at once, more on demand, in whole lines. No
// widgets.
#pragma once

#include "platform/Files.h"

#include <string>
#include <vector>

namespace tarn {

inline constexpr std::size_t kFirstPart = 1 << 20; // bytes

// Names of the log and text files of a folder, sorted in any case; empty when it cannot be read.
std::vector<std::string> LogNames(const Files& files, const std::string& folder);

class LogFile {
public:
    explicit LogFile(const Files& files) : m_files(files) {}

    // Reads the first part of a file, or again as much of it as was read before. False, with the
    // system's text in Error(), when it cannot be read.
    bool Read(const std::string& path);
    // Twice as much as now.
    bool ReadMore();

    const std::string& Path() const { return m_path; }
    const std::string& Text() const { return m_text; } // UTF-8, line ends as they stand
    bool HasMore() const { return m_hasMore; }
    const std::string& Error() const { return m_error; }

private:
    bool ReadPart();

    const Files& m_files;
    std::string m_path;
    std::string m_text;
    std::string m_error;
    std::size_t m_most = kFirstPart;
    bool m_hasMore = false;
};

} // namespace tarn
