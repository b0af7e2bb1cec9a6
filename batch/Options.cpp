#include "batch/Options.h"

#include "batch/OneLine.h"
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

// Takes the option at place, and its file behind it; place moves on to the last argument taken.
void TakeFileOption(Options& options, const std::vector<std::string>& arguments, std::size_t& place) {
    const std::string& argument = arguments[place];
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const FileOption* option = FindFileOption(name);
    if (!option) FailOptions("unknown option " + Quoted(argument));
    std::string file;
    if (equals != std::string::npos)
        file = argument.substr(equals + 1);
    else if (place + 1 < arguments.size() && !arguments[place + 1].starts_with("--"))
        file = arguments[++place];
    if (file.empty()) FailOptions("no file behind " + name);
    std::string& target = options.*option->Target;
    if (!target.empty()) FailOptions(name + " stands twice");
    target = file;
}

void TakeJob(Options& options, const std::string& argument) {
    if (!options.JobPath.empty()) FailOptions("a second job file " + Quoted(argument));
    if (argument.empty()) FailOptions("the job file has no name");
    options.JobPath = argument;
}

void CheckOutputs(const Options& options) {
    for (const FileOption& a : FileOptions)
        for (const FileOption& b : FileOptions)
            if (&a < &b && !(options.*a.Target).empty() && options.*a.Target == options.*b.Target)
                FailOptions(std::string(a.Name) + " and " + b.Name + " name the same file");
}

} // namespace

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
            TakeFileOption(options, arguments, place);
    }
    if (options.Help || options.Version) return options;
    if (options.JobPath.empty()) FailOptions("no job file is named");
    CheckOutputs(options);
    if (options.Save == "-") FailOptions("--save needs the name of a file");
    if (options.Refit && !NamesSavedFit(options.JobPath)) FailOptions("--refit goes with a saved fit");
    if (options.Report.empty() && options.Results.empty() && options.Points.empty() && options.Save.empty())
        options.Report = "-";
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
           "  --refit         fit a restored analysis again\n"
           "  --quiet         no progress on standard error\n"
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
