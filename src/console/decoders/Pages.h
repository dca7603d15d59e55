// Pages and galleries of a folder, for the console.
#pragma once

#include "console/PageCommands.h"

namespace tarn {

PageResult WritePage(const PageRequest& request);
PageResult WriteGallery(const PageRequest& request);

} // namespace tarn
