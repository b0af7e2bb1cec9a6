#include "reporting/values/Statistics.h"

#include "fit/Undetermined.h"
#include "models/table/ParmScale.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// Points by the sign of their residual, and how often the sign changes from one point of a set to the next.
struct SignCounts {
    double Positive = 0.0, Negative = 0.0, Changes = 0.0;
};

SignCounts CountSigns() {
    SignCounts counts;
    long point = 0;
    for (const std::int16_t pointsOfSet : Work.SetPts) {
        bool former = false;
        for (long i = 0; i < pointsOfSet; ++i) {
            const bool positive = Work.PtResid[++point] >= 0.0F;
            (positive ? counts.Positive : counts.Negative) += 1.0;
            // [decision: changes-not-runs]
            if (i > 0 && positive != former) counts.Changes += 1.0;
            former = positive;
        }
    }
    return counts;
}

// The distance of the count from its mean where signs come at random, in standard deviations (Wald and
// Wolfowitz, Ann. Math. Statist. 11 (1940) 147).
double RunsZFrom(const SignCounts& counts) {
    const double n = counts.Positive + counts.Negative;
    const double pairs = 2.0 * counts.Positive * counts.Negative;
    const double mean = Divide(pairs, n) + 1.0;
    const double variance = Divide(pairs * (pairs - n), n * n * (n - 1.0));
    return variance == 0.0 ? 1.0 : std::abs(counts.Changes - mean) / Sqrt(variance);
}

} // namespace

void CalcResiduals() {
    Work.PtResid.Recreate(Work.NumPts);
    for (long p = 1; p <= Work.NumPts; ++p)
        Work.PtResid[p] = Work.PtY[p] - Work.PtFit[p];
}

void RunsTest() {
    CalcResiduals();
    Work.RunsZ = ToSingle(RunsZFrom(CountSigns()));
}

double RunsZOf(const std::vector<double>& residuals) {
    SignCounts counts;
    for (std::size_t i = 0; i < residuals.size(); ++i) {
        const bool positive = residuals[i] >= 0.0;
        (positive ? counts.Positive : counts.Negative) += 1.0;
        if (i > 0 && positive != (residuals[i - 1] >= 0.0)) counts.Changes += 1.0;
    }
    return RunsZFrom(counts);
}

double RoundSignificant(double value, int digits) {
    if (value == 0.0 || !std::isfinite(value)) return value;
    const double magnitude = std::abs(value);
    // The single precision logarithm may reach the next whole number too early.
    int power = static_cast<int>(std::floor(LogBase10(magnitude)));
    if (magnitude < std::pow(10.0, power)) --power;
    const int places = digits - 1 - power;
    const double scale = std::pow(10.0, std::abs(places));
    if (!std::isfinite(scale)) return value; // so close to zero that no decimal place is left to round at
    return places >= 0 ? std::round(value * scale) / scale : std::round(value / scale) * scale;
}

bool HasErrors() {
    return HasInverse();
}

bool HasError(SlotNo slot) {
    return Work.FitDone != 0 && IsFitted(slot) && HasErrors() && !HasNoError(FreePosOf(slot));
}

double StandardError(FreePos freePosition) {
    return std::sqrt(std::abs(Work.NormMatrix(freePosition, freePosition))) *
           static_cast<double>(Work.RmsResidual);
}

float DisplayedError(FreePos freePosition) {
    const SlotNo slot = SlotOf(freePosition);
    const double value = static_cast<double>(Work.Parms[slot]);
    const double error = StandardError(freePosition);
    const double shown = static_cast<double>(ToUserUnits(slot, Work.Parms[slot]));
    const double above = static_cast<double>(ToUserUnits(slot, ToSingle(value + error)));
    const double below = static_cast<double>(ToUserUnits(slot, ToSingle(value - error)));
    return ToSingle(std::max(std::abs(above - shown), std::abs(below - shown)));
}

void ComputeCorrelations(std::int16_t& highCount, std::int16_t& veryHighCount) {
    highCount = 0;
    veryHighCount = 0;
    Work.CorrMatrix.Recreate(Work.NumFree - 1, Work.NumFree - 1);
    for (const FreePos a : EachFree())
        for (FreePos b(0); b <= a; ++b) {
            const double product = Work.NormMatrix(a, a) * Work.NormMatrix(b, b);
            const float c = product > 0.0 ? ToSingle(Work.NormMatrix(a, b) / std::sqrt(product)) : 0.0F;
            Work.CorrMatrix(a, b) = c;
            if (a == b) continue;
            if (std::abs(c) > Work.HighCorrelation) highCount = ToInt16(highCount + 1);
            if (std::abs(c) > Work.VeryHighCorrelation) veryHighCount = ToInt16(veryHighCount + 1);
        }
}

} // namespace Quillon
