#include "forms/surfaces/Application.h"

#include "platform/RuntimeError.h"

#include <QDir>
#include <QFont>
#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <clocale>
#include <string>

namespace Quillon {

namespace {

// Without this look the toolkit would end the program when it finds no plugin.
bool HasOffscreenPlugin() {
    const QStringList folders = QCoreApplication::libraryPaths();
    return std::any_of(folders.begin(), folders.end(), [](const QString& folder) {
        return !QDir(folder + "/platforms").entryList({"*qoffscreen*"}, QDir::Files).isEmpty();
    });
}

// The application object sets the locale to the user's, in which numbers may have a comma; and it remarks on
// the lack of a session, which nobody needs to know here.
void MakeApplication() {
    static char name[] = "quillon-surfaces", option[] = "-platform", platform[] = "offscreen";
    static char* arguments[] = {name, option, platform, nullptr};
    static int count = 3;
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    const QtMessageHandler former =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    new QGuiApplication(count, arguments); // for the rest of the process: the toolkit has no safe end
    qInstallMessageHandler(former);
    std::setlocale(LC_ALL, locale.c_str());
}

} // namespace

void NeedApplication() {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        if (!HasOffscreenPlugin()) RaiseError("The platform plugin \"offscreen\" of Qt is not installed");
        MakeApplication();
    }
    // The list of families has its generic names even then; what such a name stands for has none.
    if (QFontInfo(QFont()).family().isEmpty()) RaiseError("no font is installed, and letters would be boxes");
}

} // namespace Quillon
