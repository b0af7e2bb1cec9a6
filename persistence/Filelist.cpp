#include "persistence/Filelist.h"

#include "input/IniFile.h"
#include "persistence/IniAccess.h"

#include <algorithm>
#include <vector>

namespace Quillon {

namespace {

std::string RecentKey(long item) {
    return "RecentFile" + std::to_string(item);
}

using PathList = std::vector<std::string>;

PathList PathsIn(const std::string& ini) {
    PathList paths;
    for (long item = 1; item <= MaxRecentFiles; ++item) {
        paths.push_back(IniValue(ini, IniSection::RecentFiles, RecentKey(item)));
        if (!paths.back().empty()) continue;
        paths.pop_back();
        break;
    }
    return paths;
}

void ShowPaths(const PathList& paths) {
    mnuRecentFile.Recreate(MaxRecentFiles);
    mnuRecentFile[0].Visible = !paths.empty();
    for (long item = 1; item <= static_cast<long>(paths.size()); ++item) {
        const std::string& path = paths[static_cast<std::size_t>(item - 1)];
        mnuRecentFile[item] = {path.substr(0, RecentCaptionLength), path, true};
    }
}

PathList ShownPaths() {
    PathList paths;
    for (long item = 1; item <= MaxRecentFiles && mnuRecentFile[item].Visible; ++item)
        paths.push_back(mnuRecentFile[item].Path);
    return paths;
}

// The ini file with the list in it; places that are no longer in use are emptied.
std::string WithPaths(std::string ini, const PathList& paths) {
    for (long item = 1; item <= MaxRecentFiles; ++item) {
        const bool inUse = item <= static_cast<long>(paths.size());
        const std::string value = inUse ? paths[static_cast<std::size_t>(item - 1)] : "";
        if (IniValue(ini, IniSection::RecentFiles, RecentKey(item)) != value)
            ini = WithIniValue(ini, IniSection::RecentFiles, RecentKey(item), value);
    }
    return ini;
}

void StorePaths(const PathList& paths) {
    ShowPaths(paths);
    try {
        Host.WriteFile(IniFilePath(), WithPaths(ReadIniFile(IniFilePath()), paths));
    } catch (const RuntimeError&) {
        TellWriteFailure();
    }
}

// The list is read in another working directory, and one line of the ini file holds a path.
bool CanBeListed(const std::string& path) {
    return !path.empty() && path.find_first_of("\r\n") == std::string::npos;
}

} // namespace

ZeroBased<RecentItem> mnuRecentFile(MaxRecentFiles);

void LoadRecentFiles() {
    try {
        ShowPaths(PathsIn(ReadIniFile(IniFilePath())));
    } catch (const RuntimeError&) {
        ShowPaths({}); // the reading of the defaults has told that the file cannot be read
    }
}

void AddRecentFile(const std::string& path) {
    if (!CanBeListed(path)) return;
    const std::string whole = IsAbsolutePath(path) ? path : JoinPath(Host.WorkingDirectory(), path);
    PathList paths = ShownPaths();
    if (!paths.empty() && paths.front() == whole) return;
    std::erase(paths, whole);
    paths.insert(paths.begin(), whole);
    if (paths.size() > MaxRecentFiles) paths.resize(MaxRecentFiles);
    StorePaths(paths);
}

void RemoveRecentFile(long item) {
    PathList paths = ShownPaths();
    if (item < 1 || item > static_cast<long>(paths.size())) return;
    paths.erase(paths.begin() + (item - 1));
    StorePaths(paths);
}

RestoreOutcome ChooseRecentFile(long item) {
    if (item < 1 || item > MaxRecentFiles || !mnuRecentFile[item].Visible) return {};
    const std::string path = mnuRecentFile[item].Path; // the list may change while the fit is read
    if (Host.FileExists(path)) {
        const RestoreOutcome outcome = ReadFitFile(path, false);
        Work.AbortFit = FlagFalse;
        return outcome;
    }
    const std::string reason =
        "The saved fit file " + path +
        " cannot be located. Perhaps it is now in another directory. Try locating and loading it using the "
        "'File...Restore Fit from Disk' command.";
    Tell(reason, Work.ProgramName, BoxIcon::Warning);
    RemoveRecentFile(item);
    return {RestoreEnd::Failed, reason, false};
}

} // namespace Quillon
