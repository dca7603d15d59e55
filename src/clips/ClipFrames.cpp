#include "clips/ClipFrames.h"

#include "clips/FramesModule.h"
#include "clips/SerFile.h"
#include "common/stop_flag.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <map>

#include <unistd.h>

namespace tarn {

namespace {

constexpr std::int64_t kTicks = 10'000'000;      // of a stamp in a second
constexpr std::int64_t kTo1970 = 62'135'596'800; // seconds from the year 1

std::string UtcOf(std::int64_t stamp) {
    const std::time_t seconds = stamp / kTicks - kTo1970;
    std::tm utc{};
    if (stamp <= 0 || !::gmtime_r(&seconds, &utc)) return {};
    std::array<char, 48> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &utc);
    std::snprintf(text.data() + length, text.size() - length, ".%06dZ",
                  int(stamp % kTicks / (kTicks / 1'000'000)));
    return text.data();
}

std::string PatternOf(int color) {
    constexpr std::array<const char*, 4> kPatterns{"RGGB", "GRBG", "GBRG", "BGGR"};
    const int at = color - SerHeader::Rggb;
    return at >= 0 && at < int(kPatterns.size()) ? kPatterns[std::size_t(at)] : "";
}

ClipImage ImageOf(const SerFile& file, const std::vector<std::uint8_t>& bytes) {
    const SerHeader& header = file.Header();
    return {&bytes,
            header.width,
            header.height,
            header.bits,
            header.Samples(),
            file.HighByteFirst(),
            header.color == SerHeader::Bgr,
            PatternOf(header.color),
            header.color != SerHeader::Mono && header.Samples() == 1};
}

std::string WalkSer(SerFile& file, const ClipSink& sink) {
    const SerHeader& header = file.Header();
    std::vector<std::uint8_t> bytes;
    for (int i = 0; i < header.frames && !IsStopped(); ++i) {
        if (std::string error = file.ReadStored(i, bytes); !error.empty())
            return "frame " + std::to_string(i) + ": " + error;
        if (!sink(ImageOf(file, bytes))) return {};
    }
    if (file.FramesStated() > header.frames)
        return "it is cut off: " + std::to_string(header.frames) + " of " +
               std::to_string(file.FramesStated()) + " frames are there";
    return {};
}

std::string WalkSer(SerFile& file, const std::vector<std::size_t>& numbers,
                    const ChosenSink& sink) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t place = 0; place < numbers.size() && !IsStopped(); ++place) {
        const std::size_t number = numbers[place];
        std::string error = "There is no such frame";
        if (number < std::size_t(file.Header().frames)) error = file.ReadStored(int(number), bytes);
        if (!error.empty()) return "frame " + std::to_string(number) + ": " + error;
        if (!sink(place, ImageOf(file, bytes))) return {};
    }
    return {};
}

std::string WalkOther(const std::string& path, const ClipSink& sink) {
    const auto* module = FromModule<FramesModule>();
    if (!module) return "the part of the program that reads clips is not installed";
    std::string fault;
    module->each(path, sink, fault);
    return fault;
}

bool StartsAsSer(const std::string& path, std::string& error) {
    const OpenFile file(path, error);
    std::array<char, 16> start{};
    const ssize_t got = file ? ::pread(file.Number(), start.data(), start.size(), 0) : 0;
    return got > 0 && IsSer(std::string(start.data(), std::size_t(got)));
}

// By the kind of the clip.
ClipWords Walk(const std::string& path, const std::function<std::string(SerFile&)>& ser,
               const std::function<std::string()>& other) {
    ClipWords words;
    const bool isSer = StartsAsSer(path, words.fault);
    if (!words.fault.empty()) return words;
    if (!isSer) {
        words.fault = other();
        return words;
    }
    SerFile file;
    words.fault = file.Open(path);
    if (!words.fault.empty()) return words;
    const SerHeader& header = file.Header();
    words.header = file.HeaderBytes();
    words.observer = header.observer;
    words.instrument = header.instrument;
    words.telescope = header.telescope;
    words.stamps = file.Stamps();
    for (const std::int64_t stamp : words.stamps) words.utc.push_back(UtcOf(stamp));
    words.fault = ser(file);
    return words;
}

} // namespace

ClipWords WalkFrames(const std::string& path, const ClipSink& sink) {
    return Walk(
        path, [&](SerFile& file) { return WalkSer(file, sink); },
        [&] { return WalkOther(path, sink); });
}

ClipWords WalkFrames(const std::string& path, const std::vector<std::size_t>& numbers,
                     const ChosenSink& sink, const std::function<bool()>& passed) {
    return Walk(
        path, [&](SerFile& file) { return WalkSer(file, numbers, sink); },
        [&] {
            std::map<std::size_t, std::size_t> places;
            for (std::size_t place = 0; place < numbers.size(); ++place)
                places[numbers[place]] = place;
            std::size_t number = 0;
            return WalkOther(path, [&](const ClipImage& image) {
                const auto chosen = places.find(number++);
                if (chosen == places.end()) return !passed || passed();
                const bool goesOn = sink(chosen->second, image);
                places.erase(chosen);
                return goesOn && !places.empty();
            });
        });
}

} // namespace tarn
