// The places from which a user takes pictures, as they are kept in the settings.
#pragma once

#include "sky/place/Heavens.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarn {

struct NamedSite {
    std::string name;
    Site site;
    std::optional<int> zoneMinutes; // east of UTC; none: the system's zone

    bool operator==(const NamedSite&) const = default;
};

// "Garden|48.125|11.525|520|60", ";" between; what is none is left out.
std::vector<NamedSite> ParseSites(std::string_view text);
std::string SitesText(std::span<const NamedSite> sites);

// Of cells as people fill them; none, and `fault` says why, where that is no site.
std::optional<NamedSite> SiteOfCells(const std::string& name, const std::string& latitude,
                                     const std::string& longitude, const std::string& height,
                                     const std::string& zoneHours, std::string& fault);

// Null where none has the name.
const NamedSite* SiteNamed(std::span<const NamedSite> sites, std::string_view name);

} // namespace tarn
