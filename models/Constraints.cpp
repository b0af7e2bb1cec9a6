#include "models/Constraints.h"

#include "models/Catalogue.h"
#include "models/FitFunction.h"
#include "workspace/records/Workspace.h"

namespace Quillon {

namespace {

// One entry for each slot that can be stepped and one, at place 0, for the unstepped function.
thread_local double SumsA[StandardMaxParms + 1];
thread_local double SumsB[StandardMaxParms + 1];

thread_local std::int16_t LastConstraintSet = 0;
thread_local long LastConstraintPoint = 0;

// The model's mean over the true points against the loading, weighed so that one tolerance counts as much
// as the signal at the outer end of the range.
double WeightedMean(long row, double sum, float tolerance) {
    const double n = static_cast<double>(Work.FitRange[1][row] - Work.FitRange[0][row] + 1);
    // [decision: loading-signals]
    const double outer = static_cast<double>(Work.ScanValue[row][Work.FitRange[1][row]]);
    return Divide(outer * sum, n * static_cast<double>(tolerance));
}

void RememberMean(std::size_t species, long row, double sum) {
    const double n = static_cast<double>(Work.FitRange[1][row] - Work.FitRange[0][row] + 1);
    Work.ConstraintFit[species][row] = ToSingle(Divide(sum, n));
}

} // namespace

double& ConstraintSumA(long derivParm) {
    return SumsA[derivParm + 1];
}
double& ConstraintSumB(long derivParm) {
    return SumsB[derivParm + 1];
}

void ClearConstraintSums() {
    for (long k = -1; k < StandardMaxParms; ++k)
        ConstraintSumA(k) = ConstraintSumB(k) = 0.0;
}

void ResetConstraintSums() {
    ClearConstraintSums();
    LastConstraintSet = 0;
    LastConstraintPoint = 0;
}

double ConstraintValue(long set, long point) {
    const long row = Work.SetRow[set];
    const long k = DerivParm();
    double& sumA = ConstraintSumA(k);
    double& sumB = ConstraintSumB(k);
    const bool firstOfSet = point == LastConstraintPoint || set != LastConstraintSet;
    if (firstOfSet) {
        LastConstraintSet = ToInt16(set);
        LastConstraintPoint = point;
        if (Work.ConcConstraintA[row] > 0.0F) {
            if (k < 0) RememberMean(0, row, sumA);
            const double value = WeightedMean(row, sumA, Work.ConcToleranceA[row]);
            sumA = 0.0;
            return value;
        }
        sumA = 0.0;
    }
    double value = 0.0;
    if (Work.ConcConstraintB[row] > 0.0F) {
        if (k < 0) RememberMean(1, row, sumB);
        value = WeightedMean(row, sumB, Work.ConcToleranceB[row]);
    } else {
        sumA = 0.0;
    }
    sumB = 0.0;
    return value;
}

void ApplyOffsetLinks() {
    if (!(Work.ConstraintFlags & OffsetBit) || OffsetSlotHoldsConstant(Work.Model, Work.SeparateK != 0))
        return;
    for (long s = 1; s <= Work.NumSets; ++s) {
        const long link = Work.OffsetLink[Work.SetRow[s]];
        if (link > 0) Work.Parms[SlotOffset(s)] = Work.Parms[SlotOffset(Work.SetOfRow[link])];
    }
}

} // namespace Quillon
