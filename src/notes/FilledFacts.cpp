#include "notes/FilledFacts.h"

#include "common/numbers.h"
#include "common/text.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <numbers>

namespace tarn {

namespace {

constexpr const char* kHeader = "header";
constexpr double kSameSite = 2000; // metres

std::size_t At(NoteEntry entry) {
    return static_cast<std::size_t>(entry);
}

// Over the ground, as far as it matters for places near each other.
double MetresBetween(const Site& a, const Site& b) {
    constexpr double kDegree = 111'200; // metres
    double east = std::abs(a.longitude - b.longitude);
    if (east > 180) east = 360 - east;
    const double middle = (a.latitude + b.latitude) / 2 * std::numbers::pi / 180;
    return std::hypot((a.latitude - b.latitude) * kDegree, east * kDegree * std::cos(middle));
}

std::string PlaceText(const Site& site) {
    constexpr int kDigits = 4; // of degrees: ten metres
    return FormatFixed(std::abs(site.latitude), kDigits) + (site.latitude < 0 ? " S " : " N ") +
           FormatFixed(std::abs(site.longitude), kDigits) + (site.longitude < 0 ? " W" : " E");
}

// As people say it: "1/125 s", "300 s".
std::string ExposureText(const FrameHeader& header) {
    constexpr double kInFractions = 0.3; // seconds
    const auto seconds = header.where.time.exposure;
    if (seconds && *seconds > 0 && *seconds < kInFractions)
        return "1/" + std::to_string(std::lround(1 / *seconds)) + " s";
    return header.exposure.empty() ? std::string() : header.exposure + " s";
}

class Filling {
public:
    Filling(const FrameHeader& header, const FactSources& sources)
        : m_header(header), m_sources(sources) {}

    FilledFacts All() {
        Kit(NoteEntry::Telescope, m_header.telescope, true);
        for (const NoteEntry entry : {NoteEntry::Mount, NoteEntry::GuideScope})
            Kit(entry, m_header.telescope, false); // whose name many programs write there
        Kit(NoteEntry::Lens, m_header.lens, true);
        Kit(NoteEntry::Camera, m_header.camera, true);
        Kit(NoteEntry::Filter, m_header.filter, true);
        Exposure();
        Location();
        Date();
        return std::move(m_facts);
    }

private:
    void Set(NoteEntry entry, std::string value, std::string source) {
        m_facts[At(entry)] = FilledFact{std::move(value), std::move(source)};
    }
    void Kit(NoteEntry entry, const std::string& written, bool otherwiseItself) {
        // A mount's name in the telescope's place is no telescope.
        const bool isMount = entry == NoteEntry::Telescope &&
                             KitFor(m_sources.kit, NoteEntry::Mount, written) != nullptr;
        if (const KitItem* item = KitFor(m_sources.kit, entry, written))
            Set(entry, item->name, "kit list, for '" + written + "'");
        else if (otherwiseItself && !isMount && !written.empty())
            Set(entry, written, kHeader);
    }
    void Exposure() {
        std::string text = ExposureText(m_header);
        if (m_sources.hfr)
            text += (text.empty() ? "HFR " : ", HFR ") + FormatFixed(*m_sources.hfr, 1) + " px";
        if (text.empty()) return;
        const char* source = !m_sources.hfr              ? kHeader
                             : m_header.exposure.empty() ? "measured"
                                                         : "header, measured";
        Set(NoteEntry::Exposure, std::move(text), source);
    }
    // The user's own name for where the header says it was taken; null: none.
    const NamedSite* Named() const {
        const auto& site = m_header.where.site;
        if (!site) return SiteNamed(m_sources.sites, m_sources.otherwise);
        for (const NamedSite& named : m_sources.sites)
            if (MetresBetween(*site, named.site) <= kSameSite) return &named;
        return nullptr;
    }
    void Location() {
        const auto& site = m_header.where.site;
        if (const NamedSite* named = Named())
            Set(NoteEntry::Location, named->name,
                site ? "sites, for the header's place" : "sites, for pictures without one");
        else if (site && m_header.where.isSiteSure)
            Set(NoteEntry::Location, PlaceText(*site), kHeader);
    }
    // By the clock of the place; of a place without a known zone by UTC, which is said.
    void Date() {
        const auto& time = m_header.where.time;
        if (!time.start) return;
        const auto utc = std::int64_t(std::floor(*time.start));
        const NamedSite* named = Named();
        std::string source = kHeader;
        DateTime local;
        if (time.zoneHours)
            local = OnClock(utc + std::lround(*time.zoneHours * 3600));
        else if (named && named->zoneMinutes)
            local = OnClock(utc + std::int64_t(*named->zoneMinutes) * 60);
        else if (m_header.where.site && !named)
            local = OnClock(utc), source = "header, UTC";
        else
            local = FromFileTime(utc);
        const auto forms = DateEntries(local);
        Set(NoteEntry::Date, forms[std::min(m_sources.dateForm, forms.size() - 1)],
            std::move(source));
    }
    static DateTime OnClock(std::int64_t seconds) {
        const std::time_t time = seconds;
        std::tm parts{};
        ::gmtime_r(&time, &parts);
        return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday,
                parts.tm_hour,        parts.tm_min,     parts.tm_sec};
    }

    const FrameHeader& m_header;
    const FactSources& m_sources;
    FilledFacts m_facts;
};

} // namespace

std::optional<int> FactLists::ZoneMinutes() const {
    const NamedSite* site = SiteNamed(sites, otherwise);
    return site ? site->zoneMinutes : std::nullopt;
}

FilledFacts FactsOf(const FrameHeader& header, const FactSources& sources) {
    return Filling(header, sources).All();
}

std::string NoteOf(const FrameHeader& header, const FilledFacts& facts) {
    NoteComposition note;
    bool any = false;
    for (std::size_t i = 0; i < kNoteEntries; ++i) {
        if (!facts[i]) continue;
        note.entries[i] = facts[i]->value;
        any = true;
    }
    if (!any && header.object.empty()) return {};
    note.firstLines = header.object;
    const std::string text = ComposeNote(note);
    return header.object.empty() ? text.substr(kLineEnd.size()) : text;
}

} // namespace tarn
