#include "platform/ProgramFiles.h"

#include "platform/QtText.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace tarn {

std::string ProgramFile(const std::string& name) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString wanted = ToQt(name);
    for (const QString& folder : {program, program + QStringLiteral("/data"),
                                  program + QStringLiteral("/../share/tarn-view")}) {
        const QString path = folder + QLatin1Char('/') + wanted;
        if (QFileInfo::exists(path)) return FromQt(path);
    }
    return FromQt(program + QLatin1Char('/') + wanted);
}

} // namespace tarn
