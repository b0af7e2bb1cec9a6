#include "batch/job/PlanJob.h"

#include "batch/console/BatchPlatform.h"
#include "batch/job/JobParameters.h"
#include "batch/job/SimulateJob.h"
#include "batch/outputs/CsvParts.h"
#include "planning/design/ExpectedErrors.h"
#include "workspace/records/Cancel.h"

namespace Quillon {

namespace {

std::vector<std::string> FactorsOf(const Design& design) {
    return {ShortestText(design.SpeedFactor), ShortestText(design.LoadingFactor)};
}

// A line of the table: the factors stand there where the job has a list of them.
std::string Line(const Job& job, std::vector<std::string> factors, const std::vector<std::string>& cells) {
    if (!job.HasPlan) return CsvLine(cells);
    factors.insert(factors.end(), cells.begin(), cells.end());
    return CsvLine(factors);
}

// Singles, as the forms show them: what stands behind their digits is none.
std::string Digits(double value) {
    return ShortestText(static_cast<float>(value));
}

std::string LinesOf(const Job& job, const PlannedDesign& design) {
    std::string lines;
    for (const ExpectedError& parm : design.Parms)
        lines += Line(job, FactorsOf(design.Of),
                      {std::to_string(parm.Slot), parm.Name, Digits(parm.Value),
                       parm.Error ? Digits(*parm.Error) : ""});
    return lines;
}

std::string TableOf(const Job& job, const Plan& plan) {
    std::string lines;
    for (const PlannedDesign& design : plan.Designs) {
        lines += LinesOf(job, design);
        if (!design.Failure.empty())
            WriteFailure("plan, speeds times " + FactorsOf(design.Of)[0] + ", loadings times " +
                         FactorsOf(design.Of)[1] + ": " + design.Failure);
    }
    if (lines.empty()) return "";
    return Line(job, {"speed_factor", "loading_factor"}, {"slot", "name", "value", "expected_error"}) + lines;
}

} // namespace

std::string PlanJob(const Job& job) {
    if (!(job.Simulation.Noise > 0.0F)) FailJob(job, "simulation", "noise", "--plan needs a noise above 0");
    if (const std::string why = WhyNoPlan(job.Plan); !why.empty()) FailJob(job, "plan", "", why);
    const std::vector<ListedParm> listed = TakeTruth(job);
    CheckAnythingIsFitted(job, listed);
    TakeListedParms(job, listed);
    const Plan plan = PlanExperiment(job.Plan, static_cast<double>(job.Simulation.Noise), {});
    ClearCancel();
    if (!plan.Complete) {
        WriteFailure("The plan was cancelled");
        return "";
    }
    return TableOf(job, plan);
}

} // namespace Quillon
