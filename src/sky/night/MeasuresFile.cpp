#include "sky/night/MeasuresFile.h"

#include "common/paths.h"
#include "platform/PrivateFolders.h"
#include "platform/QtText.h"

#include <QStandardPaths>

namespace tarn {

std::string CacheFolder() {
    const std::string folder =
        JoinPath(FromQt(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)),
                 "tarn-view");
    MakePrivateFolders(folder);
    return folder;
}

std::string MeasuresFile() {
    return JoinPath(CacheFolder(), "measures.sqlite");
}

} // namespace tarn
