#include "video/VideoText.h"

#include "common/dates.h"
#include "common/numbers.h"
#include "common/paths.h"
#include "common/text.h"
#include "pictureinfo/PictureFile.h"

#include <cmath>

namespace tarn {

namespace {

constexpr int kKilo = 1024;
constexpr double kMinute = 60; // seconds

int NumberOf(std::string_view word) {
    return ParseInt32(Trim(word)).value_or(0);
}

} // namespace

std::string GetFirstWord(std::string& text) {
    const std::size_t blank = text.find(' ');
    const std::size_t end = blank == std::string::npos ? text.size() : blank + 1;
    std::string word = text.substr(0, end);
    text.erase(0, end);
    constexpr std::string_view kMarks = ".,?!";
    const std::size_t last = blank == std::string::npos ? word.size() : word.size() - 1;
    if (last > 1 && kMarks.find(word[last - 1]) != std::string_view::npos) {
        text.insert(0, 1, word[last - 1]);
        word.erase(last - 1, 1);
    }
    return word;
}

void TakeSize(std::string reply, ClipNumbers& clip) {
    GetFirstWord(reply);
    GetFirstWord(reply);
    clip.width = NumberOf(GetFirstWord(reply));
    clip.height = NumberOf(GetFirstWord(reply));
}

std::string DateAndWeekday(const std::string& path) {
    const FileFacts facts = ReadFileFacts(path);
    if (!facts.known) return {};
    const DateTime day = FromFileTime(facts.changed);
    return FormatFileDate(facts) + "  " + WeekdayName(day.year, day.month, day.day).value_or("");
}

VideoLines TextLines(const std::string& path) {
    VideoLines lines;
    lines[0] = "File name: " + LastPart(path);
    lines[1] = "     Date: " + DateAndWeekday(path);
    return lines;
}

VideoLines SummaryLines(const std::string& path, const std::string& camera, long long bytes) {
    VideoLines lines = TextLines(path);
    const auto in = [&](long long unit) {
        return FormatGrouped(std::llround(double(bytes) / double(unit)));
    };
    lines[2] = "   Camera: " + camera;
    lines[3] = "     Size: " + in(1) + "   " + in(kKilo) + " KB   " +
               in(static_cast<long long>(kKilo) * kKilo) + " MB";
    return lines;
}

std::string PlayingTime(const ClipNumbers& clip) {
    const double time = clip.frameRate > 0 ? clip.lastFrame / double(clip.frameRate) : 0;
    return time < kMinute ? FormatFixed(time, 1) + " seconds"
                          : FormatFixed(time / kMinute, 1) + " minutes";
}

VideoLines ClipLines(const std::string& path, const ClipNumbers& clip, long long bytes) {
    VideoLines lines;
    lines[0] = "   File name: " + LastPart(path);
    lines[1] = "        Date: " + DateAndWeekday(path);
    if (clip.width > 0)
        lines[2] =
            "  Dimensions: " + std::to_string(clip.width) + " x " + std::to_string(clip.height);
    lines[4] = "  Frame rate: " + FormatFixed(double(clip.frameRate), 1) + " fps";
    lines[5] = "      Frames: " + std::to_string(clip.lastFrame + 1);
    lines[6] = "        Size: " + VideoSizeText(bytes);
    lines[7] = "Playing time: " + PlayingTime(clip);
    lines[12] = "     Picture: Video";
    return lines;
}

} // namespace tarn
