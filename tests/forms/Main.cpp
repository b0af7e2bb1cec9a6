// Tests of the windows run without a display unless one is asked for, on the smallest screen that the windows
// are meant for.
#include <QApplication>
#include <QDir>
#include <QTemporaryFile>

#include <gtest/gtest.h>

namespace {

constexpr char SmallScreen[] = R"({"screens": [{"name": "small", "x": 0, "y": 0, "width": 1024, "height": 768,
                                   "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

bool TakesDisplay() {
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    return !platform.isEmpty() && platform != "offscreen";
}

} // namespace

int main(int argc, char** argv) {
    QTemporaryFile screens(QDir::tempPath() + "/quillon-screen-XXXXXX.json");
    if (!TakesDisplay() && screens.open()) {
        screens.write(SmallScreen);
        screens.flush();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screens.fileName().toLocal8Bit());
    }
    testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
