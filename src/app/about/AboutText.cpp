#include "app/about/AboutText.h"

#include "clips/MciLibraries.h"
#include "decoder/DecoderPool.h"
#include "imaging/ImagingLibraries.h"
#include "marks/MarkLibraries.h"
#include "platform/QtText.h"
#include "sky/measures/MeasureLibraries.h"
#include "sky/place/PlaceLibraries.h"

#include <QApplication>
#include <QProxyStyle>
#include <QScreen>
#include <QSysInfo>

#include <gnu/libc-version.h>

#include <algorithm>

namespace tarn {

namespace {

std::string Row(std::string name, const std::string& value) {
    constexpr std::size_t kColumn = 22;
    name.resize(std::max(kColumn, name.size() + 1), ' ');
    return name + value + "\n";
}

std::string VersionText(const Library& library) {
    if (library.running.empty()) return library.built + " (built)";
    if (library.running == library.built) return library.running;
    return library.running + " (built with " + library.built + ")";
}

std::string Variable(const char* name) {
    const QByteArray value = qgetenv(name);
    return value.isEmpty() ? std::string("unknown") : value.toStdString();
}

std::string StyleName() {
    const QStyle* style = QApplication::style();
    if (const auto* over = qobject_cast<const QProxyStyle*>(style)) style = over->baseStyle();
    return FromQt(style->name());
}

std::string ScreenText(const QScreen& screen) {
    const QSize size = screen.size() * screen.devicePixelRatio();
    return std::to_string(size.width()) + " x " + std::to_string(size.height()) + ", scale " +
           FromQt(QString::number(screen.devicePixelRatio())) + ", " +
           std::to_string(screen.depth()) + " bit";
}

} // namespace

std::vector<Library> Libraries(Versions asked) {
    std::vector<Library> all{
        {"Qt", QT_VERSION_STR, qVersion()},
        {"C library", std::to_string(__GLIBC__) + "." + std::to_string(__GLIBC_MINOR__),
         gnu_get_libc_version()},
    };
    for (const auto& list : {ImagingLibraries(asked), MciLibraries(asked), MarkLibraries(),
                             MeasureLibraries(), PlaceLibraries()})
        all.insert(all.end(), list.begin(), list.end());
    return all;
}

std::string AboutText(const std::string& version, const std::string& detail, Versions asked) {
    std::string text = "Tarn_View " + version + "\n" + (detail.empty() ? "" : detail + "\n") + "\n";
    for (const Library& library : Libraries(asked)) text += Row(library.name, VersionText(library));
    text += Row("Compiler", __VERSION__) + "\n";
    text += Row("System", FromQt(QSysInfo::prettyProductName()));
    text +=
        Row("Kernel", FromQt(QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion() +
                             QLatin1Char(' ') + QSysInfo::currentCpuArchitecture()));
    text += Row("Session", Variable("XDG_SESSION_TYPE") + ", " + Variable("XDG_CURRENT_DESKTOP"));
    text +=
        Row("Window system", FromQt(QGuiApplication::platformName()) + ", style " + StyleName());
    if (asked == Versions::Running) text += Row("Readers", DecoderProtection());
    int number = 0;
    for (const QScreen* screen : QGuiApplication::screens())
        text += Row("Screen " + std::to_string(++number), ScreenText(*screen));
    return text;
}

} // namespace tarn
