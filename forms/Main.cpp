// The desktop program.
#include "commands/Analmenu.h"
#include "commands/StartUp.h"
#include "forms/StartDesktop.h"
#include "forms/shell/DesktopPlatform.h"
#include "platform/Platform.h"

#include <QApplication>
#include <QIcon>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <optional>

using namespace Quillon;

namespace {

// --- without a display -----------------------------------------------------------------------------------

QStringList HeldWarnings; // of the toolkit while it looks for a display

// The toolkit aborts where it finds none, behind a page about its plugins.
void HoldMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (type != QtFatalMsg) {
        HeldWarnings << text;
        return;
    }
    const std::string reason = HeldWarnings.value(0, text).simplified().toStdString();
    std::fprintf(
        stderr, "quillon: there is no display to open a window on (%s). quillon-fit runs fits without one.\n",
        reason.c_str());
    std::_Exit(1);
}

struct WatchedStart {
    WatchedStart() { qInstallMessageHandler(HoldMessage); }
    ~WatchedStart() {
        qInstallMessageHandler(nullptr);
        for (const QString& text : HeldWarnings)
            qWarning("%s", qPrintable(text));
    }
    WatchedStart(const WatchedStart&) = delete;
    WatchedStart& operator=(const WatchedStart&) = delete;
};

// --- arguments that open no window -----------------------------------------------------------------------

// What --help and --version print; "" when neither is there.
std::string PrintedText(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--") break;
        if (argument == "--help" || argument == "-h") return DesktopHelp();
        if (argument == "--version") return DesktopVersion();
    }
    return "";
}

// The names on the command line, once the toolkit has taken its own options; an option that neither knows is
// told and ends the program.
std::vector<std::string> NamesOf(int argc, char** argv) {
    std::vector<std::string> names;
    bool options = true;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (options && argument == "--") {
            options = false;
        } else if (options && argument.size() > 1 && argument[0] == '-') {
            std::fprintf(stderr, "quillon: unknown option '%s', see quillon --help\n", argument.c_str());
            std::exit(1);
        } else {
            names.push_back(argument);
        }
    }
    return names;
}

int RunDesktop(int argc, char** argv) {
    QApplication::setApplicationName("Quillon");
    QApplication::setQuitOnLastWindowClosed(false);
    std::vector<std::string> names = NamesOf(argc, argv);
    const std::string first = names.empty() ? "" : names.front();
    if (!names.empty()) names.erase(names.begin());
    InstallDesktopPlatform();
    try {
        StartDesktop(first, names);
    } catch (const std::exception& error) { // say, no memory: told, and no abort
        Tell(std::string("The program cannot start: ") + error.what(), "Quillon", BoxIcon::Stop);
        return 1;
    }
    const int result = Analmenu.Ended ? 0 : QApplication::exec();
    EndDesktop();
    return result;
}

} // namespace

int main(int argc, char** argv) {
    if (const std::string text = PrintedText(argc, argv); !text.empty()) {
        std::fputs(text.c_str(), stdout);
        return 0;
    }
    std::optional<WatchedStart> watched{std::in_place};
    QApplication app(argc, argv);
    watched.reset();
    QGuiApplication::setDesktopFileName("quillon"); // windows go with its entry, icon included
    QGuiApplication::setWindowIcon(QIcon(":/quillon-128.png"));
    return RunDesktop(argc, argv);
}
