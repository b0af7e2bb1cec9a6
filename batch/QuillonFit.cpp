#include "batch/QuillonFit.h"

#include "batch/Calculate.h"
#include "batch/RunOutputs.h"
#include "batch/SortRun.h"
#include "batch/Studies.h"
#include "batch/console/BatchPlatform.h"
#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "batch/graphs/PictureLoader.h"
#include "batch/job/JobFile.h"
#include "batch/job/PlanJob.h"
#include "batch/job/RunJob.h"
#include "batch/job/SavedFit.h"
#include "batch/job/SimulateJob.h"
#include "batch/options/HelpText.h"
#include "batch/options/Options.h"
#include "batch/options/OutputPlaces.h"
#include "batch/table/TableRun.h"
#include "chart/files/Exchange.h"
#include "platform/Platform.h"
#include "workspace/records/Workspace.h"

#include <exception>
#include <new>

namespace Quillon {

namespace {

std::string LoadFile(const std::string& path) {
    try {
        return Host.ReadFile(path);
    } catch (const RuntimeError& error) {
        FailFile(path, error.Text);
    }
}

void CheckGraphSets(const Options& options, long sets, int model) {
    for (const GraphOption& graph : options.Graphs) {
        CheckGraphSet(graph, sets);
        CheckGraphModel(graph, model);
    }
}

// A study that cannot be made takes nothing of the fit with it: why is told when that has been written.
void RunStudiesOfFit(const Options& options, const Job* job, RunEnd& end) {
    try {
        RunStudies(options, job, end);
    } catch (const RuntimeError& error) {
        end.StudyFailure = error.Text;
    }
}

RunEnd RunJobOrFit(const Options& options, const JobRow* row) {
    const std::string bytes = LoadFile(options.JobPath);
    if (!NamesSavedFit(options.JobPath)) {
        const Job job = ParseJob(bytes, options.JobPath, row);
        CheckGraphSets(options, static_cast<long>(job.Sets.size()), job.Model);
        CheckInputsStay(options, job);
        CheckStudies(options, &job);
        WatchInterrupt();
        RunEnd end = RunJob(job);
        RunStudiesOfFit(options, &job, end);
        return end;
    }
    CheckSavedFitStays(options);
    CheckStudies(options, nullptr);
    WatchInterrupt();
    RestoreSavedFit(bytes, options.JobPath);
    CheckGraphSets(options, Work.NumSets, Work.Model);
    RunEnd end = RunSavedFit(options.JobPath, options.Refit, options.Restarts);
    RunStudiesOfFit(options, nullptr, end);
    return end;
}

// So do pictures of profiles.
void CheckProfileFormats(const Options& options) {
    for (const ProfileOption& profile : options.Profiles) {
        GraphOption graph;
        graph.Kind = "profile";
        graph.Path = profile.Path;
        CheckGraphFormat(graph);
    }
}

// Pages need the module that makes PDF files: seen before a fit, not after it.
void CheckReportFormat(const Options& options) {
    OpenToolkitPicture = LoadedPicture;
    if (!WantsReportPdf(options)) return;
    try {
        LoadedPicture("pdf", {"", 1, 1});
    } catch (const RuntimeError& error) {
        FailFile("--report " + options.Report, error.Text);
    }
}

// Graph files alone: there is no fit that could fail.
RunEnd NothingToRun() {
    Work = FreshWorkspace();
    RunEnd end;
    end.Complete = true;
    return end;
}

// One run: a job, filled by a row where there is one, or a saved fit.
int RunOptions(const Options& options, const JobRow* row, RunEnd& end) {
    CheckOutputPlaces(options);
    CheckGraphFilesStay(options);
    for (const GraphOption& graph : options.Graphs)
        CheckGraphFormat(graph);
    CheckProfileFormats(options);
    CheckReportFormat(options);
    end = options.JobPath.empty() ? NothingToRun() : RunJobOrFit(options, row);
    WriteOutputs(options, end);
    return end.Complete ? ExitDone : ExitNoFit;
}

// The exit status: the model may fail in arithmetic, as a fit may.
int RunSimulation(const Options& options) {
    CheckSimulationFolder(options.Simulate);
    const std::string text = LoadFile(options.JobPath);
    const std::vector<SimulatedFile> files = SimulateJob(ParseJob(text, options.JobPath), text);
    if (files.empty()) return ExitNoFit;
    WriteSimulation(options.Simulate, files);
    return ExitDone;
}

// The exit status: a design may have no errors, and Ctrl-C may come before the last.
int RunPlan(const Options& options) {
    CheckOutputPlaces(options);
    const Job job = ParseJob(LoadFile(options.JobPath), options.JobPath);
    CheckInputsStay(options, job);
    WatchInterrupt();
    const std::string csv = PlanJob(job);
    if (csv.empty()) return ExitNoFit;
    WriteOutput(options.Plan, csv);
    return ExitDone;
}

// The work of hours goes to standard output where its file does not take it.
void WriteSummary(const std::string& path, const std::string& text) {
    try {
        WriteOutput(path, text);
    } catch (const RuntimeError& error) {
        if (path == "-") throw;
        WriteOutput("-", text);
        RaiseError(error.Text + "; the summary has gone to standard output");
    }
}

// The summary's place is looked at before the first fit.
int RunTableOptions(const Options& options) {
    Options summary;
    summary.Summary = options.Summary;
    CheckOutputPlaces(summary);
    int status = ExitDone;
    const std::string text = RunTable(
        options,
        [](const Options& ofRow, const JobRow& row, RunEnd& end) { return RunOptions(ofRow, &row, end); },
        status);
    WriteSummary(options.Summary, text);
    return status;
}

int RunMerge(const Options& options) {
    WriteOutput(options.Merge, MergedSummary(options.Parts));
    return ExitDone;
}

int RunSort(const Options& options) {
    const SortOutputs outputs = RunSorting(options);
    for (const auto& [path, bytes] : outputs.Graphs)
        WriteOutput(path, bytes);
    WriteOutput("-", outputs.Csv);
    return ExitDone;
}

int RunCalculators(const Options& options) {
    WriteOutput("-", Calculations(options.Calculate));
    return ExitDone;
}

int RunOnce(const Options& options) {
    RunEnd end;
    return RunOptions(options, nullptr, end);
}

// The run; when memory does not suffice, the job is what has to become smaller.
int RunNamed(const Options& options) {
    try {
        if (!options.Merge.empty()) return RunMerge(options);
        if (WantsCalculation(options.Calculate)) return RunCalculators(options);
        if (!options.Sort.Place.empty()) return RunSort(options);
        if (!options.Table.empty()) return RunTableOptions(options);
        if (!options.Plan.empty()) return RunPlan(options);
        return options.Simulate.empty() ? RunOnce(options) : RunSimulation(options);
    } catch (const std::bad_alloc&) {
        FailFile(options.Sort.Place.empty() ? options.JobPath : options.Sort.Place, ErrorText::OutOfMemory);
    }
}

int RunArguments(const std::vector<std::string>& arguments) {
    const Options options = ParseOptions(arguments);
    Console.Quiet = options.Quiet;
    Console.Threads = options.Threads;
    if (!options.Help && !options.Version) return RunNamed(options);
    WriteOutput("-", options.Help ? HelpText() : VersionText());
    return ExitDone;
}

} // namespace

int RunQuillonFit(const std::vector<std::string>& arguments) {
    InstallBatchPlatform();
    std::string line;
    try {
        return RunArguments(arguments);
    } catch (const RuntimeError& error) {
        line = error.Text;
    } catch (const std::bad_alloc&) {
        line = "quillon-fit: out of memory";
    } catch (const std::exception& error) {
        line = std::string("quillon-fit: ") + error.what();
    }
    WriteFailure(line);
    return ExitBad;
}

} // namespace Quillon
