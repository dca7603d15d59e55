// A file in memory, for readers that open their files by name.
#pragma once

#include "Demand.h"

#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace tarn::fuzz {

class MemoryFile {
public:
    MemoryFile() : m_file(::memfd_create("input", MFD_CLOEXEC)) { Demand(m_file >= 0); }
    ~MemoryFile() { ::close(m_file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    void Fill(std::string_view bytes) const {
        Demand(::ftruncate(m_file, 0) == 0);
        Demand(::pwrite(m_file, bytes.data(), bytes.size(), 0) == ssize_t(bytes.size()));
    }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_file); }

private:
    int m_file;
};

// One for the whole run, with these bytes in it.
inline const MemoryFile& FileOf(std::string_view bytes) {
    static const MemoryFile memory;
    memory.Fill(bytes);
    return memory;
}

} // namespace tarn::fuzz
