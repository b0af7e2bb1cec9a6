#include "batch/options/Options.h"

#include "batch/console/OneLine.h"
#include "batch/graphs/Graphs.h"
#include "batch/job/SavedFit.h"
#include "batch/options/OptionChecks.h"
#include "batch/options/OptionValues.h"
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

constexpr long MostThreads = 1024;

// An option with a value that is no file.
struct ValueOption {
    const char* Name;
    void (*Take)(Options& options, const std::string& value);
    bool Often = false; // may stand as often as wanted
};

constexpr ValueOption ValueOptions[] = {
    {"--graph", [](Options& o, const std::string& v) { o.Graphs.push_back(ParseGraphOption(v)); }, true},
    {"--mass-points", [](Options& o, const std::string& v) { o.Mass.Points = ReadCountFrom("--mass-points", v, FewestMassPoints); }},
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
    {"--table", [](Options& o, const std::string& v) { TakeFileName(o.Table, "--table", v); }},
    {"--rows", [](Options& o, const std::string& v) { o.Rows = ReadRows(v); }},
    {"--merge", [](Options& o, const std::string& v) { TakeFileName(o.Merge, "--merge", v); }},
    {"--restarts", [](Options& o, const std::string& v) { o.Restarts = ReadCount("--restarts", v, 1, LargestRestarts); }},
    {"--threads", [](Options& o, const std::string& v) { o.Threads = static_cast<int>(ReadCount("--threads", v, 1, MostThreads)); }},
    {"--paper",
     [](Options& o, const std::string& v) {
         NamedPaper(v); // a name that is none is told now
         o.Paper = v;
     }},
    {"--report-graph",
     [](Options& o, const std::string& v) {
         o.ReportGraph = IsSecond("--report-graph", v, "residuals", "overlay") ? "overlay" : "residuals";
     }},
    {"--sort", [](Options& o, const std::string& v) { TakeFileName(o.Sort.Place, "--sort", v); }},
    {"--job", [](Options& o, const std::string& v) { TakeFileName(o.Sort.Job, "--job", v); }},
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
    {"--profile", [](Options& o, const std::string& v) { o.Profiles.push_back(ParseProfileOption(v)); }, true},
    {"--resample", [](Options& o, const std::string& v) { o.Resample = ReadCount("--resample", v, 1, LargestResampleCount); }},
    {"--simulate", [](Options& o, const std::string& v) {
         if (v.empty()) RaiseError("no folder behind --simulate");
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
    const auto& given = options.Given;
    if (!other->Often && std::find(given.begin(), given.end(), name) != given.end())
        FailOptions(name + " stands twice");
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
    CheckOptions(options);
    if (!options.Merge.empty() || WantsCalculation(options.Calculate)) return options;
    options.Sort.Choice.Average = options.Average;
    if (!options.Sort.Place.empty()) return options;
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
