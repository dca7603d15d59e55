#include "clips/ClipFrames.h"

#include "clips/FramesModule.h"
#include "clips/SerFile.h"
#include "platform/Modules.h"
#include "platform/OpenRegular.h"

#include <array>
#include <cstdio>
#include <ctime>

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

// Blue first becomes red first, since all else is.
void Swap(std::vector<std::uint8_t>& bytes, std::size_t sample) {
    for (std::size_t i = 0; i + 3 * sample <= bytes.size(); i += 3 * sample)
        for (std::size_t k = 0; k < sample; ++k) std::swap(bytes[i + k], bytes[i + 2 * sample + k]);
}

std::string WalkSer(SerFile& file, const ClipSink& sink) {
    const SerHeader& header = file.Header();
    std::vector<std::uint8_t> bytes;
    for (int i = 0; i < header.frames; ++i) {
        if (std::string error = file.ReadStored(i, bytes); !error.empty())
            return "frame " + std::to_string(i) + ": " + error;
        if (header.color == SerHeader::Bgr) Swap(bytes, std::size_t(header.SampleBytes()));
        if (!sink({&bytes, header.width, header.height, header.bits, header.Samples(),
                   file.HighByteFirst(), PatternOf(header.color)}))
            return {};
    }
    if (file.FramesStated() > header.frames)
        return "it is cut off: " + std::to_string(header.frames) + " of " +
               std::to_string(file.FramesStated()) + " frames are there";
    return {};
}

bool StartsAsSer(const std::string& path, std::string& error) {
    const OpenFile file(path, error);
    std::array<char, 16> start{};
    const ssize_t got = file ? ::pread(file.Number(), start.data(), start.size(), 0) : 0;
    return got > 0 && IsSer(std::string(start.data(), std::size_t(got)));
}

} // namespace

ClipWords WalkFrames(const std::string& path, const ClipSink& sink) {
    ClipWords words;
    const bool isSer = StartsAsSer(path, words.fault);
    if (!words.fault.empty()) return words;
    if (!isSer) {
        const auto* module = FromModule<FramesModule>();
        if (module)
            module->each(path, sink, words.fault);
        else
            words.fault = "the part of the program that reads clips is not installed";
        return words;
    }
    SerFile file;
    words.fault = file.Open(path);
    if (!words.fault.empty()) return words;
    const SerHeader& header = file.Header();
    words.observer = header.observer;
    words.instrument = header.instrument;
    words.telescope = header.telescope;
    for (const std::int64_t stamp : file.Stamps()) words.utc.push_back(UtcOf(stamp));
    words.fault = WalkSer(file, sink);
    return words;
}

} // namespace tarn
