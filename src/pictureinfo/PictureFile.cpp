#include "pictureinfo/PictureFile.h"

#include "common/dates.h"
#include "imaging/exif/FileFront.h"
#include "platform/OpenRegular.h"

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace tarn {

namespace {

FileFacts FactsOf(const struct stat& status) {
    return {true, status.st_size, status.st_mtim.tv_sec};
}

} // namespace

FileFacts ReadFileFacts(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? FactsOf(status) : FileFacts{};
}

PictureFile::PictureFile(const std::string& path) {
    std::string error;
    m_number = OpenFile(path, error).Release();
    struct stat status {};
    if (m_number < 0)
        m_facts = ReadFileFacts(path);
    else if (::fstat(m_number, &status) == 0)
        m_facts = FactsOf(status);
}

PictureFile::PictureFile(const FileLook& look, const std::optional<std::string>& front)
    : m_front(&front), m_facts{true, look.bytes, look.seconds} {}

PictureFile::~PictureFile() {
    if (m_number >= 0) ::close(m_number);
}

bool PictureFile::ReadRecord(FileRecord& record) const {
    std::optional<std::size_t> filled;
    if (m_number >= 0) {
        filled = ReadFileFront(m_number, record);
    } else if (m_front && *m_front) {
        filled = std::min(record.size(), (*m_front)->size());
        std::copy_n((*m_front)->begin(), *filled, record.begin());
    }
    if (!filled) return false;
    std::fill(record.begin() + std::ptrdiff_t(*filled), record.end(), std::uint8_t{0});
    return true;
}

std::string FormatFileDate(const FileFacts& facts) {
    return facts.known ? FormatDateText(FromFileTime(facts.changed)) : std::string();
}

} // namespace tarn
