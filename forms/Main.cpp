// The desktop program.
#include "chart/dialogs/PrintGraph.h"
#include "commands/Analmenu.h"
#include "forms/StartDesktop.h"
#include "forms/shell/DesktopPlatform.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"

#include <QApplication>

#include <exception>

using namespace Quillon;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quillon");
    QApplication::setQuitOnLastWindowClosed(false);
    InstallDesktopPlatform();
    try {
        StartDesktop(argc > 1 ? argv[1] : "");
    } catch (const std::exception& error) { // say, no memory: told, and no abort
        Tell(std::string("The program cannot start: ") + error.what(), "Quillon", BoxIcon::Stop);
        return 1;
    }
    const int result = Analmenu.Ended ? 0 : QApplication::exec();
    EndHeldPage();
    UnloadForms();
    return result;
}
