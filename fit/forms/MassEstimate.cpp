#include "fit/forms/MassEstimate.h"

#include "models/table/ModelTable.h"
#include "workspace/records/Roads.h"

#include <algorithm>
#include <cmath>

namespace Quillon {

namespace {

constexpr long FewestSignals = 5;

double OffsetOf(SetNo set) {
    const SlotNo slot = SlotOffset(set);
    const bool offset = RuleOfSlot(slot).Holds == Quantity::Offset && IsInUse(slot);
    return offset ? static_cast<double>(Work.Parms[slot]) : 0.0;
}

// Sums of a straight line through weighted points.
struct LineSums {
    double W = 0.0, X = 0.0, Y = 0.0, XX = 0.0, XY = 0.0;
    long Count = 0;
    void Add(double w, double x, double y) {
        W += w;
        X += w * x;
        Y += w * y;
        XX += w * x * x;
        XY += w * x * y;
        ++Count;
    }
    double Slope() const { return (W * XY - X * Y) / (W * XX - X * X); }
};

LineSums SumsOf(SetNo set) {
    LineSums sums;
    const double offset = OffsetOf(set);
    const long first = FirstPointOf(set);
    for (long p = first; p < first + TruePointsOf(set); ++p) {
        const double signal = static_cast<double>(Work.PtY[p]) - offset;
        if (signal > 0.0) sums.Add(signal * signal, static_cast<double>(Work.PtX[p]), std::log(signal));
    }
    return sums;
}

bool HasOneSpecies() {
    for (const SlotNo slot : EachSlot())
        if (RuleOfSlot(slot).Holds == Quantity::Constant && IsInUse(slot)) return false;
    return !TraitsOfModel().TwoSpecies;
}

} // namespace

std::optional<double> ApparentSigma(SetNo set) {
    const LineSums sums = SumsOf(set);
    if (sums.Count < FewestSignals) return std::nullopt;
    const double sigma = sums.Slope() / static_cast<double>(Work.SetSigmaScale[set]);
    if (!std::isfinite(sigma) || sigma <= 0.0) return std::nullopt;
    return sigma;
}

std::optional<MassEstimate> EstimateMass() {
    MassEstimate estimate;
    std::vector<double> sigmas;
    for (const SetNo set : EachSet())
        if (const std::optional<double> sigma = ApparentSigma(set)) {
            estimate.Sets.push_back({set, *sigma});
            sigmas.push_back(*sigma);
        }
    if (sigmas.empty()) return std::nullopt;
    std::sort(sigmas.begin(), sigmas.end());
    estimate.Sigma = HasOneSpecies() ? sigmas[sigmas.size() / 2] : sigmas.front();
    return estimate;
}

} // namespace Quillon
