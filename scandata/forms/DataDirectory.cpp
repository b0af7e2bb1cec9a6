#include "scandata/forms/DataDirectory.h"

#include "input/NUMINPUT.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <algorithm>

namespace Quillon {

namespace {

void TakeIfDirectory(const std::string& directory) {
    if (Host.DirectoryExists(directory)) Work.DataDirectory = directory;
}

void TakeIfHoldsFile(const std::string& directory) {
    const std::vector<std::string> names = Host.ListFiles(directory, "*");
    const auto isFile = [&](const std::string& name) { return Host.FileExists(JoinPath(directory, name)); };
    if (std::any_of(names.begin(), names.end(), isFile)) Work.DataDirectory = directory;
}

void SearchNewPlaces() {
    for (const std::string& root : Host.FileRoots()) {
        const std::string programs = JoinPath(root, "xlawin");
        TakeIfDirectory(JoinPath(programs, "xladata"));
        TakeIfDirectory(JoinPath(programs, "xlidata"));
        TakeIfDirectory(JoinPath(root, "xladata"));
        TakeIfDirectory(JoinPath(root, "xlidata"));
    }
    TakeIfDirectory(JoinPath(Work.DataDirectory, TodaysDirectoryName()));
}

void SearchOldPlaces() {
    for (const std::string& root : Host.FileRoots()) {
        const std::string data = JoinPath(root, "xla");
        TakeIfHoldsFile(data);
        TakeIfHoldsFile(JoinPath(data, TodaysDirectoryName()));
    }
}

} // namespace

void FindDataDirectory() {
    Work.DataDirectory = Host.WorkingDirectory();
    if (Work.NameConvention == NamedBy::Newer)
        SearchNewPlaces();
    else
        SearchOldPlaces();
}

std::string TodaysDirectoryName() {
    const ClockTime now = Host.Clock();
    return FormatNumber(now.Month * 10000 + now.Day * 100 + now.Year % 100, "00");
}

} // namespace Quillon
