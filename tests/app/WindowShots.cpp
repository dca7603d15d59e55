// Pictures of every window, to look at: window_shots FOLDER [light|dark|contrast [POINTS]].
// Another size of pixels is QT_SCALE_FACTOR, another screen
// QT_QPA_PLATFORM=offscreen:configfile=...
#include "AllWindows.h"

#include "widgets/ClearOutlines.h"

#include <QDir>
#include <QFont>
#include <QPalette>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc < 2) return std::fputs("usage: window_shots FOLDER [PALETTE [POINTS]]\n", stderr), 2;
    QApplication application(argc, argv);
    QApplication::setStyle(new tarn::ClearOutlines(QStringLiteral("Fusion")));
    const QString palette = QString::fromLocal8Bit(argc > 2 ? argv[2] : "light");
    using tarn::testing::InColours;
    if (palette == QLatin1String("dark")) QApplication::setPalette(InColours("#2a2e32", "#fcfcfc"));
    if (palette == QLatin1String("contrast"))
        QApplication::setPalette(InColours("#000000", "#ffff00"));
    if (argc > 3) {
        QFont font = QApplication::font();
        font.setPointSizeF(QByteArray(argv[3]).toDouble());
        QApplication::setFont(font);
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    folder.mkpath(QStringLiteral("."));
    tarn::testing::WindowsDesk desk;
    desk.Each([&](const std::string& name, QWidget& window) {
        const QPixmap shot = window.grab();
        shot.save(folder.filePath(QString::fromStdString(name) + QStringLiteral(".png")));
        const QRect place = window.frameGeometry();
        const QSize room = window.screen()->size();
        const bool fits = window.width() <= room.width() && window.height() <= room.height();
        std::printf("%-18s %4d x %4d%s\n", name.c_str(), place.width(), place.height(),
                    fits ? "" : "  beyond the screen");
    });
    return ::testing::Test::HasFailure() ? 1 : 0;
}
