#include "decoder/SharedMemory.h"

#include <cerrno>
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

int NewDescriptor() {
    return ::memfd_create("tarn-picture", MFD_CLOEXEC | MFD_ALLOW_SEALING);
}

} // namespace

SharedMemory::~SharedMemory() {
    if (m_bytes) Free(m_bytes, m_size);
    if (m_descriptor >= 0) ::close(m_descriptor);
}

SharedMemory::SharedMemory(SharedMemory&& other) noexcept
    : m_bytes(std::exchange(other.m_bytes, nullptr)), m_size(std::exchange(other.m_size, 0)),
      m_descriptor(std::exchange(other.m_descriptor, -1)) {}

SharedMemory& SharedMemory::operator=(SharedMemory&& other) noexcept {
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_size, other.m_size);
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

SharedMemory SharedMemory::Make(std::size_t bytes) {
    SharedMemory memory;
    memory.m_descriptor = NewDescriptor();
    if (memory.m_descriptor >= 0 && ::ftruncate(memory.m_descriptor, off_t(bytes)) == 0)
        memory.m_bytes = Map(memory.m_descriptor, bytes);
    memory.m_size = memory.m_bytes ? bytes : 0;
    return memory;
}

SharedMemory SharedMemory::Filled(std::initializer_list<std::string_view> parts) {
    SharedMemory memory;
    memory.m_descriptor = NewDescriptor();
    std::size_t size = 0;
    for (std::string_view part : parts)
        while (!part.empty()) {
            const ssize_t written = ::write(memory.m_descriptor, part.data(), part.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return memory;
            part.remove_prefix(std::size_t(written));
            size += std::size_t(written);
        }
    memory.m_size = size;
    return memory;
}

// Whether there are so many bytes is asked behind the seal: what counts is what stays.
SharedMemory SharedMemory::Adopt(int descriptor, std::size_t bytes) {
    SharedMemory memory;
    struct stat facts {};
    if (bytes == 0 || ::fcntl(descriptor, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW) != 0 ||
        ::fstat(descriptor, &facts) != 0 || facts.st_size < 0 || std::size_t(facts.st_size) < bytes)
        return memory;
    memory.m_bytes = Map(descriptor, bytes);
    memory.m_size = memory.m_bytes ? bytes : 0;
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
