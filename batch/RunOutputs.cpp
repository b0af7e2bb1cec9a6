#include "batch/RunOutputs.h"

#include "batch/CompareTable.h"
#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "batch/outputs/PointsCsv.h"
#include "batch/outputs/ProfileOutputs.h"
#include "batch/outputs/ResamplingOutputs.h"
#include "batch/outputs/ResultsJson.h"
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

#include <algorithm>
#include <filesystem>
#include <functional>

namespace Quillon {

namespace {

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

// An output that is wanted, and what makes its bytes.
struct Output {
    std::string Option;
    std::string Path; // "-" standard output
    std::function<std::string()> Bytes;
};

std::vector<Output> OutputsOfFit(const Options& options, const RunEnd& end) {
    const std::vector<Output> all = {
        {"--save", options.Save, [] { return FitFileBytes(); }},
        {"--report", options.Report, [&] { return ReportBytes(options, end); }},
        {"--points", options.Points, [] { return PointsCsv(); }},
        {"--integrate", options.Integrate, [&] { return IntegrateCsv(options.Cell); }},
        {"--methods", options.Methods, [&] { return MethodsText(MethodsFormatOf(options.Methods)); }},
        {"--write-job", options.WriteJob, [&] { return JobBytes(options, end); }}};
    std::vector<Output> wanted;
    for (const Output& output : all)
        if (!output.Path.empty()) wanted.push_back(output);
    return wanted;
}

void AddGraphs(std::vector<Output>& outputs, const Options& options, const RunEnd& end) {
    for (const GraphOption& graph : options.Graphs) {
        const std::string name = "--graph " + GraphName(graph);
        if (graph.Kind == HistogramKind) {
            if (end.Studies.Resampled)
                outputs.push_back(
                    {name, graph.Path, [&] { return HistogramBytes(graph, *end.Studies.Resampled); }});
        } else if (end.HasFit || !graph.Source.empty()) {
            outputs.push_back({name, graph.Path, [&] { return GraphBytes(graph); }});
        }
    }
}

// Of one that broke off there is none.
const ProfileStudy* StudyOf(const ProfileOption& profile, const StudyResults& studies) {
    for (const ProfileStudy& study : studies.Profiles)
        if (SlotsOf(study) == profile.Slots) return &study;
    return nullptr;
}

void AddStudies(std::vector<Output>& outputs, const Options& options, const StudyResults& studies) {
    if (studies.Compared)
        outputs.push_back(
            {"--compare", options.Compare, [&] { return CompareTable(*studies.Compared, options.Compare); }});
    for (const ProfileOption& profile : options.Profiles)
        if (const ProfileStudy* study = StudyOf(profile, studies))
            outputs.push_back({"--profile " + ProfileName(profile), profile.Path,
                               [&, study] { return ProfileBytes(*study, profile, options.Colors); }});
    if (studies.Resampled && !options.Draws.empty())
        outputs.push_back({"--draws", options.Draws, [&] { return DrawsCsv(*studies.Resampled); }});
    if (studies.Resampled && !options.Correlations.empty())
        outputs.push_back(
            {"--correlations", options.Correlations, [&] { return CorrelationsCsv(*studies.Resampled); }});
}

std::vector<Output> OutputsOfRun(const Options& options, const RunEnd& end) {
    std::vector<Output> outputs;
    if (end.HasFit) outputs = OutputsOfFit(options, end);
    AddGraphs(outputs, options, end);
    AddStudies(outputs, options, end.Studies);
    if (!options.Results.empty())
        outputs.push_back({"--results", options.Results, [&] {
                               return ResultsJson(end.Message, end.Starts ? &*end.Starts : nullptr, end.Files,
                                                  end.Studies.Resampled ? &*end.Studies.Resampled : nullptr);
                           }});
    return outputs;
}

// The text of an output, or why there is none; graphs name themselves.
std::optional<std::string> Made(const Output& output, std::string& failures) {
    try {
        return output.Bytes();
    } catch (const RuntimeError& error) {
        const bool named = error.Text.starts_with("--");
        failures += (failures.empty() ? "" : "; ") + (named ? "" : output.Option + " " + output.Path + ": ") +
                    error.Text;
        return std::nullopt;
    }
}

void WriteMade(const Output& output, const std::string& bytes, std::string& failures) {
    try {
        WriteOutput(output.Path, bytes);
    } catch (const RuntimeError& error) {
        failures += (failures.empty() ? "" : "; ") + error.Text;
    }
}

} // namespace

void WriteOutput(const std::string& path, const std::string& bytes) {
    try {
        if (path == "-")
            WriteStandardOutput(bytes);
        else
            Host.WriteFile(path, bytes);
    } catch (const RuntimeError& error) {
        RaiseError(OneLine((path == "-" ? "standard output" : path) + ": " + error.Text));
    }
}

void WriteOutputs(const Options& options, const RunEnd& end) {
    if (end.HasFit && !options.Save.empty()) Work.FitFile = options.Save; // the report names it
    std::vector<Output> outputs = OutputsOfRun(options, end);
    std::stable_partition(outputs.begin(), outputs.end(),
                          [](const Output& each) { return each.Path != "-"; });
    std::string failures = end.StudyFailure;
    for (const Output& output : outputs)
        if (const std::optional<std::string> bytes = Made(output, failures))
            WriteMade(output, *bytes, failures);
    if (!failures.empty()) RaiseError(OneLine(failures));
}

} // namespace Quillon
