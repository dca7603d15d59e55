// Words of a picture's header that say when, from where and at what it was taken.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace tarn {

// The value of each, as written, without quotes and blanks around. NAXIS1 and NAXIS2 are the sides
// of the picture that is meant.
using HeaderWords = std::map<std::string, std::string, std::less<>>;

// Those that are read; programs spell them in many ways.
inline constexpr const char* kHeaderWords[] = {
    "DATE-OBS", "DATE-BEG", "TIME-OBS", "TIME-BEG", "UT",       "UTC",      "UTSTART",  "DATE-AVG",
    "DATE-MID", "MJD-OBS",  "MJD-BEG",  "MJD-AVG",  "MJD-MID",  "JD",       "JD-OBS",   "JD_UTC",
    "TIMESYS",  "DATE-LOC", "EXPTIME",  "EXPOSURE", "LST",      "LST-OBS",  "ST",       "RA",
    "DEC",      "OBJCTRA",  "OBJCTDEC", "CRVAL1",   "CRVAL2",   "CTYPE1",   "CTYPE2",   "CRPIX1",
    "CRPIX2",   "CD1_1",    "CD1_2",    "CD2_1",    "CD2_2",    "CDELT1",   "CDELT2",   "CROTA2",
    "PC1_1",    "PC1_2",    "PC2_1",    "PC2_2",    "RADESYS",  "RADECSYS", "EQUINOX",  "EPOCH",
    "OBSGEO-B", "OBSGEO-L", "OBSGEO-H", "OBSGEO-X", "OBSGEO-Y", "OBSGEO-Z", "SITELAT",  "SITELONG",
    "SITELON",  "SITEELEV", "SITEALT",  "LAT-OBS",  "LONG-OBS", "LON-OBS",  "ALT-OBS",  "OBSLAT",
    "OBSLONG",  "OBSLON",   "OBSALT",   "OBSELEV",  "OBS-LAT",  "OBS-LONG", "OBS-LON",  "OBS-ELEV",
    "GEOLAT",   "GEOLONG",  "GEOLON",   "GEOELEV",  "GEOALT",   "LATITUDE", "LONGITUD", "TELLAT",
    "TELLONG",  "ELEVATIO", "TELALT",   "OBJCTALT", "CENTALT",  "NCOMBINE"};

// Empty where there is none.
inline std::string_view WordIn(const HeaderWords& words, std::string_view name) {
    const auto found = words.find(name);
    return found == words.end() ? std::string_view() : std::string_view(found->second);
}

} // namespace tarn
