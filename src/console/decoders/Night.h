// The report of nights, for the console companion. Needs the toolkit's application with fonts.
#pragma once

#include "console/NightCommand.h"

namespace tarn {

NightResult WriteNight(const NightRequest& request);

} // namespace tarn
