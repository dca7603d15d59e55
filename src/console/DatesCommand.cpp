#include "console/DatesCommand.h"

#include "common/paths.h"
#include "console/Arguments.h"
#include "console/ListedPictures.h"
#include "pictureinfo/PictureInfoReader.h"
#include "pictureinfo/dates/CameraDateText.h"
#include "platform/FileTimes.h"

#include <cstdio>

namespace tarn {

namespace {

constexpr OptionRule kOptions[] = {{"--dry-run"}};
constexpr UsageLine kLines[] = {{kOptions, "FOLDER"}};

class DateSetter {
public:
    explicit DateSetter(bool dryRun) : m_dryRun(dryRun) {}

    void Set(const std::string& folder, const std::string& name) {
        m_info.Filename = JoinPath(folder, name);
        m_info.CameraDate.clear();
        m_info.PictureDate.clear();
        m_reader.ReadCameraDate(m_info);
        if (!m_reader.FileWasRead()) return Fail("cannot be read");
        const auto time = m_info.NoExif ? std::nullopt : FileTimeOf(m_info.CameraDate);
        std::string error;
        if (time && !m_dryRun && !SetFileTimes(m_info.Filename, *time, &error)) return Fail(error);
        std::printf("%s\t%s\n", name.c_str(), time ? m_info.PictureDate.c_str() : "");
    }

    int ExitStatus() const { return m_exitStatus; }

private:
    void Fail(const std::string& fault) {
        ComplainOfFile(m_info.Filename, fault);
        m_exitStatus = kExitFailedFile;
    }

    bool m_dryRun;
    PictureInfoReader m_reader;
    PictureInfo m_info;
    int m_exitStatus = kExitSuccess;
};

} // namespace

constinit const Usage kDatesUsage{"dates", kLines};

int RunDates(std::span<const std::string> words) {
    std::string fault;
    const auto arguments = Arguments::Parse(words, kOptions, fault);
    if (!arguments) return ComplainOfUsage(fault, kDatesUsage);
    if (arguments->Operands().size() != 1)
        return ComplainOfUsage("one folder is needed", kDatesUsage);
    const std::string& folder = arguments->Operands().front();
    const auto names = ListedPictures(folder);
    if (!names) {
        ComplainOfFile(folder, "is not a folder that can be read");
        return kExitFailedFile;
    }
    DateSetter setter(arguments->Has("--dry-run"));
    for (const std::string& name : *names) setter.Set(folder, name);
    return setter.ExitStatus();
}

} // namespace tarn
