#include <QApplication>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // Test discovery runs at build time, where no screen may be.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never the user's own settings or wastebasket.
    const QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    qputenv("XDG_DATA_HOME",
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toLocal8Bit());
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
