// A folder of a test's own, removed with everything in it when the test ends.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarn::testing {

class TestFolder {
public:
    // In the system's folder for such, or in one of the caller's choice.
    explicit TestFolder(const std::string& above = {});
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::string& Path() const { return m_path; }

    // Writes a file over whatever stands there and gives its full path.
    std::string Write(const std::string& name, std::string_view bytes) const;

private:
    std::string m_path;
};

// Sets both times of a file to a local date and time.
void SetFileTime(const std::string& path, int year, int month, int day, int hour, int minute,
                 int second);

} // namespace tarn::testing
