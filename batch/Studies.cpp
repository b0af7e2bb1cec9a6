#include "batch/Studies.h"

#include "batch/BatchPlatform.h"
#include "studies/StudyProgress.h"

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
    Work.AbortFit = FlagFalse;
    if (!comparison.Complete) return LeaveIncomplete(end, "The comparison was cancelled");
    end.Studies.Compared = std::move(comparison);
}

} // namespace

void CheckStudies(const Options& options, const Job* job) {
    if (options.Compare.empty()) return;
    if (!job) RaiseError("quillon-fit: --compare goes with a job, whose section [compare] lists the models");
    if (job->Compare.empty()) FailJob(*job, "compare", "models", "--compare needs the models that it fits");
}

void RunStudies(const Options& options, const Job* job, RunEnd& end) {
    if (Interrupted()) return;
    if (job && !options.Compare.empty()) RunComparison(*job, end);
}

} // namespace Quillon
