// The module that the console companion loads when it needs to look into pictures.
#include "console/Subcommand.h"
#include "console/decoders/Conversion.h"
#include "console/decoders/Pages.h"
#include "console/decoders/Sheets.h"
#include "console/decoders/Thumbnails.h"
#include "imaging/PictureLoader.h"
#include "imaging/fits/FitsLines.h"

#include <QGuiApplication>

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

} // namespace

extern "C" void TarnLook(const std::string* path, tarn::PictureLook* look) {
    NeedApplication(false);
    const tarn::PictureHeader header = tarn::PictureLoader::ReadHeader(*path);
    if (!header.size.isEmpty()) {
        look->width = header.size.width();
        look->height = header.size.height();
    }
    if (header.fits) look->lines = tarn::FitsLinesOf(*path);
}

extern "C" void TarnConvert(const std::string* path, const std::string* folder,
                            const tarn::ConvertOptions* options, tarn::ConvertedFile* result) {
    NeedApplication(!options->text.empty());
    *result = tarn::WriteConverted(*path, *folder, *options);
}

extern "C" void TarnPage(const tarn::PageRequest* request, tarn::PageResult* result) {
    NeedApplication(false);
    *result = tarn::WritePage(*request);
}

extern "C" void TarnGallery(const tarn::PageRequest* request, tarn::PageResult* result) {
    NeedApplication(false);
    *result = tarn::WriteGallery(*request);
}

extern "C" void TarnSheet(const tarn::SheetRequest* request, tarn::SheetResult* result) {
    NeedApplication(true);
    *result = tarn::WriteSheet(*request);
}

extern "C" void TarnThumbnails(const tarn::ThumbnailOrder* order, tarn::ThumbnailOutcome* outcome) {
    NeedApplication(false);
    *outcome = tarn::MakeThumbnails(*order);
}
