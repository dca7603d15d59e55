#include "web/PageFile.h"

#include "common/paths.h"
#include "web/PageHead.h"

#include <cerrno>
#include <cstring>

namespace tarn {

namespace {

bool Refuse(std::string* error) {
    *error = "it is a link that leads out of the folder";
    return false;
}

} // namespace

bool ReplaceFile(Files& files, const std::string& path, std::string_view bytes,
                 std::string* error) {
    const auto staged = files.Stage(FolderOf(path), error);
    std::string failed;
    if (staged) return staged->Write(LastPart(path), bytes, error) && staged->Place(error, &failed);
    // The folder takes no new files: the old one itself may still be written.
    if (!files.Exists(path)) return false;
    return files.LeadsOut(path) ? Refuse(error) : files.Write(path, bytes, error);
}

bool PageFile::Create(Files& files, const std::string& path, std::string_view bytes,
                      std::string* error) {
    m_open = ReplaceFile(files, path, bytes, error);
    m_path = path;
    m_end = bytes.size();
    return m_open;
}

bool PageFile::Append(Files& files, const std::string& path, std::string_view now,
                      std::string* error) {
    m_open = false;
    m_path = path;
    if (files.LeadsOut(path)) return Refuse(error);
    const auto bytes = files.Read(path, std::size_t(kLargestAppend) + 1, error);
    if (!bytes) return false;
    const long long offset = AppendOffset(static_cast<long long>(bytes->size()));
    if (offset < 0) {
        *error = std::strerror(bytes->size() > kLargestAppend ? EFBIG : EINVAL);
        return false;
    }
    m_end = static_cast<std::size_t>(offset);
    m_open = true;
    if (!Add(files, AppendLine(now), error)) m_open = false;
    return m_open;
}

bool PageFile::Add(Files& files, std::string_view bytes, std::string* error) {
    if (!files.Extend(m_path, m_end, bytes, error)) return false;
    m_end += bytes.size();
    return true;
}

bool PageFile::Close(Files& files, std::string* error) {
    const bool closed = !m_open || Add(files, PageClose(), error);
    m_open = false;
    return closed;
}

} // namespace tarn
