#include "console/decoders/Moving.h"

#include "sky/night/MeasuresFile.h"
#include "sky/series/MoversOfFiles.h"

namespace tarn {

MoversResult FindInFiles(const MoversQuest& quest) {
    return FindMoversInFiles(quest, CacheFolder());
}

} // namespace tarn
