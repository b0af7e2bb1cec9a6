// The desktop program.
#include "commands/Analmenu.h"
#include "forms/Windows.h"
#include "forms/shell/DesktopPlatform.h"
#include "forms/shell/FormHost.h"

#include <QApplication>

using namespace Quillon;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quillon");
    QApplication::setQuitOnLastWindowClosed(false);
    InstallDesktopPlatform();
    StartDesktop(argc > 1 ? argv[1] : "");
    const int result = Analmenu.Ended ? 0 : QApplication::exec();
    UnloadForms();
    return result;
}
