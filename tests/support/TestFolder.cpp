#include "support/TestFolder.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/stat.h>

namespace tarn::testing {

TestFolder::TestFolder(const std::string& above) {
    const std::filesystem::path place =
        above.empty() ? std::filesystem::temp_directory_path() : std::filesystem::path(above);
    std::string pattern = (place / "tarn-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder for the test");
    m_path = pattern;
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::string TestFolder::Write(const std::string& name, std::string_view bytes) const {
    std::string path = m_path + "/" + name;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
    return path;
}

void SetFileTime(const std::string& path, int year, int month, int day, int hour, int minute,
                 int second) {
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;
    const std::time_t time = std::mktime(&local);
    const timespec times[2] = {{time, 0}, {time, 0}};
    if (::utimensat(AT_FDCWD, path.c_str(), times, 0) != 0) {
        throw std::runtime_error("cannot set the time of " + path);
    }
}

} // namespace tarn::testing
