#include "panel/ClockPictures.h"

#include "common/codepage.h"
#include "history/Changes.h"
#include "pictureinfo/PictureInfoReader.h"
#include "pictureinfo/dates/CameraDateText.h"
#include "pictureinfo/dates/CameraDateWriting.h"

#include <array>
#include <cstdlib>
#include <optional>

namespace tarn {

namespace {

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t kYear = 365 * kDay;
constexpr std::int64_t kDrift = 5 * kMinute; // that a clock may be off beside

bool IsAbout(std::int64_t seconds, std::int64_t of) {
    return std::abs(seconds - of) <= kDrift;
}

std::string WhyNot(const DateWritten& written) {
    switch (written.result) {
    case DateWriting::Written:
        return {};
    case DateWriting::Differs:
        return "its date is another one by now: " + written.found;
    case DateWriting::OutOfReach:
        return "its date lies too far behind in the file";
    case DateWriting::Failed:
        return written.error;
    }
    return {};
}

} // namespace

ClockPicture ReadClockPicture(const Files& files, const std::string& path) {
    PictureInfoReader reader;
    PictureInfo info;
    BeginPicture(info, path);
    reader.ReadPictureInfo(info);
    ClockPicture picture{path, info.CameraName, info.CameraDate, 0, {}};
    if (!reader.FileWasRead())
        picture.fault = "it cannot be read";
    else if (info.NoExif || info.CameraDate.empty())
        picture.fault = "no date of a camera stands in it";
    if (!picture.fault.empty()) return picture;
    picture.position = std::size_t(info.CameraDateOffset + info.PictureDataOffset);
    if (picture.position >= kDateReach - kCameraDateLength ||
        DateAt(files, path, picture.position) != picture.date)
        picture.fault = "its date stands where it cannot be changed";
    else if (!WithSeconds(picture.date, 0))
        picture.fault = "its date is none: " + picture.date;
    return picture;
}

std::string ClockErrorText(std::int64_t seconds) {
    if (seconds == 0) return "right";
    struct Part {
        std::int64_t unit;
        const char* name;
    };
    constexpr std::array<Part, 4> kParts{
        {{kDay, " d "}, {kHour, " h "}, {kMinute, " min "}, {1, " s "}}};
    std::string text;
    std::int64_t rest = std::abs(seconds);
    for (const Part& part : kParts) {
        if (!text.empty() || rest >= part.unit || part.unit == 1)
            text += std::to_string(rest / part.unit) + part.name;
        rest %= part.unit;
    }
    return text + (seconds > 0 ? "behind" : "ahead");
}

std::string UsualCauseOf(std::int64_t seconds) {
    const std::int64_t off = std::abs(seconds);
    if (off <= kDrift) return off == 0 ? "" : "a clock that has drifted";
    if (IsAbout(off, kHour)) return "summer time that was not set, or not set back";
    if (IsAbout(off, 12 * kHour)) return "morning and evening exchanged";
    if (off <= 14 * kHour + kDrift && IsAbout(off % kHour, 0)) return "the zone of another place";
    if (off <= 14 * kHour + kDrift && IsAbout(off % kHour, kHour))
        return "the zone of another place";
    if (off <= 14 * kHour + kDrift && IsAbout(off % kHour, kHour / 2))
        return "the zone of another place, of those with half an hour";
    if (IsAbout(off % kDay, 0) || IsAbout(off % kDay, kDay)) return "another day set by mistake";
    if (off > 2 * kYear) return "a clock that was never set, or lost its battery";
    return {};
}

std::size_t SetClockRight(Changes& changes, const std::vector<ClockPicture>& pictures,
                          std::int64_t seconds, const std::function<bool(std::size_t)>& goOn,
                          std::vector<ClockFault>& faults) {
    std::vector<Step> plan;
    std::vector<std::optional<std::string>> dates;
    for (const ClockPicture& picture : pictures) {
        dates.push_back(WithSeconds(picture.date, seconds));
        const auto bytes = dates.back() ? ToCodePage(*dates.back()) : std::nullopt;
        const auto old = ToCodePage(picture.date);
        if (!bytes || !old) continue;
        plan.push_back(changes.PlanWriteAt(picture.path, picture.position, *old, *bytes));
        plan.push_back(changes.PlanTimes(picture.path, FileTimeOf(*dates.back()).value_or(0)));
    }
    changes.PlanWhole(std::move(plan));
    std::size_t done = 0;
    for (std::size_t i = 0; i < pictures.size() && goOn(i); ++i) {
        const ClockPicture& picture = pictures[i];
        const auto bytes = dates[i] ? ToCodePage(*dates[i]) : std::nullopt;
        std::string why =
            bytes ? WhyNot(WriteDate(changes, picture.path, picture.position, picture.date, *bytes))
                  : "the new date would be none";
        const auto time = why.empty() ? FileTimeOf(*dates[i]) : std::nullopt;
        ++done;
        if (time) changes.SetTimes(picture.path, *time, &why);
        if (!why.empty()) faults.push_back({picture.path, std::move(why)});
    }
    return done;
}

} // namespace tarn
