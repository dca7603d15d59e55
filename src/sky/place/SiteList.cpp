#include "sky/place/SiteList.h"

#include "common/numbers.h"
#include "common/text.h"
#include "sky/place/Angles.h"

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr char kBetween = '|';
constexpr char kEnd = ';';

// Of degrees to a centimetre.
std::string Shortest(double value) {
    std::string text = FormatFixed(value, 7);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

} // namespace

std::optional<NamedSite> SiteOfCells(const std::string& name, const std::string& latitude,
                                     const std::string& longitude, const std::string& height,
                                     const std::string& zoneHours, std::string& fault) {
    constexpr double kLowest = -500; // metres
    constexpr double kHighest = 9000;
    constexpr double kMostZone = 15; // hours
    NamedSite site;
    site.name = std::string(Trim(name));
    std::erase_if(site.name, [](char sign) { return sign == kBetween || sign == kEnd; });
    const auto north = ParseAngle(latitude);
    const auto east = ParseAngle(longitude);
    const auto metres = Trim(height).empty() ? std::optional(0.0) : ParseNumber(height);
    const auto zone = ParseNumber(zoneHours);
    if (site.name.empty())
        fault = "A site needs a name";
    else if (!north || std::abs(north->value) > 90)
        fault = site.name + ": the latitude is from -90 to 90 degrees";
    else if (!east || std::abs(east->value) > 180)
        fault = site.name + ": the longitude is from -180 to 180 degrees, east positive";
    else if (!metres || *metres < kLowest || *metres > kHighest)
        fault = site.name + ": the height is from -500 to 9000 metres";
    else if (!Trim(zoneHours).empty() && (!zone || std::abs(*zone) > kMostZone))
        fault = site.name + ": the zone is in hours east of UTC, or empty for the system's";
    else
        fault.clear();
    if (!fault.empty()) return std::nullopt;
    site.site = {north->value, east->value, *metres};
    if (zone) site.zoneMinutes = int(std::lround(*zone * 60));
    return site;
}

std::vector<NamedSite> ParseSites(std::string_view text) {
    constexpr std::size_t kParts = 5;
    std::vector<NamedSite> sites;
    for (const std::string& each : Split(text, kEnd)) {
        const std::vector<std::string> parts = Split(each, kBetween);
        if (parts.size() != kParts) continue;
        const auto minutes = ParseNumber(parts[4]);
        std::string untold;
        if (auto site = SiteOfCells(parts[0], parts[1], parts[2], parts[3],
                                    minutes ? Shortest(*minutes / 60) : std::string(), untold))
            sites.push_back(std::move(*site));
    }
    return sites;
}

std::string SitesText(std::span<const NamedSite> sites) {
    std::string text;
    for (const NamedSite& each : sites) {
        if (!text.empty()) text += kEnd;
        text += each.name + kBetween + Shortest(each.site.latitude) + kBetween +
                Shortest(each.site.longitude) + kBetween + Shortest(each.site.height) + kBetween;
        if (each.zoneMinutes) text += std::to_string(*each.zoneMinutes);
    }
    return text;
}

const NamedSite* SiteNamed(std::span<const NamedSite> sites, std::string_view name) {
    const auto found = std::find_if(sites.begin(), sites.end(),
                                    [&](const NamedSite& each) { return each.name == name; });
    return found == sites.end() ? nullptr : &*found;
}

} // namespace tarn
