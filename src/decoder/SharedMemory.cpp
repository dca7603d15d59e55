#include "decoder/SharedMemory.h"

#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

unsigned char* Map(int descriptor, std::size_t bytes) {
    void* const mapped =
        ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, descriptor, 0);
    return mapped == MAP_FAILED ? nullptr : static_cast<unsigned char*>(mapped);
}

} // namespace

SharedMemory::~SharedMemory() {
    if (m_bytes) Free(m_bytes, m_size);
    if (m_descriptor >= 0) ::close(m_descriptor);
}

SharedMemory::SharedMemory(SharedMemory&& other) noexcept
    : m_bytes(std::exchange(other.m_bytes, nullptr)), m_size(other.m_size),
      m_descriptor(std::exchange(other.m_descriptor, -1)) {}

SharedMemory& SharedMemory::operator=(SharedMemory&& other) noexcept {
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_size, other.m_size);
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

SharedMemory SharedMemory::Make(std::size_t bytes) {
    SharedMemory memory;
    memory.m_descriptor = ::memfd_create("tarn-picture", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    memory.m_size = bytes;
    if (memory.m_descriptor >= 0 && ::ftruncate(memory.m_descriptor, off_t(bytes)) == 0)
        memory.m_bytes = Map(memory.m_descriptor, bytes);
    return memory;
}

// Whether there are so many bytes is asked behind the seal: what counts is what stays.
SharedMemory SharedMemory::Adopt(int descriptor, std::size_t bytes) {
    SharedMemory memory;
    struct stat facts {};
    if (bytes == 0 || ::fcntl(descriptor, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW) != 0 ||
        ::fstat(descriptor, &facts) != 0 || facts.st_size < 0 || std::size_t(facts.st_size) < bytes)
        return memory;
    memory.m_size = bytes;
    memory.m_bytes = Map(descriptor, bytes);
    // Nobody maps it for writing from now on, where the kernel knows that seal.
    ::fcntl(descriptor, F_ADD_SEALS, F_SEAL_FUTURE_WRITE | F_SEAL_SEAL);
    return memory;
}

unsigned char* SharedMemory::Release() {
    return std::exchange(m_bytes, nullptr);
}

void SharedMemory::Free(void* bytes, std::size_t size) {
    ::munmap(bytes, size);
}

} // namespace tarn
