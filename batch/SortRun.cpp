#include "batch/SortRun.h"

#include "batch/console/BatchPlatform.h"
#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "batch/job/JobFile.h"
#include "batch/options/OutputPlaces.h"
#include "files/FileTarget.h"
#include "files/WriteWhole.h"
#include "graphs/kinds/ApproachGraph.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Words.h"
#include "runs/RunJob.h"
#include "runs/SortCsv.h"
#include "workspace/records/Workspace.h"

#include <filesystem>

namespace Quillon {

namespace {

namespace fs = std::filesystem;

// The radii of a job that holds nothing but [approach].
ApproachRange RangeOfJob(const std::string& path) {
    if (path.empty()) return {};
    std::string bytes;
    try {
        bytes = Host.ReadFile(path);
    } catch (const RuntimeError& error) {
        FailFile(path, error.Text);
    }
    return ParseApproachJob(bytes, path);
}

// --- the job and its scans -------------------------------------------------------------------------------

// A path as a job in a folder names it: below that folder or beside it by a short name.
std::string NameFromJob(const std::string& jobPath, const std::string& file) {
    std::error_code failure;
    const fs::path from = fs::absolute(fs::path(jobPath).parent_path() / ".", failure).lexically_normal();
    const fs::path whole = fs::absolute(file, failure).lexically_normal();
    const fs::path relative = whole.lexically_relative(from);
    return relative.empty() ? whole.string() : relative.string();
}

// "run" of "here/run.job".
std::string Stem(const std::string& path) {
    const std::string title = FileTitle(path);
    const std::size_t point = title.rfind('.');
    return point == std::string::npos || point == 0 ? title : title.substr(0, point);
}

void CheckJobPlace(const SortedRun& run, const std::string& path) {
    const std::string reason = WhyNotWritable(path);
    if (!reason.empty()) FailFile(path, reason);
    if (!Host.DirectoryExists(run.Place) && IsSameFile(path, run.Place))
        FailFile(path, "--job would write over the run");
    for (const RunScan& scan : run.Scans)
        if (scan.Whole.empty() && IsSameFile(path, JoinPath(run.Place, scan.File)))
            FailFile(path, "--job would write over a scan of the run");
}

void WriteFile(const std::string& path, const std::string& bytes) {
    try {
        Host.WriteFile(path, bytes);
    } catch (const RuntimeError& error) {
        FailFile(path, error.Text);
    }
}

// A folder of scans that a failure left without its job would stand in the way of the next try.
void TakeBack(const std::string& folder, const std::vector<std::string>& names) {
    std::error_code failure;
    for (const std::string& name : names)
        fs::remove(JoinPath(folder, name), failure);
    fs::remove(folder, failure);
}

// Scans of a folder stay where they are; those of an archive go into a folder of their own beside the job.
void WriteRunJob(const SortedRun& run, const std::vector<RunSet>& sets, const std::string& path) {
    const std::vector<std::size_t> scans = ScansOf(run, sets);
    const bool packed = !Host.DirectoryExists(run.Place);
    const std::string folder = Stem(path) + "-scans";
    const std::vector<std::string> names = NamesForFolder(run, scans);
    const std::string text = RunJobText(run, sets, [&](std::size_t scan) {
        if (!packed) return NameFromJob(path, JoinPath(run.Place, run.Scans[scan].File));
        for (std::size_t i = 0; i < scans.size(); ++i)
            if (scans[i] == scan) return folder + '/' + names[i];
        return std::string();
    });
    if (!packed) return WriteFile(path, text);
    const std::string place = JoinPath(DirectoryOf(path), folder);
    const bool isNew = !Host.DirectoryExists(place) && !Host.FileExists(place);
    try {
        LayScans(run, scans, names, place);
        WriteFile(path, text);
    } catch (const RuntimeError&) {
        if (isNew) TakeBack(place, names);
        throw;
    }
}

std::vector<RunSet> SetsForJob(const SortedRun& run, const std::vector<std::size_t>& groups,
                               const SortOptions& options) {
    std::vector<RunSet> sets = PlanSets(run, groups, options.Choice);
    if (const std::string why = WhyNoAnalysis(run, sets); !why.empty()) FailFile(run.Place, why);
    return sets;
}

std::vector<std::pair<std::string, std::string>> GraphsOf(const SortedRun& run, const Options& options) {
    std::vector<std::pair<std::string, std::string>> graphs;
    for (const GraphOption& graph : options.Graphs) {
        const std::string name = "--graph " + GraphName(graph);
        const auto group = static_cast<std::size_t>(graph.Group);
        if (group > run.Groups.size())
            FailFile(name + "=" + graph.Path, "the run has " + Counted(std::ssize(run.Groups), "group"));
        graphs.emplace_back(graph.Path, GraphBytesOf(name, graph.Path, graph.Colors,
                                                     [&] { return MakeApproachGraph(run, group - 1); }));
    }
    return graphs;
}

// Groups that an analysis of the equilibrium has no use for.
void TellOthers(const SortedRun& run, const std::vector<std::size_t>& groups) {
    for (const std::size_t g : groups)
        if (!HasLast(run.Groups[g]))
            WriteConsole(GroupName(run, g) + ": " + OpticsWord(run.Groups[g].Optics) + ", " +
                         std::to_string(run.Groups[g].Scans.size()) + " scans, which no job takes");
}

} // namespace

SortOutputs RunSorting(const Options& options) {
    CheckOutputPlaces(options);
    for (const GraphOption& graph : options.Graphs)
        CheckGraphFormat(graph);
    Work = FreshWorkspace();
    const SortOptions& sort = options.Sort;
    const ApproachRange range = RangeOfJob(options.JobPath);
    const bool keepBytes = !sort.Job.empty() && !Host.DirectoryExists(sort.Place);
    const SortedRun run = SortRun(sort.Place, range, keepBytes);
    for (const std::string& remark : run.Remarks)
        WriteConsole(remark);
    const std::vector<std::size_t> groups = ChosenGroups(run, sort.Choice);
    TellOthers(run, groups);
    SortOutputs outputs{SortCsv(run, groups), GraphsOf(run, options)}; // what cannot be drawn stops here
    if (!sort.Job.empty()) {
        const std::vector<RunSet> sets = SetsForJob(run, groups, sort);
        for (const std::string& remark : RemarksOnSets(run, sets))
            WriteConsole(remark);
        CheckJobPlace(run, sort.Job);
        WriteRunJob(run, sets, sort.Job);
    }
    return outputs;
}

} // namespace Quillon
