// The one gate for files that others have made. What stands under a picture's, a clip's or a note's
// name may be a pipe that never answers or a device that acts when it is read: nothing here waits,
// and all but files with bytes is told by its kind. No toolkit.
#pragma once

#include "common/file_handle.h"

#include <string>

namespace tarn {

// The system's number of a file opened for reading, closed when it goes.
class OpenFile {
public:
    // Follows links. Without a file `error` says why: "Not a file but a pipe", or the system's
    // text.
    OpenFile(const std::string& path, std::string& error);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    explicit operator bool() const { return m_number >= 0; }
    int Number() const { return m_number; }
    int Release(); // to a new owner, who closes it

private:
    int m_number;
};

// The same for the C library; null and `error` when there is none.
FileHandle OpenRegular(const std::string& path, std::string& error);

// Libraries open files by name: that of the very file that is open under this number.
std::string NameOfOpen(int file);

// The number in such a name; -1 of another. Where this process may open nothing the gate takes what
// is open under it, from its beginning, with one place for all who read so.
int NumberInName(const std::string& path);

} // namespace tarn
