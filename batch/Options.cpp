#include "batch/Options.h"

#include "batch/OneLine.h"
#include "batch/OutputPlaces.h"
#include "batch/SavedFit.h"
#include "platform/RuntimeError.h"
#include "workspace/records/Workspace.h"

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
                                      {"--save", &Options::Save}};

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

void TakeGraph(Options& options, const std::string& text) {
    try {
        options.Graphs.push_back(ParseGraphOption(text));
    } catch (const RuntimeError& error) {
        FailOptions(error.Text);
    }
}

// Takes the option at place, and what it names behind it; place moves on to the last argument taken.
void TakeOption(Options& options, const std::vector<std::string>& arguments, std::size_t& place) {
    const std::string& argument = arguments[place];
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const FileOption* option = FindFileOption(name);
    if (!option && name != "--graph") FailOptions("unknown option " + Quoted(argument));
    std::string value;
    if (equals != std::string::npos)
        value = argument.substr(equals + 1);
    else if (place + 1 < arguments.size() && !arguments[place + 1].starts_with("--"))
        value = arguments[++place];
    if (option)
        TakeFile(options, *option, value);
    else
        TakeGraph(options, value);
}

void TakeJob(Options& options, const std::string& argument) {
    if (!options.JobPath.empty()) FailOptions("a second job file " + Quoted(argument));
    if (argument.empty()) FailOptions("the job file has no name");
    options.JobPath = argument;
}

void CheckOutputs(const Options& options) {
    const std::vector<NamedOutput> outputs = OutputsOf(options);
    for (const NamedOutput& a : outputs)
        for (const NamedOutput& b : outputs)
            if (&a < &b && IsSameOutput(a.Path, b.Path))
                FailOptions(a.Option + " and " + b.Option + " name the same file");
}

} // namespace

std::vector<NamedOutput> OutputsOf(const Options& options) {
    std::vector<NamedOutput> outputs;
    for (const FileOption& option : FileOptions)
        if (const std::string& path = options.*option.Target; !path.empty())
            outputs.push_back({option.Name, path});
    for (const GraphOption& graph : options.Graphs)
        outputs.push_back({"--graph " + GraphName(graph), graph.Path});
    return outputs;
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
    if (options.JobPath.empty()) FailOptions("no job file is named");
    CheckOutputs(options);
    if (options.Save == "-") FailOptions("--save needs the name of a file");
    if (options.Refit && !NamesSavedFit(options.JobPath)) FailOptions("--refit goes with a saved fit");
    if (OutputsOf(options).empty()) options.Report = "-";
    return options;
}

std::string HelpText() {
    return "usage: quillon-fit JOB [options]\n"
           "\n"
           "Runs one global fit of sedimentation equilibrium scans from a job file, or\n"
           "restores a saved fit (.quil, .fit).\n"
           "\n"
           "  --report FILE   the text report; - is standard output, which is also\n"
           "                  where it goes when no output is named\n"
           "  --results FILE  the results as JSON\n"
           "  --points FILE   the points of the fit as CSV\n"
           "  --save FILE     a fit save file\n"
           "  --graph KIND=FILE\n"
           "                  a graph, as often as wanted. KIND is data, function,\n"
           "                  overlay, residuals (against x), residuals-y (against the\n"
           "                  fitted value) or residuals-r (against radius); KIND:2\n"
           "                  shows data set 2 alone. The ending of FILE chooses: .svg,\n"
           "                  .png, .pdf, .emf, or .dat for the numbers\n"
           "  --refit         fit a restored analysis again\n"
           "  --quiet         failures alone on standard error\n"
           "  --help          this text\n"
           "  --version       the program's version\n"
           "\n"
           "Exit status: 0 the fit converged and all was written; 1 the command line, the\n"
           "job or a file is bad; 2 the fit did not converge (of the outputs --results\n"
           "alone is written then).\n";
}

std::string VersionText() {
    const Workspace fresh;
    return "quillon-fit, " + fresh.ProgramName + " " + fresh.ProgramVersion + "\n";
}

} // namespace Quillon
