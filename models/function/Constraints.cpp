#include "models/function/Constraints.h"

#include "models/function/FitFunction.h"
#include "models/table/Catalogue.h"
#include "workspace/records/Roads.h"

namespace Quillon {

namespace {

// One entry for each slot that can be stepped and one, at place 0, for the unstepped function.
thread_local double SumsA[StandardMaxParms + 1];
thread_local double SumsB[StandardMaxParms + 1];

thread_local SetNo LastConstraintSet;
thread_local long LastConstraintPoint = 0;

// The model's mean over the true points against the loading, weighed so that one tolerance counts as much
// as the signal at the outer end of the range.
double WeightedMean(RowNo row, double sum, float tolerance) {
    const auto n = static_cast<double>(PointsInRange(row));
    // [decision: loading-signals]
    const double outer = static_cast<double>(Work.ScanValue[row][Work.FitRange[1][row]]);
    return Divide(outer * sum, n * static_cast<double>(tolerance));
}

void RememberMean(std::size_t species, RowNo row, double sum) {
    const auto n = static_cast<double>(PointsInRange(row));
    Work.ConstraintFit[species][row] = ToSingle(Divide(sum, n));
}

} // namespace

double& ConstraintSumA(SlotNo derivParm) {
    return SumsA[derivParm.Number + 1];
}
double& ConstraintSumB(SlotNo derivParm) {
    return SumsB[derivParm.Number + 1];
}

void ClearConstraintSums() {
    for (SlotNo k = NoSlot; k < SlotNo(StandardMaxParms); ++k)
        ConstraintSumA(k) = ConstraintSumB(k) = 0.0;
}

void ResetConstraintSums() {
    ClearConstraintSums();
    LastConstraintSet = NoSet;
    LastConstraintPoint = 0;
}

double ConstraintValue(SetNo set, long point) {
    const RowNo row = RowOf(set);
    const SlotNo k = DerivParm();
    double& sumA = ConstraintSumA(k);
    double& sumB = ConstraintSumB(k);
    const bool firstOfSet = point == LastConstraintPoint || set != LastConstraintSet;
    if (firstOfSet) {
        LastConstraintSet = set;
        LastConstraintPoint = point;
        if (Work.ConcConstraintA[row] > 0.0F) {
            if (k == NoSlot) RememberMean(0, row, sumA);
            const double value = WeightedMean(row, sumA, Work.ConcToleranceA[row]);
            sumA = 0.0;
            return value;
        }
        sumA = 0.0;
    }
    double value = 0.0;
    if (Work.ConcConstraintB[row] > 0.0F) {
        if (k == NoSlot) RememberMean(1, row, sumB);
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
    for (const SetNo set : EachSet()) {
        const RowNo link(Work.OffsetLink[RowOf(set)]);
        if (link > NoRow) Work.Parms[SlotOffset(set)] = Work.Parms[SlotOffset(SetOf(link))];
    }
}

} // namespace Quillon
