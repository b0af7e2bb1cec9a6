#include "fit/equations/NoiseWeights.h"

#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

// A set that has no row has none.
double NoiseOf(SetNo set) {
    const RowNo row = RowOf(set);
    return row.Number > 0 ? static_cast<double>(Work.SetNoise[row]) : 0.0;
}

// Sums of squared residuals of true points and how many there are, by set.
struct SetSum {
    double Squares = 0.0;
    long Points = 0;
};

PerSet<SetSum> SumsBySet() {
    PerSet<SetSum> sums(Work.NumSets);
    for (long p = 1; p <= Work.NumPts; ++p) {
        if (Work.PtX[p] == PointMarker) continue;
        const double r = static_cast<double>(Work.PtY[p]) - static_cast<double>(Work.PtFit[p]);
        SetSum& sum = sums[SetNo(Work.PtSet[p])];
        sum.Squares += r * r;
        ++sum.Points;
    }
    return sums;
}

} // namespace

bool SetsHaveNoise() {
    // [decision: noise-for-all-or-none]
    for (const SetNo set : EachSet())
        if (!(NoiseOf(set) > 0.0)) return false;
    return Work.NumSets > 0;
}

double NoiseWeight(SetNo set) {
    return SetsHaveNoise() ? NoiseOf(SetNo(1)) / NoiseOf(set) : 1.0;
}

PerRow<float> NoisesOfFit() {
    const PerSet<SetSum> sums = SumsBySet();
    PerSet<double> noises(Work.NumSets);
    double largest = 0.0;
    for (const SetNo set : EachSet()) {
        const SetSum& sum = sums[set];
        noises[set] = sum.Points > 0 ? std::sqrt(sum.Squares / static_cast<double>(sum.Points)) : 0.0;
        largest = std::max(largest, noises[set]);
    }
    PerRow<float> rows(Work.MaxSets);
    for (const SetNo set : EachSet())
        rows[RowOf(set)] = ToSingle(std::max(noises[set], largest / LargestNoiseRatio));
    return rows;
}

} // namespace Quillon
