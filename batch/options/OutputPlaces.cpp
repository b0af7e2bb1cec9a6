#include "batch/options/OutputPlaces.h"

#include "batch/console/OneLine.h"
#include "files/FileTarget.h"
#include "files/WriteWhole.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"

namespace Quillon {

namespace {

constexpr const char* StandardOutput = "/dev/stdout";

std::string FileOf(const std::string& output) {
    return output == "-" ? StandardOutput : output;
}

// A file that the standard output has been led into. Devices and pipes take what comes, from anywhere.
bool IsRedirectedTo(const std::string& path) {
    const FileTarget target = FindTarget(path);
    return target.Exists && S_ISREG(target.Status.st_mode) && IsSameFile(StandardOutput, path);
}

std::string Reason(const std::string& output, const std::string& what) {
    return output + " would write over " + what;
}

} // namespace

std::vector<RunInput> InputsOf(const Job& job) {
    std::vector<RunInput> inputs{{job.Path, "", ""}};
    for (const JobSet& set : job.Sets) {
        for (const std::string& name : ScanNamesOf(job, set))
            inputs.push_back({JobFilePath(job, name), SetSection(set.Number), "file"});
        if (!set.Baseline.empty())
            inputs.push_back({JobFilePath(job, set.Baseline), SetSection(set.Number), "baseline"});
    }
    return inputs;
}

bool IsSameOutput(const std::string& a, const std::string& b) {
    if (ResolvedPath(FileOf(a)) == ResolvedPath(FileOf(b))) return true;
    return (a == "-" && IsRedirectedTo(b)) || (b == "-" && IsRedirectedTo(a));
}

void CheckOutputPlaces(const Options& options) {
    for (const NamedOutput& output : OutputsOf(options)) {
        if (output.Path == "-") continue;
        const std::string reason = WhyNotWritable(output.Path);
        if (!reason.empty()) RaiseError(OneLine(output.Path + ": " + reason));
    }
}

std::string OutputOver(const Options& options, const std::string& input, bool maySave) {
    for (const NamedOutput& output : OutputsOf(options))
        if (!(maySave && output.Option == "--save") && IsSameFile(FileOf(output.Path), input))
            return output.Option;
    return "";
}

void CheckInputsStay(const Options& options, const Job& job) {
    for (const RunInput& input : InputsOf(job)) {
        const std::string output = OutputOver(options, input.Path, false);
        if (output.empty()) continue;
        if (input.Section.empty()) RaiseError(OneLine(input.Path + ": " + Reason(output, "the job")));
        FailJob(job, input.Section, input.Key, input.Path + ": " + Reason(output, "this file"));
    }
}

void CheckGraphFilesStay(const Options& options) {
    for (const GraphOption& graph : options.Graphs) {
        if (graph.Source.empty()) continue;
        const std::string output = OutputOver(options, graph.Source, false);
        if (!output.empty()) RaiseError(OneLine(graph.Source + ": " + Reason(output, "this graph file")));
    }
}

void CheckSavedFitStays(const Options& options) {
    const std::string output = OutputOver(options, options.JobPath, true);
    if (!output.empty())
        RaiseError(OneLine(options.JobPath + ": " + Reason(output, "the saved fit, which only --save may")));
}

} // namespace Quillon
