// The module that the console companion loads when it needs to look into pictures.
#include "console/DecodersModule.h"
#include "console/decoders/Conversion.h"
#include "console/decoders/Pages.h"
#include "console/decoders/Sheets.h"
#include "console/decoders/Thumbnails.h"
#include "imaging/PictureLoader.h"
#include "imaging/fits/FitsLines.h"

#include <QGuiApplication>

namespace tarn {

namespace {

int argc = 1;
char name[] = "tarn";
char* argv[] = {name, nullptr};

// Tells the toolkit where its plug-ins are looked for, and with text where its fonts are. Lives to
// the end of the process: what the toolkit takes down on the way out may not outlive it.
void NeedApplication(bool withFonts) {
    if (QCoreApplication::instance()) return;
    if (!withFonts) {
        new QCoreApplication(argc, argv);
        return;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    new QGuiApplication(argc, argv);
}

PictureLook Look(const std::string& path) {
    NeedApplication(false);
    PictureLook look;
    const PictureHeader header = PictureLoader::ReadHeader(path, look.fault);
    if (!header.size.isEmpty()) {
        look.width = header.size.width();
        look.height = header.size.height();
    }
    if (!header.fits) return look;
    SkyFacts sky = SkyFactsOf(path);
    look.cameraDate = std::move(sky.cameraDate);
    look.lines = std::move(sky.lines);
    return look;
}

ConvertedFile Convert(const std::string& path, const std::string& folder,
                      const ConvertOptions& options) {
    NeedApplication(!options.text.empty());
    return WriteConverted(path, folder, options);
}

PageResult Page(const PageRequest& request) {
    NeedApplication(false);
    return WritePage(request);
}

PageResult Gallery(const PageRequest& request) {
    NeedApplication(false);
    return WriteGallery(request);
}

SheetResult Sheet(const SheetRequest& request) {
    NeedApplication(true);
    return WriteSheet(request);
}

ThumbnailOutcome Thumbnails(const ThumbnailOrder& order) {
    NeedApplication(false);
    return MakeThumbnails(order);
}

} // namespace

extern "C" const DecodersModule TarnModule{Look, Convert, Page, Gallery, Sheet, Thumbnails};

} // namespace tarn
