#include "sky/night/MeasuresFile.h"

#include "common/paths.h"
#include "platform/PrivateFolders.h"
#include "platform/QtText.h"

#include <QStandardPaths>

namespace tarn {

std::string MeasuresFile() {
    const std::string folder =
        JoinPath(FromQt(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation)),
                 "tarn-view");
    MakePrivateFolders(folder);
    return JoinPath(folder, "measures.sqlite");
}

} // namespace tarn
