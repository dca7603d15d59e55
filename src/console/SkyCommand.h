// "tarn sky": what stood in the sky when frames were taken.
#pragma once

#include "console/Subcommand.h"

namespace tarn {

extern const Usage kSkyUsage;

// A row for each file, folders by name; headers alone are read. All is for the middle of the
// exposure: the target, the Sun and the Moon as seen from the site, without refraction. The site of
// the header wins over the one given. How the sign of a folder's longitudes is known is told on the
// standard error stream.
int RunSky(std::span<const std::string> words);

} // namespace tarn
