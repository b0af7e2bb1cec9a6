#include "planning/design/ExpectedErrors.h"

#include "fit/GNLLSQ.h"
#include "fit/Undetermined.h"
#include "fit/equations/FreeMap.h"
#include "fit/equations/NormalEquations.h"
#include "models/function/Constraints.h"
#include "models/function/FitFunction.h"
#include "models/function/Simulation.h"
#include "models/table/ModelTable.h"
#include "models/table/ParmScale.h"
#include "planning/design/Loadings.h"
#include "studies/methods/Copies.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// Masses keep their kDa: sigma goes with the square of the speed, and so does what leads from it to kDa. The
// virial coefficient enters as its product with sigma, which is none of the speed's.
void TakeUpSpeeds(double factor) {
    if (factor == 1.0) return;
    const double square = factor * factor;
    for (const RowNo row : EachRow())
        Work.ScanRPM[row] = ToSingle(static_cast<double>(Work.ScanRPM[row]) * factor);
    for (const SlotNo slot : EachSlot()) {
        if (PartOfSlot(slot) != SlotPart::Global) continue;
        const Quantity holds = RuleOfSlot(slot).Holds;
        const double times = holds == Quantity::Mass     ? square
                             : holds == Quantity::Virial ? 1.0 / square
                                                         : 1.0;
        Work.Parms[slot] = ToSingle(static_cast<double>(Work.Parms[slot]) * times);
    }
    BuildParmScale();
}

// The signals of the model in the scans, which constraints of loadings weigh by, and in the points.
void TakeUpSignals() {
    OneBased<float> values;
    if (!SimulateSignals(values)) RaiseError("the model has no values there");
    long point = 0;
    for (const SetNo set : EachSet()) {
        const RowNo row = RowOf(set);
        Work.BaselineFile[row] = NoBaseline;
        for (long p = Work.FitRange[0][row]; p <= Work.FitRange[1][row]; ++p)
            Work.ScanValue[row][p] = values[++point];
        while (point < Work.NumPts && IsPseudoPoint(point + 1))
            ++point;
    }
    if (!SimulateSignals(values))
        RaiseError("the model has no values there"); // loadings with their new weight
    Work.PtY = values;
    Work.PtFit = values;
}

void TakeUpLoadings(double factor) {
    for (const RowNo row : EachRow()) {
        Work.ConcConstraintA[row] = ToSingle(static_cast<double>(Work.ConcConstraintA[row]) * factor);
        Work.ConcConstraintB[row] = ToSingle(static_cast<double>(Work.ConcConstraintB[row]) * factor);
    }
}

PlannedDesign PlanOf(const Design& design, double noise) {
    PlannedDesign planned;
    planned.Of = design;
    try {
        TakeUpDesign(design);
        planned.Parms = ErrorsOfWork(noise);
    } catch (const RuntimeError& error) {
        planned.Failure = error.Text;
    }
    return planned;
}

std::string RangeText() {
    return "factors of a design lie between 0.01 and 100";
}

} // namespace

std::vector<Design> DesignsOf(const PlanChoice& choice) {
    std::vector<Design> designs;
    for (const double speed : choice.SpeedFactors)
        for (const double loading : choice.LoadingFactors)
            designs.push_back({speed, loading});
    return designs;
}

std::string WhyNoPlan(const PlanChoice& choice) {
    for (const auto* factors : {&choice.SpeedFactors, &choice.LoadingFactors})
        for (const double factor : *factors)
            if (!(factor >= LeastFactorOfDesign && factor <= MostFactorOfDesign)) return RangeText();
    if (choice.SpeedFactors.empty() || choice.LoadingFactors.empty()) return "there is no factor";
    if (choice.SpeedFactors.size() * choice.LoadingFactors.size() > MostDesigns)
        return "there are more than " + std::to_string(MostDesigns) + " designs";
    return "";
}

bool CanPlan() {
    return Work.DataChosen != 0 && Work.ModelChosen != 0 && Work.NumPts > 0;
}

bool HasTruth() {
    return Work.FitValid != 0 || Work.FitDone != 0 || !Work.StartParms.Empty();
}

void TakeUpDesign(const Design& design) {
    std::vector<SetAmounts> amounts;
    for (const SetNo set : EachSet())
        amounts.push_back(AmountsIn(set));
    TakeUpSpeeds(design.SpeedFactor);
    TakeUpLoadings(design.LoadingFactor);
    for (const SetNo set : EachSet()) {
        const SetAmounts& was = amounts[static_cast<std::size_t>(set.Number - 1)];
        MoveToAmounts(set, {was.A * design.LoadingFactor, was.B * design.LoadingFactor});
    }
    TakeUpSignals();
}

std::vector<ExpectedError> ErrorsOfWork(double noise) {
    if (!AssignFreePositions(FitChoices()) || Work.NumFree < 1) RaiseError("nothing is fitted");
    ResetFitFunction();
    AccumulateSums();
    if (Work.AbortFit) RaiseError("the model has no values there");
    Work.NormMatrix = DeterminedInverse(TakeNormalEquations());
    Work.RmsResidual = ToSingle(noise);
    std::vector<ExpectedError> errors;
    for (const FreePos a : EachFree()) {
        const SlotNo slot = SlotOf(a);
        ExpectedError expected{
            slot.Number, Work.ParmName[slot], static_cast<double>(ToUserUnits(slot, Work.Parms[slot])), {}};
        const double error = static_cast<double>(DisplayedError(a));
        if (Work.NormMatrix(a, a) > 0.0 && std::isfinite(error)) expected.Error = error;
        errors.push_back(std::move(expected));
    }
    return errors;
}

Plan PlanExperiment(const PlanChoice& choice, double noise, const std::function<void(long done)>& told) {
    const std::vector<Design> designs = DesignsOf(choice);
    Plan plan;
    plan.Designs.resize(designs.size());
    const CopiesEnd end = RunOnCopies(
        static_cast<long>(designs.size()), 1,
        [&](long number) {
            const auto place = static_cast<std::size_t>(number);
            plan.Designs[place] = PlanOf(designs[place], noise);
        },
        told);
    plan.Complete = end.Complete;
    return plan;
}

} // namespace Quillon
