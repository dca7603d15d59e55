#include "web/PageFile.h"

#include "web/PageHead.h"

#include <cerrno>
#include <cstring>

namespace tarn {

bool PageFile::Create(const std::string& path, std::string_view bytes, std::string* error) {
    m_open = m_files.Write(path, bytes, error);
    m_path = path;
    m_end = bytes.size();
    return m_open;
}

bool PageFile::Append(const std::string& path, std::string_view now, std::string* error) {
    m_open = false;
    m_path = path;
    const auto bytes = m_files.Read(path, SIZE_MAX, error);
    if (!bytes) return false;
    const long long offset = AppendOffset(static_cast<long long>(bytes->size()));
    if (offset < 0) {
        *error = std::strerror(bytes->size() > kLargestAppend ? EFBIG : EINVAL);
        return false;
    }
    m_end = static_cast<std::size_t>(offset);
    m_open = true;
    if (!Add(AppendLine(now), error)) m_open = false;
    return m_open;
}

bool PageFile::Add(std::string_view bytes, std::string* error) {
    if (!m_files.Extend(m_path, m_end, bytes, error)) return false;
    m_end += bytes.size();
    return true;
}

bool PageFile::Close(std::string* error) {
    const bool closed = !m_open || Add(PageClose(), error);
    m_open = false;
    return closed;
}

} // namespace tarn
