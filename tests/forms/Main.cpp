// Tests of the windows run without a display unless one is asked for, on the smallest screen that the windows
// are meant for, or one that QUILLON_TEST_SCREEN tells: "1600x1000@2" has so many pixels, of two by two dots.
#include <QApplication>
#include <QDir>
#include <QTemporaryFile>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

QByteArray ScreenAskedFor() {
    const QByteArray asked = qgetenv("QUILLON_TEST_SCREEN");
    int width = 1024, height = 768, dots = 1;
    if (!asked.isEmpty() && std::sscanf(asked.constData(), "%dx%d@%d", &width, &height, &dots) != 3)
        qFatal("QUILLON_TEST_SCREEN is no screen: %s", asked.constData());
    return QString(R"({"screens": [{"name": "test", "x": 0, "y": 0, "width": %1, "height": %2,
                       "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": %3}]})")
        .arg(width)
        .arg(height)
        .arg(dots)
        .toUtf8();
}

bool TakesDisplay() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return !platform.isEmpty() && platform != "offscreen";
}

} // namespace

int main(int argc, char** argv) {
    QTemporaryFile screens(QDir::tempPath() + "/quillon-screen-XXXXXX.json");
    if (!TakesDisplay() && screens.open()) {
        screens.write(ScreenAskedFor());
        screens.flush();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
