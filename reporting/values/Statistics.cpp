#include "reporting/values/Statistics.h"

#include "fit/Sums.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

SignCounts CountSigns() {
    SignCounts counts;
    const Workspace& w = Work; // the thread's own is looked up once
    long point = 0;
    for (const std::int16_t pointsOfSet : w.SetPts) {
        bool former = pointsOfSet > 0 && w.PtResid[point + 1] >= 0.0F;
        for (long i = 0; i < pointsOfSet; ++i) {
            const bool positive = w.PtResid[++point] >= 0.0F;
            counts.Add(positive, former);
            former = positive;
        }
    }
    return counts;
}

} // namespace

// The distance of the count from its mean where signs come at random, in standard deviations (Wald and
// Wolfowitz, Ann. Math. Statist. 11 (1940) 147).
double RunsZFrom(const SignCounts& counts) {
    const auto positive = static_cast<double>(counts.Positive);
    const auto negative = static_cast<double>(counts.Negative);
    const double n = positive + negative;
    const double pairs = 2.0 * positive * negative;
    const double mean = Divide(pairs, n) + 1.0;
    const double variance = Divide(pairs * (pairs - n), n * n * (n - 1.0));
    return variance == 0.0 ? 1.0 : std::abs(static_cast<double>(counts.Changes) - mean) / Sqrt(variance);
}

void RunsTest() {
    CalcResiduals();
    Work.RunsZ = ToSingle(RunsZFrom(CountSigns()));
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
