#include "imaging/fits/FitsWords.h"

#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tarn {

namespace {

constexpr std::size_t kDayLength = 10; // "2024-11-05"

// "24/12/98" of the years before 2000 as dates are written since.
std::string WithFullYear(const std::string& date) {
    const bool old = date.size() == 8 && date[2] == '/' && date[5] == '/';
    return old ? "19" + date.substr(6, 2) + "-" + date.substr(3, 2) + "-" + date.substr(0, 2)
               : date;
}

// A day count that begins in 1858, as a date; by the civil calendar's cycle of 400 years.
std::string DateOfDays(double days) {
    constexpr double kFirst = -100'000; // some centuries around
    constexpr double kLast = 200'000;
    constexpr long kToMarchOfYear0 = 678'881;
    constexpr long long kMilliseconds = 86'400'000; // a day
    if (!(days > kFirst && days < kLast)) return {};
    const long long all = std::llround(days * double(kMilliseconds));
    const long long inDay = (all % kMilliseconds + kMilliseconds) % kMilliseconds;
    const long day = long((all - inDay) / kMilliseconds) + kToMarchOfYear0;
    const long era = day / 146'097;
    const long ofEra = day % 146'097;
    const long yearOfEra = (ofEra - ofEra / 1460 + ofEra / 36'524 - ofEra / 146'096) / 365;
    const long ofYear = ofEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long fromMarch = (5 * ofYear + 2) / 153;
    const long month = fromMarch < 10 ? fromMarch + 3 : fromMarch - 9;
    const long year = era * 400 + yearOfEra + (month <= 2 ? 1 : 0);
    std::array<char, 40> text{};
    std::snprintf(text.data(), text.size(), "%04ld-%02ld-%02ldT%02lld:%02lld:%02lld.%03lld", year,
                  month, ofYear - (153 * fromMarch + 2) / 5 + 1, inDay / 3'600'000,
                  inDay / 60'000 % 60, inDay / 1000 % 60, inDay % 1000);
    return text.data();
}

// Numbers of 64 bits may have a D for their exponent.
std::string WithUsualExponent(const std::string& written) {
    const std::size_t at = written.find_first_of("Dd");
    if (at == std::string::npos) return written;
    std::string number = written;
    number[at] = 'E';
    return ParseNumber(number) ? number : written;
}

std::string DateOf(const WordOf& word) {
    std::string date = WithFullYear(word({"DATE-OBS", "DATE-BEG"}));
    if (date.size() == kDayLength) {
        const std::string time = word({"TIME-OBS", "UT"});
        if (time.find(':') != std::string::npos) date += "T" + time;
    }
    const bool isDay = date.size() == kDayLength;
    if (!date.empty() && !isDay) return date;
    const auto days = ParseNumber(WithUsualExponent(word({"MJD-OBS", "MJD-BEG"})));
    const std::string counted = days ? DateOfDays(*days) : std::string();
    if (!isDay) return counted;
    // A whole count tells no more than the day.
    const bool hasTime = days && *days != std::floor(*days);
    return hasTime && counted.starts_with(date) ? counted : date;
}

} // namespace

void TakeWords(FitsHeader& header, const WordOf& word) {
    const auto number = [&](std::initializer_list<const char*> names) {
        return WithUsualExponent(word(names));
    };
    header.object = word({"OBJECT"});
    header.date = DateOf(word);
    header.timeSystem = word({"TIMESYS"});
    header.localDate = word({"DATE-LOC"});
    header.exposure = number({"EXPTIME", "EXPOSURE"});
    header.gain = number({"GAIN", "ISOSPEED"});
    header.temperature = number({"CCD-TEMP", "CCDTEMP", "DET-TEMP", "CAMTEMP", "SET-TEMP"});
    header.filter = word({"FILTER", "FILTER1"});
    header.telescope = word({"TELESCOP"});
    header.camera = word({"INSTRUME", "CAMERA"});
    header.imageType = word({"IMAGETYP", "FRAME"});
    header.offset = number({"OFFSET", "BLKLEVEL"});
    header.pedestal = number({"PEDESTAL"});
    header.binningX = number({"XBINNING"});
    header.binningY = number({"YBINNING"});
    header.focalLength = number({"FOCALLEN"});
    header.focus = number({"FOCUSPOS", "FOCPOS"});
    header.airMass = number({"AIRMASS"});
    header.rightAscension = number({"RA", "OBJCTRA"});
    header.declination = number({"DEC", "OBJCTDEC"});
    header.latitude = number({"SITELAT", "LAT-OBS"});
    header.longitude = number({"SITELONG", "LONG-OBS"});
    for (const char* name : kHeaderWords)
        if (std::string value = word({name}); !value.empty()) header.words.emplace(name, value);
    header.words["NAXIS1"] = std::to_string(header.width);
    header.words["NAXIS2"] = std::to_string(header.height);
    header.topDown = ToUpper(word({"ROWORDER"})) == "TOP-DOWN";
    TakePattern(header, word({"BAYERPAT", "COLORTYP", "CFAPAT"}),
                std::atoi(word({"XBAYROFF"}).c_str()), std::atoi(word({"YBAYROFF"}).c_str()));
}

void TakePattern(FitsHeader& header, std::string_view written, int right, int down) {
    if (header.planes != 1 || header.width < 2 || header.height < 2) return;
    std::string letters = ToUpper(written);
    std::erase(letters, ' ');
    std::array<int, 4> pattern{};
    if (letters.size() != pattern.size()) return;
    std::array<int, 3> seen{};
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::size_t x = (i % 2 + std::size_t(right & 1)) % 2;
        const std::size_t y = (i / 2 + std::size_t(down & 1)) % 2;
        const auto colour = std::string_view("RGB").find(letters[y * 2 + x]);
        if (colour == std::string_view::npos) return;
        pattern[i] = int(colour);
        ++seen[colour];
    }
    header.mosaic = seen == std::array<int, 3>{1, 2, 1};
    if (header.mosaic) header.pattern = pattern;
}

} // namespace tarn
