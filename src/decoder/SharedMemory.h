// Memory that the decoder process fills and the program uses without a copy.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>

namespace tarn {

// Goes with the last who holds it.
class SharedMemory {
public:
    SharedMemory() = default;
    ~SharedMemory();
    SharedMemory(SharedMemory&& other) noexcept;
    SharedMemory& operator=(SharedMemory&& other) noexcept;

    // New memory of so many bytes to write to; none where there is not so much.
    static SharedMemory Make(std::size_t bytes);

    // New memory with these bytes, one part behind the other. It is written, which is faster than
    // page by page; there are no Bytes.
    static SharedMemory Filled(std::initializer_list<std::string_view> parts);

    // What stands under a descriptor that the decoder process has sent, which stays the caller's.
    // None where it is not memory of at least so many bytes that nobody can make smaller any more:
    // a page taken away would end who looks at it.
    static SharedMemory Adopt(int descriptor, std::size_t bytes);

    explicit operator bool() const { return m_size > 0; }
    unsigned char* Bytes() const { return m_bytes; }
    std::size_t Size() const { return m_size; }
    int Descriptor() const { return m_descriptor; } // of memory that was made here

    // The bytes alone, for who gives them back by Free.
    unsigned char* Release();
    static void Free(void* bytes, std::size_t size);

private:
    unsigned char* m_bytes = nullptr;
    std::size_t m_size = 0;
    int m_descriptor = -1;
};

} // namespace tarn
