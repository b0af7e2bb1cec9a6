#include "batch/options/Options.h"

#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "batch/job/SavedFit.h"
#include "batch/options/OutputPlaces.h"
#include "chart/files/GraphFile.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "reporting/MethodsTable.h"
#include "reporting/PaperReport.h"
#include "studies/methods/OtherMinima.h"
#include "studies/methods/Resampling.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <iterator>

namespace Quillon {

namespace {

[[noreturn]] void FailOptions(const std::string& reason) {
    RaiseError("quillon-fit: " + OneLine(reason) + " (quillon-fit --help tells more)");
}

// An option that names a file, and where the file goes.
struct FileOption {
    const char* Name;
    std::string Options::*Target;
};

constexpr FileOption FileOptions[] = {{"--report", &Options::Report},
                                      {"--results", &Options::Results},
                                      {"--points", &Options::Points},
                                      {"--save", &Options::Save},
                                      {"--integrate", &Options::Integrate},
                                      {"--compare", &Options::Compare},
                                      {"--methods", &Options::Methods},
                                      {"--write-job", &Options::WriteJob},
                                      {"--summary", &Options::Summary},
                                      {"--draws", &Options::Draws},
                                      {"--correlations", &Options::Correlations},
                                      {"--plan", &Options::Plan}};

const FileOption* FindFileOption(const std::string& name) {
    for (const FileOption& option : FileOptions)
        if (name == option.Name) return &option;
    return nullptr;
}

struct Switch {
    const char* Name;
    bool Options::*Target;
};

constexpr Switch Switches[] = {{"--quiet", &Options::Quiet},
                               {"--refit", &Options::Refit},
                               {"--average", &Options::Average},
                               {"--help", &Options::Help},
                               {"--version", &Options::Version}};

bool TakeSwitch(Options& options, const std::string& argument) {
    for (const Switch& each : Switches)
        if (argument == each.Name) return options.*each.Target = true;
    return false;
}

void TakeFile(Options& options, const FileOption& option, const std::string& file) {
    if (file.empty()) FailOptions(std::string("no file behind ") + option.Name);
    std::string& target = options.*option.Target;
    if (!target.empty()) FailOptions(std::string(option.Name) + " stands twice");
    target = file;
}

long ReadWindow(const std::string& text) {
    long points = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, points);
    if (failure != std::errc{} || stop != end || points < FewestMassPoints || points > 32767)
        RaiseError("--mass-points needs a number from " + std::to_string(FewestMassPoints) + " on, not " +
                   Quoted(text));
    return points;
}

long ReadRestarts(const std::string& text) {
    long restarts = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, restarts);
    if (failure != std::errc{} || stop != end || restarts < 1 || restarts > LargestRestarts)
        RaiseError("--restarts needs a number from 1 to " + std::to_string(LargestRestarts) + ", not " +
                   Quoted(text));
    return restarts;
}

constexpr int MostThreads = 1024;

int ReadThreads(const std::string& text) {
    int threads = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, threads);
    if (failure != std::errc{} || stop != end || threads < 1 || threads > MostThreads)
        RaiseError("--threads needs a number from 1 to " + std::to_string(MostThreads) + ", not " +
                   Quoted(text));
    return threads;
}

bool TakeRow(std::string_view& text, long& row) {
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, row);
    text = std::string_view(stop, static_cast<std::size_t>(end - stop));
    return failure == std::errc{} && row >= 1;
}

// "12-40", or "12" alone.
RowRange ReadRows(const std::string& text) {
    std::string_view rest = text;
    RowRange rows;
    bool good = TakeRow(rest, rows.First);
    rows.Last = rows.First;
    if (good && rest.starts_with('-')) {
        rest.remove_prefix(1);
        good = TakeRow(rest, rows.Last);
    }
    if (!good || !rest.empty() || rows.Last < rows.First)
        RaiseError("--rows needs rows as 1-100, not " + Quoted(text));
    return rows;
}

void TakeOnce(std::string& target, const char* option, const std::string& value) {
    if (value.empty()) RaiseError(std::string("no file behind ") + option);
    if (!target.empty()) RaiseError(std::string(option) + " stands twice");
    target = value;
}

void TakeValue(std::string& target, const char* option, const char* what, const std::string& value) {
    if (value.empty()) RaiseError(std::string(option) + " needs " + what);
    if (!target.empty()) RaiseError(std::string(option) + " stands twice");
    target = value;
}

long ReadResample(const std::string& text) {
    long count = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, count);
    if (failure != std::errc{} || stop != end || count < 1 || count > LargestResampleCount)
        RaiseError("--resample needs a number from 1 to " + std::to_string(LargestResampleCount) + ", not " +
                   Quoted(text));
    return count;
}

// The place of text among two words.
bool IsSecond(const char* option, const std::string& text, const char* first, const char* second) {
    if (text == first || text == second) return text == second;
    RaiseError(std::string(option) + " is " + first + " or " + second + ", not " + Quoted(text));
}

// An option with a value that is no file.
struct ValueOption {
    const char* Name;
    void (*Take)(Options& options, const std::string& value);
};

constexpr ValueOption ValueOptions[] = {
    {"--graph", [](Options& o, const std::string& v) { o.Graphs.push_back(ParseGraphOption(v)); }},
    {"--mass-points", [](Options& o, const std::string& v) { o.Mass.Points = ReadWindow(v); }},
    {"--mass-of",
     [](Options& o, const std::string& v) { o.Mass.OfFit = IsSecond("--mass-of", v, "data", "fit"); }},
    {"--mass-species",
     [](Options& o, const std::string& v) { o.Mass.SpeciesB = IsSecond("--mass-species", v, "A", "B"); }},
    {"--figure-size", [](Options& o, const std::string& v) { ReadFigureSize(v, o.Figure); }},
    {"--figure-panels",
     [](Options& o, const std::string& v) {
         o.Figure.PanelPerSet = IsSecond("--figure-panels", v, "all", "sets");
     }},
    {"--colors",
     [](Options& o, const std::string& v) {
         o.Colors = IsSecond("--colors", v, "safe", "classic") ? GraphColors::Classic : GraphColors::Safe;
     }},
    {"--cell", [](Options& o, const std::string& v) { o.Cell = ParseCell(v); }},
    {"--table", [](Options& o, const std::string& v) { TakeOnce(o.Table, "--table", v); }},
    {"--rows", [](Options& o, const std::string& v) { o.Rows = ReadRows(v); }},
    {"--merge", [](Options& o, const std::string& v) { TakeOnce(o.Merge, "--merge", v); }},
    {"--restarts", [](Options& o, const std::string& v) { o.Restarts = ReadRestarts(v); }},
    {"--threads", [](Options& o, const std::string& v) { o.Threads = ReadThreads(v); }},
    {"--paper",
     [](Options& o, const std::string& v) {
         NamedPaper(v); // a name that is none is told now
         o.Paper = v;
     }},
    {"--report-graph",
     [](Options& o, const std::string& v) {
         o.ReportGraph = IsSecond("--report-graph", v, "residuals", "overlay") ? "overlay" : "residuals";
     }},
    {"--sort", [](Options& o, const std::string& v) { TakeOnce(o.Sort.Place, "--sort", v); }},
    {"--job", [](Options& o, const std::string& v) { TakeOnce(o.Sort.Job, "--job", v); }},
    {"--cells", [](Options& o, const std::string& v) { o.Sort.Choice.Cells = ReadCells(v); }},
    {"--wavelengths",
     [](Options& o, const std::string& v) {
         o.Sort.Choice.Wavelengths = ReadNumberList("--wavelengths", v);
     }},
    {"--speeds",
     [](Options& o, const std::string& v) { o.Sort.Choice.Speeds = ReadNumberList("--speeds", v); }},
    {"--ratios", [](Options& o, const std::string& v) { o.Sort.Choice.Ratios = ReadRatios(v); }},
    {"--vbar",
     [](Options& o, const std::string& v) { TakeValue(o.Calculate.Chain, "--vbar", "a sequence or file", v); }},
    {"--buffer",
     [](Options& o, const std::string& v) {
         TakeValue(o.Calculate.Buffer, "--buffer", "water or solutes as NaCl=0.15", v);
     }},
    {"--equilibrium-time",
     [](Options& o, const std::string& v) {
         TakeValue(o.Calculate.Approach, "--equilibrium-time", "mass=50,speed=15000,inner=6.9,outer=7.2", v);
     }},
    {"--temperature", [](Options& o, const std::string& v) { o.Calculate.Celsius = ReadCelsius(v); }},
    {"--disulfides", [](Options& o, const std::string& v) { o.Calculate.Disulfides = ReadDisulfides(v); }},
    {"--profile", [](Options& o, const std::string& v) { o.Profiles.push_back(ParseProfileOption(v)); }},
    {"--resample", [](Options& o, const std::string& v) { o.Resample = ReadResample(v); }},
    {"--simulate", [](Options& o, const std::string& v) {
         if (v.empty()) RaiseError("no folder behind --simulate");
         if (!o.Simulate.empty()) RaiseError("--simulate stands twice");
         o.Simulate = v;
     }}};

const ValueOption* FindValueOption(const std::string& name) {
    for (const ValueOption& option : ValueOptions)
        if (name == option.Name) return &option;
    return nullptr;
}

// Takes the option at place, and what it names behind it; place moves on to the last argument taken.
void TakeOption(Options& options, const std::vector<std::string>& arguments, std::size_t& place) {
    const std::string& argument = arguments[place];
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const FileOption* option = FindFileOption(name);
    const ValueOption* other = FindValueOption(name);
    if (!option && !other) FailOptions("unknown option " + Quoted(argument));
    std::string value;
    if (equals != std::string::npos)
        value = argument.substr(equals + 1);
    else if (place + 1 < arguments.size() && !arguments[place + 1].starts_with("--"))
        value = arguments[++place];
    if (option) return TakeFile(options, *option, value);
    options.Given.push_back(name);
    try {
        other->Take(options, value);
    } catch (const RuntimeError& error) {
        FailOptions(error.Text);
    }
}

void TakeJob(Options& options, const std::string& argument) {
    if (!options.Merge.empty()) return options.Parts.push_back(argument);
    if (!options.JobPath.empty()) FailOptions("a second job file " + Quoted(argument));
    if (argument.empty()) FailOptions("the job file has no name");
    if (NamesGraphFile(argument))
        FailOptions(Quoted(argument) + " is a graph file, which --graph " + argument + "=FILE draws");
    options.JobPath = argument;
}

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

} // namespace

bool WantsReportHtml(const Options& options) {
    return EndingOf(options.Report) == "html";
}

bool WantsReportPdf(const Options& options) {
    return EndingOf(options.Report) == "pdf";
}

std::vector<NamedOutput> OutputsOf(const Options& options) {
    std::vector<NamedOutput> outputs;
    for (const FileOption& option : FileOptions)
        if (const std::string& path = options.*option.Target; !path.empty())
            outputs.push_back({option.Name, path});
    for (const ProfileOption& profile : options.Profiles)
        outputs.push_back({"--profile " + ProfileName(profile), profile.Path});
    for (const GraphOption& graph : options.Graphs)
        outputs.push_back({"--graph " + GraphName(graph), graph.Path});
    return outputs;
}

void ForEachOutput(Options& options, const std::function<void(std::string&)>& change) {
    for (const FileOption& option : FileOptions)
        if (std::string& path = options.*option.Target; !path.empty()) change(path);
    for (ProfileOption& profile : options.Profiles)
        change(profile.Path);
    for (GraphOption& graph : options.Graphs)
        change(graph.Path);
}

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    bool named = true; // until "--"
    for (std::size_t place = 0; place < arguments.size(); ++place) {
        const std::string& argument = arguments[place];
        if (named && argument == "--")
            named = false;
        else if (!named || !argument.starts_with('-') || argument == "-")
            TakeJob(options, argument);
        else if (!TakeSwitch(options, argument))
            TakeOption(options, arguments, place);
    }
    if (options.Help || options.Version) return options;
    if (!options.Merge.empty()) {
        CheckMerge(options);
        return options;
    }
    if (WantsNumbers(options)) {
        CheckCalculation(options);
        return options;
    }
    if (WantsSorting(options)) {
        options.Sort.Choice.Average = options.Average;
        CheckSort(options);
        return options;
    }
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
    for (GraphOption& graph : options.Graphs) {
        graph.Mass = options.Mass;
        graph.Figure = options.Figure;
        graph.Colors = options.Colors;
    }
    if (!options.Table.empty() && options.Summary.empty()) options.Summary = "-";
    if (OutputsOf(options).empty() && options.Simulate.empty()) options.Report = "-";
    return options;
}

} // namespace Quillon
