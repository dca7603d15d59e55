#include "sky/place/SkyLines.h"

#include "common/numbers.h"
#include "common/text.h"
#include "sky/place/Angles.h"

#include <cmath>

namespace tarn {

namespace {

std::string Degrees(double value, int digits) {
    return FormatFixed(value, digits) + "°";
}

// "02:50:12", of degrees.
std::string HourText(double degrees) {
    constexpr long long kDay = 86400;
    const long long seconds = std::llround(degrees / 15 * 3600) % kDay;
    return FormatPadded(seconds / 3600, 2) + ":" + FormatPadded(seconds / 60 % 60, 2) + ":" +
           FormatPadded(seconds % 60, 2);
}

} // namespace

std::vector<std::string> SkyLines(const SkyRow& row, const LongitudeSense& sense, bool isUnsure) {
    std::vector<std::string> lines;
    const auto add = [&](const char* label, const std::string& text) {
        lines.push_back(label + text);
    };
    if (row.utc) {
        std::string time = UtcText(*row.utc);
        time.replace(10, 1, " ").pop_back();
        add("      Middle: ", time + " UTC");
    }
    if (std::isfinite(row.altitude)) {
        add("    Altitude: ", Degrees(row.altitude, 1) + ", azimuth " +
                                  Degrees(WithinWrittenTurn(row.azimuth, 1), 1));
        if (std::isfinite(row.airMass)) add("    Air mass: ", FormatFixed(row.airMass, 2));
    }
    if (std::isfinite(row.sunAltitude))
        add("         Sun: ",
            Degrees(row.sunAltitude, 1) + ", " + TwilightText(TwilightOf(row.sunAltitude)));
    if (std::isfinite(row.moonAltitude)) {
        std::string moon =
            Degrees(row.moonAltitude, 1) + ", " + FormatFixed(100 * row.moonPhase, 0) + " % lit";
        if (std::isfinite(row.moonSeparation))
            moon += ", " + Degrees(row.moonSeparation, 1) + " away";
        add("        Moon: ", moon);
    }
    if (std::isfinite(row.sidereal)) add("    Sidereal: ", HourText(row.sidereal));
    if (row.site) {
        add("        Site: ", FormatFixed(row.site->latitude, 4) + ", " +
                                  FormatFixed(row.site->longitude, 4) + ", " +
                                  FormatFixed(row.site->height, 0) + " m");
        if (isUnsure)
            add("  Longitudes: ", std::string(sense.countsWest ? "west, " : "east, ") +
                                      (sense.said.empty() ? "nothing tells" : sense.said));
    }
    if (row.fault.empty()) return lines;
    const char* label = "     Missing: ";
    for (const std::string& fault : Split(row.fault, ';')) {
        add(label, std::string(Trim(fault)));
        label = "              ";
    }
    return lines;
}

} // namespace tarn
