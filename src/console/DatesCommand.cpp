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
    explicit DateSetter(bool dryRun) : dryRun_(dryRun) {}

    void Set(const std::string& folder, const std::string& name) {
        info_.Filename = JoinPath(folder, name);
        info_.CameraDate.clear();
        info_.PictureDate.clear();
        reader_.ReadCameraDate(info_);
        if (!reader_.FileWasRead()) return Fail("cannot be read");
        const auto time = info_.NoExif ? std::nullopt : FileTimeOf(info_.CameraDate);
        std::string error;
        if (time && !dryRun_ && !SetFileTimes(info_.Filename, *time, &error)) return Fail(error);
        std::printf("%s\t%s\n", name.c_str(), time ? info_.PictureDate.c_str() : "");
    }

    int ExitStatus() const { return exitStatus_; }

private:
    void Fail(const std::string& fault) {
        ComplainOfFile(info_.Filename, fault);
        exitStatus_ = kExitFailedFile;
    }

    bool dryRun_;
    PictureInfoReader reader_;
    PictureInfo info_;
    int exitStatus_ = kExitSuccess;
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
