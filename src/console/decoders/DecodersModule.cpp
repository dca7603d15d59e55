// The module that the console companion loads when it needs to look into pictures.
#include "console/decoders/Conversion.h"
#include "console/decoders/Pages.h"
#include "console/decoders/Sheets.h"
#include "console/decoders/Thumbnails.h"
#include "platform/imaging/PictureLoader.h"
#include "platform/imaging/fits/FitsLines.h"

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

extern "C" bool TarnPictureSize(const char* path, int* width, int* height) {
    NeedApplication(false);
    const QSize size = tarn::PictureLoader::ReadSize(path);
    *width = size.width();
    *height = size.height();
    return !size.isEmpty();
}

extern "C" void TarnFitsLines(const std::string* path, std::vector<std::string>* lines) {
    *lines = tarn::FitsLinesOf(*path);
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
