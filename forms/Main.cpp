// The desktop program.
#include "chart/ChartState.h"
#include "forms/Windows.h"
#include "forms/shell/Binding.h"
#include "forms/shell/DesktopPlatform.h"
#include "forms/shell/FormHost.h"
#include "platform/Platform.h"
#include "workspace/commands/Analmenu.h"
#include "workspace/records/Workspace.h"

#include <QApplication>

using namespace Quillon;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Quillon");
    QApplication::setQuitOnLastWindowClosed(false);
    InstallDesktopPlatform();
    RegisterWindows();
    Seams.CancelFlag = &Work.AbortFit;
    Seams.ProgramName = [] { return Work.ProgramName; };
    Seams.DataDirectory = [] { return Work.DataDirectory; };
    StartQuillon(argc > 1 ? argv[1] : "");
    Host.ShowForm("Analmenu");
    // The graph window exists from the start, so that the engine has a surface to measure on.
    Host.ShowForm("Charts");
    Host.HideForm("Charts");
    Host.ShowForm("Analmenu");
    RefreshForms();
    if (Analmenu.Ended) return 0;
    return QApplication::exec();
}
