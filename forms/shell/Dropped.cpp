#include "forms/shell/Dropped.h"

#include <QFile>
#include <QMimeData>
#include <QUrl>

namespace Quillon {

std::vector<std::string> LocalPaths(const QMimeData* data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) paths.push_back(QFile::encodeName(url.toLocalFile()).toStdString());
    return paths;
}

} // namespace Quillon
