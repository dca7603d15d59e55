// Room on the disk for what does not fit into memory. The system keeps as much of it in memory as
// it can spare, and it is gone with the program however that ends.
#pragma once

#include <cstddef>
#include <string>

namespace tarn {

class Scratch {
public:
    // A file without a name in this folder.
    explicit Scratch(const std::string& folder);
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    bool IsOpen() const { return m_file >= 0; }
    int Number() const { return m_file; } // the system's

    // Whether it can grow to so many bytes, as far as the system knows.
    bool HasRoomFor(std::size_t bytes) const;

    // Any thread; false where the disk is full, or errs.
    bool Write(std::size_t at, const void* bytes, std::size_t count);
    bool Read(std::size_t at, void* bytes, std::size_t count) const;

private:
    int m_file;
};

} // namespace tarn
