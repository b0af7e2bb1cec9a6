#include "commands/ReadRun.h"

#include "commands/Commands.h"
#include "commands/RunForm.h"
#include "graphs/kinds/ApproachGraph.h"
#include "graphs/kinds/GraphParts.h"
#include "graphs/kinds/PickSet.h"
#include "platform/Letters.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "runs/FillTable.h"
#include "runs/RunJob.h"
#include "scandata/table/TableRows.h"
#include "workspace/records/Roads.h"

#include <map>

namespace Quillon {

namespace {

// A folder for the scans of an archive that is not there yet.
std::string FreeFolderBeside(const std::string& archive) {
    const std::string title = FileTitle(archive);
    const std::string stem = JoinPath(DirectoryOf(archive), title.substr(0, title.find('.')) + "-scans");
    std::string folder = stem;
    for (int number = 2; Host.DirectoryExists(folder) || Host.FileExists(folder); ++number)
        folder = stem + "-" + std::to_string(number);
    return folder;
}

// Where the scans of sets can be read one by one: as they are, or out of the archive.
ScanPath PathsOf(const SortedRun& run, const std::vector<RunSet>& sets, bool packed) {
    if (!packed) return [&run](std::size_t scan) { return JoinPath(run.Place, run.Scans[scan].File); };
    const std::vector<std::size_t> scans = ScansOf(run, sets);
    const std::vector<std::string> names = NamesForFolder(run, scans);
    const std::string folder = FreeFolderBeside(run.Place);
    LayScans(run, scans, names, folder);
    std::map<std::size_t, std::string> paths;
    for (std::size_t i = 0; i < scans.size(); ++i)
        paths[scans[i]] = JoinPath(folder, names[i]);
    return [paths](std::size_t scan) { return paths.at(scan); };
}

SortedRun Sorted(const std::string& place, bool packed) {
    Host.SetPointer(Pointer::Hourglass);
    try {
        SortedRun run = SortRun(place, {}, packed);
        Host.SetPointer(Pointer::Standard);
        return run;
    } catch (const RuntimeError&) {
        Host.SetPointer(Pointer::Standard);
        throw;
    }
}

// The group of a scan by its bare name; what is said where there is none.
std::size_t GroupOf(const SortedRun& run, const std::string& file) {
    for (std::size_t group = 0; group < run.Groups.size(); ++group)
        for (const std::size_t scan : run.Groups[group].Scans)
            if (FileTitle(run.Scans[scan].File) == file) return group;
    RaiseError(file + " is in no group of scans in " + run.Place);
}

bool MakeApproachOf(RowNo row) {
    const SortedRun run = Sorted(Work.ScanDirectory[row], false);
    return MakeApproachGraph(run, GroupOf(run, Work.ScanFile[row]));
}

} // namespace

void GraphApproach() {
    const SetNo set = PickSet();
    if (set == NoSet) return;
    try {
        if (!MakeApproachOf(RowOf(set))) return;
        ShowCharts({"Approach to Equilibrium, set " + std::to_string(set.Number), {}, 0});
    } catch (const RuntimeError& error) {
        Tell("How the scans came to equilibrium cannot be shown: " + error.Text, Work.ProgramName,
             BoxIcon::Information);
    }
}

bool NamesArchive(const std::string& path) {
    const std::string name = SmallLetters(FileTitle(path));
    return name.ends_with(".tar") || name.ends_with(".tar.gz") || name.ends_with(".tgz") ||
           name.ends_with(".zip");
}

void ReadRunAt(const std::string& place) {
    const bool packed = !Host.DirectoryExists(place);
    SortedRun run;
    try {
        run = Sorted(place, packed);
    } catch (const RuntimeError& error) {
        return Tell(error.Text, Work.ProgramName, BoxIcon::Warning);
    }
    const std::vector<RunSet> sets = ShowRunForm(run);
    if (sets.empty()) return;
    if (!TableIsEmpty() &&
        !AskYesNo("The table of data sets holds scans. Do you want to replace them by those "
                  "of the run?",
                  Work.ProgramName))
        return;
    const ScanPath pathOf = PathsOf(run, sets, packed);
    FillData([&] { return FillTable(run, sets, pathOf); });
}

void ReadRunCommand() {
    FileRequest request;
    request.Title = Work.ProgramName + " - Read a Run";
    request.Filter =
        "archives of runs, scans of a folder|*.tar.gz;*.tgz;*.zip;*.tar;*.R*;*.IP*|all files (*.*)|*.*";
    request.Directory = Work.DataDirectory;
    const FileAnswer answer = Host.AskFile(request);
    if (answer.Cancelled || answer.Path.empty()) return;
    ReadRunAt(NamesArchive(answer.Path) ? answer.Path : DirectoryOf(answer.Path));
}

} // namespace Quillon
