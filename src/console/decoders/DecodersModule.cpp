// The module that the console companion loads when it needs to look into pictures.
#include "platform/imaging/PictureLoader.h"

#include <QCoreApplication>

extern "C" bool TarnPictureSize(const char* path, int* width, int* height) {
    static int argc = 1;
    static char name[] = "tarn";
    static char* argv[] = {name, nullptr};
    // Tells the toolkit where its plug-ins are looked for. Lives to the end of the process: what
    // the toolkit takes down on the way out may not outlive it.
    static const auto* application = new QCoreApplication(argc, argv);
    const QSize size = application ? tarn::PictureLoader::ReadSize(path) : QSize(0, 0);
    *width = size.width();
    *height = size.height();
    return !size.isEmpty();
}
