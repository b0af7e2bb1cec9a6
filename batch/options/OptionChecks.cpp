#include "batch/options/OptionChecks.h"

#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "batch/job/SavedFit.h"
#include "batch/options/OutputPlaces.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "reporting/MethodsTable.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

namespace Quillon {

namespace {

// Nothing but pictures of graph files is wanted.
bool NeedsNoFit(const Options& options) {
    const bool ofFit = !options.Report.empty() || !options.Results.empty() || !options.Points.empty() ||
                       !options.Save.empty() || !options.Integrate.empty() || options.Refit ||
                       !options.Compare.empty() || !options.Methods.empty() || !options.WriteJob.empty() ||
                       !options.Table.empty() || options.Resample > 0 || !options.Profiles.empty();
    return !ofFit && !options.Graphs.empty() &&
           std::all_of(options.Graphs.begin(), options.Graphs.end(),
                       [](const GraphOption& graph) { return !graph.Source.empty(); });
}

void CheckOutputs(const Options& options) {
    const std::vector<NamedOutput> outputs = OutputsOf(options);
    for (const NamedOutput& a : outputs)
        for (const NamedOutput& b : outputs)
            if (&a < &b && IsSameOutput(a.Path, b.Path))
                FailOptions(a.Option + " and " + b.Option + " name the same file");
}

void CheckSimulation(const Options& options) {
    if (options.Simulate.empty()) return;
    if (NamesSavedFit(options.JobPath)) FailOptions("--simulate goes with a job, not with a saved fit");
    if (!OutputsOf(options).empty())
        FailOptions("--simulate fits nothing: " + OutputsOf(options).front().Option + " does not go with it");
}

void CheckPlan(const Options& options) {
    if (options.Plan.empty()) return;
    if (NamesSavedFit(options.JobPath)) FailOptions("--plan goes with a job, not with a saved fit");
    for (const NamedOutput& output : OutputsOf(options))
        if (output.Option != "--plan")
            FailOptions("--plan fits nothing: " + output.Option + " does not go with it");
    if (!options.Simulate.empty() || !options.Table.empty() || options.Resample > 0)
        FailOptions("--plan fits nothing: what a fit needs does not go with it");
}

void CheckTable(const Options& options) {
    if (options.Table.empty()) return;
    if (NamesSavedFit(options.JobPath)) FailOptions("--table goes with a job, not with a saved fit");
    if (!options.Simulate.empty()) FailOptions("--table does not go with --simulate");
}

void CheckMerge(const Options& options) {
    if (options.Merge == "-") FailOptions("--merge needs the name of a file");
    if (!options.JobPath.empty() || !OutputsOf(options).empty() || options.Given.size() > 1)
        FailOptions("--merge goes with nothing but parts of a summary behind it");
    if (options.Parts.empty()) FailOptions("--merge " + options.Merge + " names no parts");
    for (const std::string& part : options.Parts)
        if (IsSameOutput(options.Merge, part)) FailOptions("--merge would write over its part " + part);
}

// A name that is no table's is told now.
void CheckMethods(const Options& options) {
    if (options.Methods.empty()) return;
    try {
        MethodsFormatOf(options.Methods);
    } catch (const RuntimeError& error) {
        FailOptions("--methods " + options.Methods + ": " + error.Text);
    }
}

bool HasGraph(const Options& options, std::initializer_list<const char*> kinds) {
    for (const GraphOption& graph : options.Graphs)
        if (std::find(kinds.begin(), kinds.end(), graph.Kind) != kinds.end()) return true;
    return false;
}

bool WantsMasses(const Options& options) {
    return HasGraph(options, {"mass-c", "mass-r"});
}

bool WantsMassesByConcentration(const Options& options) {
    return HasGraph(options, {"mass-c"});
}

bool WantsFigure(const Options& options) {
    return HasGraph(options, {FigureKind});
}

// A file that colours show in: the numbers of a graph have none.
bool HasColors(const std::string& path) {
    constexpr const char* pictures[] = {"svg", "emf", "png", "pdf", "grf"};
    return std::find(std::begin(pictures), std::end(pictures), EndingOf(path)) != std::end(pictures);
}

bool WantsPicture(const Options& options) {
    const auto shows = [](const auto& output) { return HasColors(output.Path); };
    return std::any_of(options.Graphs.begin(), options.Graphs.end(), shows) ||
           std::any_of(options.Profiles.begin(), options.Profiles.end(), shows) ||
           !options.ReportGraph.empty() || WantsReportHtml(options);
}

bool WantsResampling(const Options& options) {
    return options.Resample > 0;
}

// A text report, named or not, or pages.
bool WantsReport(const Options& options) {
    if (WantsReportHtml(options)) return false; // it has no paper
    return !options.Report.empty() || (OutputsOf(options).empty() && options.Simulate.empty());
}

bool WantsTable(const Options& options) {
    return !options.Table.empty();
}

bool WantsIntegration(const Options& options) {
    return !options.Integrate.empty();
}

bool WantsSorting(const Options& options) {
    return !options.Sort.Place.empty();
}

bool WantsSortedJob(const Options& options) {
    return WantsSorting(options) && !options.Sort.Job.empty();
}

bool WantsNumbers(const Options& options) {
    return WantsCalculation(options.Calculate);
}

bool WantsChain(const Options& options) {
    return !options.Calculate.Chain.empty();
}

bool WantsRefit(const Options& options) {
    return options.Refit;
}

// An option that shapes an output, and the output that has to stand beside it.
struct Companion {
    const char* Name;
    bool (*HasOutput)(const Options& options);
    const char* Output;
};

constexpr Companion Companions[] = {
    {"--paper", WantsReport, "--report FILE"},
    {"--report-graph", WantsReportPdf, "--report FILE.pdf"},
    {"--mass-points", WantsMasses, "--graph mass-c=FILE or mass-r=FILE"},
    {"--mass-of", WantsMasses, "--graph mass-c=FILE or mass-r=FILE"},
    {"--mass-species", WantsMassesByConcentration, "--graph mass-c=FILE"},
    {"--figure-size", WantsFigure, "--graph figure=FILE"},
    {"--figure-panels", WantsFigure, "--graph figure=FILE"},
    {"--colors", WantsPicture, "a picture: --graph KIND=FILE"},
    {"--cell", WantsIntegration, "--integrate FILE"},
    {"--rows", WantsTable, "--table FILE"},
    {"--job", WantsSorting, "--sort FOLDER"},
    {"--cells", WantsSorting, "--sort FOLDER"},
    {"--wavelengths", WantsSorting, "--sort FOLDER"},
    {"--speeds", WantsSorting, "--sort FOLDER"},
    {"--ratios", WantsSortedJob, "--sort FOLDER --job FILE"},
    {"--temperature", WantsNumbers, "--vbar, --buffer or --equilibrium-time"},
    {"--disulfides", WantsChain, "--vbar SEQ"},
    {"--restarts", WantsRefit, "--refit; a job has restarts in [fit]"},
};

// What would shape nothing is a slip of the hand: the output was forgotten, or misspelt as another one.
void CheckCompanions(const Options& options) {
    for (const Companion& each : Companions) {
        const auto& given = options.Given;
        if (std::find(given.begin(), given.end(), each.Name) != given.end() && !each.HasOutput(options))
            FailOptions(std::string(each.Name) + " goes with " + each.Output);
    }
    if (options.Average && !WantsSortedJob(options))
        FailOptions("--average goes with --sort FOLDER --job FILE");
}

// Beside the run stand its own options alone, and a job with the radii that scans are compared over.
void CheckSort(const Options& options) {
    for (const NamedOutput& output : OutputsOf(options))
        if (!output.Option.starts_with("--graph approach"))
            FailOptions("--sort fits nothing: " + output.Option + " does not go with it");
    if (!options.Simulate.empty() || !options.Table.empty() || options.Resample > 0 || options.Refit)
        FailOptions("--sort fits nothing: what a fit needs does not go with it");
    if (NamesSavedFit(options.JobPath)) FailOptions("--sort goes with a job, not with a saved fit");
    if (options.Sort.Job == "-") FailOptions("--job needs the name of a file");
    if (!options.Sort.Job.empty() && !options.JobPath.empty() &&
        IsSameOutput(options.Sort.Job, options.JobPath))
        FailOptions("--job would write over the job beside --sort");
    for (const NamedOutput& output : OutputsOf(options))
        if (!options.Sort.Job.empty() && IsSameOutput(options.Sort.Job, output.Path))
            FailOptions("--job and " + output.Option + " name the same file");
    CheckOutputs(options);
    CheckCompanions(options);
}

// Numbers for an experiment that has not been made.
void CheckCalculation(const Options& options) {
    if (!options.JobPath.empty() || !OutputsOf(options).empty() || !options.Simulate.empty() ||
        !options.Table.empty() || options.Resample > 0 || options.Refit || WantsSorting(options))
        FailOptions(
            "--vbar, --buffer and --equilibrium-time fit nothing: no job and no output goes with them");
    CheckCompanions(options);
}

void CheckStudyFiles(const Options& options) {
    if (HasGraph(options, {ApproachKind})) FailOptions("--graph approach goes with --sort FOLDER");
    const std::string ending = EndingOf(options.Compare);
    if (!options.Compare.empty() && options.Compare != "-" && ending != "csv" && ending != "json")
        FailOptions("--compare writes .csv or .json, not " + Quoted(options.Compare));
    if (!options.Draws.empty() && !WantsResampling(options)) FailOptions("--draws goes with --resample");
    if (!options.Correlations.empty() && !WantsResampling(options))
        FailOptions("--correlations goes with --resample");
    if (HasGraph(options, {HistogramKind}) && !WantsResampling(options))
        FailOptions("--graph histogram goes with --resample");
    if (options.Resample > 0 && !options.Simulate.empty())
        FailOptions("--simulate fits nothing: --resample does not go with it");
}

// A run that fits, or draws graph files.
void CheckRun(const Options& options) {
    if (options.JobPath.empty() && !NeedsNoFit(options)) FailOptions("no job file is named");
    CheckOutputs(options);
    if (options.Save == "-") FailOptions("--save needs the name of a file");
    if (options.Refit && !NamesSavedFit(options.JobPath)) FailOptions("--refit goes with a saved fit");
    CheckSimulation(options);
    CheckPlan(options);
    CheckStudyFiles(options);
    CheckTable(options);
    CheckMethods(options);
    if (!options.Summary.empty() && options.Table.empty()) FailOptions("--summary goes with --table FILE");
    CheckCompanions(options);
}

} // namespace

void FailOptions(const std::string& reason) {
    RaiseError("quillon-fit: " + OneLine(reason) + " (quillon-fit --help tells more)");
}

void CheckOptions(const Options& options) {
    if (!options.Merge.empty()) return CheckMerge(options);
    if (WantsNumbers(options)) return CheckCalculation(options);
    if (WantsSorting(options)) return CheckSort(options);
    CheckRun(options);
}

} // namespace Quillon
