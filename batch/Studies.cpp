#include "batch/Studies.h"

#include "batch/console/BatchPlatform.h"
#include "batch/graphs/Graphs.h"
#include "studies/StudyProgress.h"
#include "studies/methods/ResamplingLines.h"
#include "workspace/records/Cancel.h"

#include <algorithm>

namespace Quillon {

namespace {

void LeaveIncomplete(RunEnd& end, const std::string& message) {
    WriteFailure(message);
    end.Complete = false;
    if (end.Message.empty()) end.Message = message;
}

// Lines of progress of a study.
std::function<void(long)> ProgressLines(const std::string& study, long all, const char* what) {
    return [=, progress = StartProgress(all, what), told = 0L](long done) mutable {
        if (done > told) WriteProgress(study + ": " + ProgressText(progress, done));
        told = done;
    };
}

void RunComparison(const Job& job, RunEnd& end) {
    Comparison comparison = CompareModels(
        job.Compare, ProgressLines("comparison", static_cast<long>(job.Compare.size()), "models"));
    ClearCancel();
    if (!comparison.Complete) return LeaveIncomplete(end, "The comparison was cancelled");
    end.Studies.Compared = std::move(comparison);
}

// The count is that of the option, the seed that of the job.
void RunResampling(const Options& options, const Job* job, RunEnd& end) {
    ResampleChoice choice = job ? job->Resampling : ResampleChoice{};
    choice.Count = options.Resample;
    if (job) choice.Seed = job->Restarts.Seed;
    Resampling resampling = Resample(choice, ProgressLines("resampling", choice.Count, "fits"));
    ClearCancel();
    if (!resampling.Complete) return LeaveIncomplete(end, "The resampling was cancelled");
    WriteConsole("resampling: " + ResamplingHead(resampling));
    end.Studies.Resampled = std::move(resampling);
}

// Progress by steps of as many as the study says.
std::function<void(long, long)> StepLines(const std::string& study) {
    return [=, told = 0L, progress = StartProgress(0, "values")](long done, long all) mutable {
        progress.All = all;
        if (done > told) WriteProgress(study + ": " + ProgressText(progress, done));
        told = done;
    };
}

// What is said of a study that has met a better minimum than the fit's.
constexpr const char* BetterText =
    ": a lower minimum than that of the fit was met; what is written starts from it";

void RunProfile(const ProfileOption& option, const ProfileChoice& choice, RunEnd& end) {
    const std::string name = "profile " + ProfileName(option);
    const auto keep = [&](auto study) {
        ClearCancel();
        if (!study.Broken.empty()) return LeaveIncomplete(end, "The profile broke off: " + study.Broken);
        if (!study.Complete) return LeaveIncomplete(end, "The profile was cancelled");
        if (study.Better) WriteFailure(name + BetterText);
        end.Studies.Profiles.push_back(std::move(study));
    };
    if (option.Slots.size() == 1)
        keep(ProfileParameter(option.Slots[0], choice, StepLines(name)));
    else
        keep(MapParameters(option.Slots[0], option.Slots[1], choice, StepLines(name)));
}

// Slots are those of fitted parameters, which the fit alone knows.
void CheckSlot(const std::string& option, long slot) {
    if (!CanProfile(slot))
        RaiseError("quillon-fit: " + option + ": slot " + std::to_string(slot) + " is no fitted parameter");
}

void CheckSlots(const Options& options) {
    for (const ProfileOption& option : options.Profiles)
        for (const long slot : option.Slots)
            CheckSlot("--profile " + ProfileName(option), slot);
    for (const GraphOption& graph : options.Graphs)
        if (graph.Kind == HistogramKind) CheckSlot("--graph " + GraphName(graph), graph.Slot);
}

// One that is wanted in two forms is made once.
bool HasProfile(const StudyResults& studies, const std::vector<long>& slots) {
    const auto& made = studies.Profiles;
    return std::any_of(made.begin(), made.end(),
                       [&](const ProfileStudy& study) { return SlotsOf(study) == slots; });
}

void RunProfiles(const Options& options, const Job* job, RunEnd& end) {
    for (const ProfileOption& option : options.Profiles)
        if (!Interrupted() && !HasProfile(end.Studies, option.Slots))
            RunProfile(option, job ? job->Profile : ProfileChoice{}, end);
}

// A study of the fit needs one that stands at a minimum.
bool FitStands(const RunEnd& end) {
    return end.HasFit && end.Converged && CanResample();
}

} // namespace

void CheckStudies(const Options& options, const Job* job) {
    if (options.Compare.empty()) return;
    if (!job) RaiseError("quillon-fit: --compare goes with a job, whose section [compare] lists the models");
    if (job->Compare.empty()) FailJob(*job, "compare", "models", "--compare needs the models that it fits");
}

void RunStudies(const Options& options, const Job* job, RunEnd& end) {
    if (Interrupted()) return;
    if (FitStands(end)) CheckSlots(options); // before hours are spent on a comparison
    if (job && !options.Compare.empty()) RunComparison(*job, end);
    if (Interrupted() || !FitStands(end)) return;
    RunProfiles(options, job, end);
    if (Interrupted()) return;
    if (options.Resample > 0) RunResampling(options, job, end);
}

} // namespace Quillon
