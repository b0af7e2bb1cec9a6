#include "persistence/Filelist.h"

#include "input/IniFile.h"
#include "persistence/settings/IniAccess.h"
#include "platform/Paths.h"
#include "workspace/records/Cancel.h"

#include <algorithm>
#include <vector>

namespace Quillon {

namespace {

std::string RecentKey(long item) {
    return "RecentFile" + std::to_string(item);
}

using PathList = std::vector<std::string>;

// The menu holds what the ini file could not be made to hold.
bool Unwritten = false;

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

// The list at hand is the ini file's: another running copy of the program may have added to it, and what it
// added stays. What this run could not write, the menu knows.
PathList ListAtHand(const std::string& ini) {
    PathList paths = Unwritten ? ShownPaths() : PathList{};
    for (const std::string& path : PathsIn(ini))
        if (std::find(paths.begin(), paths.end(), path) == paths.end()) paths.push_back(path);
    return paths;
}

// Shows what the list becomes, and writes it.
template <class Change> void ChangeList(const Change& change) {
    PathList paths = ShownPaths();
    bool shown = false;
    const auto show = [&] {
        change(paths);
        if (paths.size() > MaxRecentFiles) paths.resize(MaxRecentFiles);
        ShowPaths(paths);
        shown = true;
    };
    try {
        const std::shared_ptr<void> hold = Host.HoldFile(IniFilePath());
        const std::string ini = ReadIniFile(IniFilePath());
        paths = ListAtHand(ini);
        show();
        Host.WriteFile(IniFilePath(), WithPaths(ini, paths));
        Unwritten = false;
    } catch (const RuntimeError& error) {
        if (!shown) show();
        Unwritten = true;
        TellWriteFailure(error.Text);
    }
}

// The list is read in another working directory, and one line of the ini file holds a path.
bool CanBeListed(const std::string& path) {
    return !path.empty() && path.find_first_of("\r\n") == std::string::npos;
}

} // namespace

ZeroBased<RecentItem> mnuRecentFile(MaxRecentFiles);

void LoadRecentFiles() {
    Unwritten = false;
    try {
        ShowPaths(PathsIn(ReadIniFile(IniFilePath())));
    } catch (const RuntimeError&) {
        ShowPaths({}); // the reading of the defaults has told that the file cannot be read
    }
}

void AddRecentFile(const std::string& path) {
    if (!CanBeListed(path)) return;
    const std::string whole = IsAbsolutePath(path) ? path : JoinPath(Host.WorkingDirectory(), path);
    const PathList shown = ShownPaths();
    if (!Unwritten && !shown.empty() && shown.front() == whole) return;
    ChangeList([&](PathList& paths) {
        std::erase(paths, whole);
        paths.insert(paths.begin(), whole);
    });
}

void RemoveRecentFile(long item) {
    const PathList shown = ShownPaths();
    if (item < 1 || item > static_cast<long>(shown.size())) return;
    ChangeList([&](PathList& paths) { std::erase(paths, shown[static_cast<std::size_t>(item - 1)]); });
}

RestoreOutcome ChooseRecentFile(long item) {
    if (item < 1 || item > MaxRecentFiles || !mnuRecentFile[item].Visible) return {};
    const std::string path = mnuRecentFile[item].Path; // the list may change while the fit is read
    Host.SetPointer(Pointer::Hourglass);               // a disk of the network may take its time
    const bool there = Host.FileExists(path);
    Host.SetPointer(Pointer::Standard);
    if (there) {
        const RestoreOutcome outcome = ReadFitFile(path, false);
        ClearCancel();
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
