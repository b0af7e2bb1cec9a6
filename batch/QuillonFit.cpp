#include "batch/QuillonFit.h"

#include "batch/Calculate.h"
#include "batch/CompareTable.h"
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
#include "batch/outputs/PointsCsv.h"
#include "batch/outputs/ProfileOutputs.h"
#include "batch/outputs/ResamplingOutputs.h"
#include "batch/outputs/ResultsJson.h"
#include "batch/table/TableRun.h"
#include "chart/files/Exchange.h"
#include "commands/export/AnalysisJob.h"
#include "commands/export/HtmlReport.h"
#include "commands/export/PrintedReport.h"
#include "commands/studies/StudyGraphs.h"
#include "files/WriteWhole.h"
#include "persistence/FitFile.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "reporting/MethodsTable.h"
#include "reporting/PaperReport.h"
#include "reporting/Report.h"
#include "studies/methods/StudyLines.h"
#include "workspace/records/Workspace.h"

#include <exception>
#include <filesystem>
#include <new>

namespace Quillon {

namespace {

// An output, complete in memory before the first one is written.
struct Output {
    std::string Path; // "-" standard output
    std::string Bytes;
};

[[noreturn]] void FailFile(const std::string& path, const std::string& reason) {
    RaiseError(OneLine(path + ": " + reason));
}

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

RunEnd RunJobOrFit(const Options& options, const JobRow* row) {
    const std::string bytes = LoadFile(options.JobPath);
    if (!NamesSavedFit(options.JobPath)) {
        const Job job = ParseJob(bytes, options.JobPath, row);
        CheckGraphSets(options, static_cast<long>(job.Sets.size()), job.Model);
        CheckInputsStay(options, job);
        CheckStudies(options, &job);
        WatchInterrupt();
        RunEnd end = RunJob(job);
        RunStudies(options, &job, end);
        return end;
    }
    CheckSavedFitStays(options);
    CheckStudies(options, nullptr);
    WatchInterrupt();
    RunEnd end = RunSavedFit(bytes, options.JobPath, options.Refit, options.Restarts);
    RunStudies(options, nullptr, end);
    CheckGraphSets(options, Work.NumSets, Work.Model);
    return end;
}

void WriteOutput(const Output& output) {
    try {
        if (output.Path == "-")
            WriteStandardOutput(output.Bytes);
        else
            Host.WriteFile(output.Path, output.Bytes);
    } catch (const RuntimeError& error) {
        FailFile(output.Path == "-" ? "standard output" : output.Path, error.Text);
    }
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

// Drawn as --graph figure draws it.
std::string HtmlBytes(GraphColors colors, const RunEnd& end) {
    GraphOption figure;
    figure.Kind = FigureKind;
    figure.Path = "figure.svg";
    figure.Figure.Width = TwoColumns;
    figure.Colors = colors;
    return HtmlReport(GraphBytes(figure), end.Studies);
}

// A profile or a map, by the ending of its file.
std::string ProfileBytes(const ProfileStudy& study, const ProfileOption& option, GraphColors colors) {
    const std::string ending = EndingOf(option.Path);
    const auto bytes = [&](const auto& found, const auto& csv, const auto& json) {
        if (ending == "json") return json(found);
        if (ending == "csv" || option.Path == "-") return csv(found);
        return GraphBytesOf("--profile " + ProfileName(option), option.Path, colors,
                            [&] { return MakeGraphOf(found); });
    };
    if (const ProfileMap* map = std::get_if<ProfileMap>(&study)) return bytes(*map, MapCsv, MapJson);
    return bytes(std::get<Profile>(study), ProfileCsv, ProfileJson);
}

// The slot is that of a fitted parameter; what follows from it may not exist.
std::string HistogramBytes(const GraphOption& graph, const Resampling& resampled) {
    const auto place = PlaceOfQuantity(resampled, graph.Slot, graph.Quantity);
    if (!place)
        RaiseError("--graph " + GraphName(graph) + "=" + graph.Path +
                   ": the parameter has no value in molar "
                   "terms");
    return GraphBytesOf("--graph " + GraphName(graph), graph.Path, graph.Colors,
                        [&] { return MakeGraphOf(resampled, *place); });
}

std::string ReportBytes(const Options& options, const RunEnd& end) {
    if (WantsReportHtml(options)) return HtmlBytes(options.Colors, end);
    PrinterState printer;
    if (!options.Paper.empty()) printer.Page = NamedPaper(options.Paper);
    if (!WantsReportPdf(options)) {
        const ReportPaper paper = options.Paper.empty() ? StandardPaper() : PaperOf(printer.Page);
        return ReportText(paper, StudyLines(end.Studies, paper.Columns));
    }
    PrintedReport report = MakePrintedReport(printer, !options.ReportGraph.empty(), end.Studies);
    report.Overlay = options.ReportGraph == "overlay";
    BeginWithColors(options.Colors); // as the graphs of --graph
    return ReportPdf(report);
}

std::filesystem::path WholePath(const std::string& path) {
    std::error_code failure;
    const std::filesystem::path whole = std::filesystem::absolute(path, failure);
    return (failure ? std::filesystem::path(path) : whole).lexically_normal();
}

// The analysis as a job; files that lie beside it or below keep short names.
std::string JobBytes(const Options& options, const RunEnd& end) {
    const std::string directory =
        options.WriteJob == "-" ? "." : JoinPath(DirectoryOf(options.WriteJob), ".");
    JobSettings settings;
    settings.Start = end.Start;
    settings.Restarts = end.Restarts.Count;
    settings.Seed = end.Restarts.Seed;
    settings.FileName = [from = WholePath(directory).parent_path().string()](const std::string& path) {
        return NameFrom(from, WholePath(path).string());
    };
    return AnalysisAsJob(settings);
}

// What is written: everything of a fit that has results, which say so when it is no minimum; of another one
// the results alone.
std::vector<Output> Render(const Options& options, const RunEnd& end) {
    std::vector<Output> outputs;
    if (end.HasFit && !options.Save.empty()) {
        Work.FitFile = options.Save; // the report names it
        outputs.push_back({options.Save, FitFileBytes()});
    }
    if (end.HasFit && !options.Report.empty()) outputs.push_back({options.Report, ReportBytes(options, end)});
    if (end.HasFit && !options.Points.empty()) outputs.push_back({options.Points, PointsCsv()});
    if (end.HasFit && !options.Integrate.empty())
        outputs.push_back({options.Integrate, IntegrateCsv(options.Cell)});
    if (end.HasFit && !options.Methods.empty())
        outputs.push_back({options.Methods, MethodsText(MethodsFormatOf(options.Methods))});
    if (end.HasFit && !options.WriteJob.empty())
        outputs.push_back({options.WriteJob, JobBytes(options, end)});
    const Resampling* resampled = end.Studies.Resampled ? &*end.Studies.Resampled : nullptr;
    for (const GraphOption& graph : options.Graphs)
        if (graph.Kind == HistogramKind) {
            if (resampled) outputs.push_back({graph.Path, HistogramBytes(graph, *resampled)});
        } else if (end.HasFit || !graph.Source.empty()) {
            outputs.push_back({graph.Path, GraphBytes(graph)});
        }
    if (end.Studies.Compared)
        outputs.push_back({options.Compare, CompareTable(*end.Studies.Compared, options.Compare)});
    for (std::size_t i = 0; i < end.Studies.Profiles.size(); ++i)
        outputs.push_back({options.Profiles[i].Path,
                           ProfileBytes(end.Studies.Profiles[i], options.Profiles[i], options.Colors)});
    if (end.Studies.Resampled && !options.Draws.empty())
        outputs.push_back({options.Draws, DrawsCsv(*end.Studies.Resampled)});
    if (end.Studies.Resampled && !options.Correlations.empty())
        outputs.push_back({options.Correlations, CorrelationsCsv(*end.Studies.Resampled)});
    if (!options.Results.empty())
        outputs.push_back({options.Results, ResultsJson(end.Message, end.Starts ? &*end.Starts : nullptr,
                                                        end.Files, resampled)});
    return outputs;
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
    std::vector<Output> outputs;
    try {
        outputs = Render(options, end);
    } catch (const RuntimeError& error) {
        if (options.JobPath.empty()) throw;
        FailFile(options.JobPath, "the outputs could not be made: " + error.Text);
    }
    for (const Output& output : outputs)
        WriteOutput(output);
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
    WriteOutput({options.Plan, csv});
    return ExitDone;
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
    WriteOutput({options.Summary, text});
    return status;
}

int RunMerge(const Options& options) {
    WriteOutput({options.Merge, MergedSummary(options.Parts)});
    return ExitDone;
}

int RunSort(const Options& options) {
    const SortOutputs outputs = RunSorting(options);
    for (const auto& [path, bytes] : outputs.Graphs)
        WriteOutput({path, bytes});
    WriteOutput({"-", outputs.Csv});
    return ExitDone;
}

int RunCalculators(const Options& options) {
    WriteOutput({"-", Calculations(options.Calculate)});
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
    WriteStandardOutput(options.Help ? HelpText() : VersionText());
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
