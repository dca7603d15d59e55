#include "sky/series/SumFile.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

SumFile::~SumFile() {
    if (m_bytes) ::munmap(m_bytes, m_count);
}

bool SumFile::Begin(int width, int height, int colours) {
    constexpr std::size_t kOfFrame = 5; // lines, its name may take several
    constexpr std::size_t kOfReference = 200;
    return m_writer.CreateIn(::dup(m_file.Number()), width, height, colours,
                             kOfReference + kOfFrame * m_frames);
}

bool SumFile::Write(int colour, int row, int rows, const float* values) {
    return m_writer.WriteRows(colour, row, rows, values);
}

// The bytes are seen where the system has them already.
bool SumFile::Close(const FitsCards& cards) {
    if (!m_writer.Close(cards)) return false;
    struct stat facts {};
    if (::fstat(m_file.Number(), &facts) == 0) {
        m_count = std::size_t(facts.st_size);
        void* const bytes = ::mmap(nullptr, m_count, PROT_READ, MAP_PRIVATE, m_file.Number(), 0);
        if (bytes != MAP_FAILED) m_bytes = bytes;
    }
    if (!m_bytes) {
        m_count = 0;
        m_error = "cannot be read again";
    }
    return m_bytes != nullptr;
}

} // namespace tarn
