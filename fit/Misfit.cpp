#include "fit/Misfit.h"

#include "fit/NoiseWeights.h"
#include "fit/NormalEquations.h"
#include "input/NUMINPUT.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace Quillon {

namespace {

// One place for each set that the points name, and place 0. While sets come and go the table of data sets may
// count fewer.
std::size_t Places(const Workspace& fit) {
    long last = fit.NumSets;
    for (long p = 1; p <= fit.NumPts; ++p)
        last = std::max(last, static_cast<long>(fit.PtSet[p]));
    return static_cast<std::size_t>(last) + 1;
}

// --- the noise

// The square of how far point p lies from the line between its neighbours, in variances of a point; below 0
// where it has no two.
double ShareOfNoise(long p) {
    if (Work.PtSet[p - 1] != Work.PtSet[p + 1] || Work.PtX[p + 1] == PointMarker) return -1.0;
    const double before = static_cast<double>(Work.PtX[p] - Work.PtX[p - 1]);
    const double both = static_cast<double>(Work.PtX[p + 1] - Work.PtX[p - 1]);
    if (!(before >= 0.0 && both > before)) return -1.0;
    const double w = before / both;
    const double line =
        (1.0 - w) * static_cast<double>(Work.PtY[p - 1]) + w * static_cast<double>(Work.PtY[p + 1]);
    const double off = NoiseWeight(SetNo(Work.PtSet[p])) * (static_cast<double>(Work.PtY[p]) - line);
    return off * off / (1.0 + w * w + (1.0 - w) * (1.0 - w));
}

using Shares = std::vector<double>;

double VarianceOf(Shares shares) {
    if (shares.empty()) return 0.0;
    const auto middle = shares.begin() + static_cast<std::ptrdiff_t>(shares.size() / 2);
    std::nth_element(shares.begin(), middle, shares.end());
    constexpr double MedianOfChiSquare = 0.4549; // of one degree of freedom
    return *middle / MedianOfChiSquare;
}

// By set from 1; what belongs to all stands at 0.
std::vector<Shares> SharesOfNoise() {
    std::vector<Shares> shares(Places(Work));
    for (long p = 2; p < Work.NumPts; ++p)
        if (const double share = ShareOfNoise(p); share >= 0.0) {
            shares[0].push_back(share);
            shares[static_cast<std::size_t>(Work.PtSet[p])].push_back(share);
        }
    return shares;
}

// --- what is left

struct Residuals {
    double SumSq = 0.0;
    double Count = 0.0;

    void Add(double residual) {
        SumSq += residual * residual;
        Count += 1.0;
    }
    bool StandOut(double noise, double points, double deviations) const {
        const double spread = std::sqrt(2.0 / Count + 9.0 / points);
        return Count > 0.0 && SumSq > (1.0 + deviations * spread) * noise * Count;
    }
};

// By set from 1, those of all at 0.
std::vector<Residuals> ResidualsOf(const Workspace& fit) {
    std::vector<Residuals> left(Places(fit));
    for (long p = 1; p <= fit.NumPts; ++p) {
        if (fit.PtX[p] == PointMarker) continue;
        const double residual = NoiseWeight(SetNo(fit.PtSet[p])) *
                                (static_cast<double>(fit.PtY[p]) - static_cast<double>(fit.PtFit[p]));
        left[0].Add(residual);
        left[static_cast<std::size_t>(fit.PtSet[p])].Add(residual);
    }
    return left;
}

constexpr double EnoughPoints = 20.0;

struct Misfit {
    std::size_t Set = 0; // 0 for the fit as a whole
    double MeanSquare = 0.0;
    double Noise = 0.0;
};

// The variances by which each set is measured: that of all, or its own where that is larger. At 0 their mean
// over all points.
std::vector<double> NoiseBySet(const std::vector<Residuals>& left) {
    std::vector<double> noise;
    for (const Shares& shares : SharesOfNoise())
        noise.push_back(std::max(VarianceOf(shares), LeastVariance()));
    double sum = 0.0;
    for (std::size_t set = 1; set < noise.size(); ++set) {
        noise[set] = std::max(noise[set], noise[0]);
        sum += noise[set] * left[set].Count;
    }
    noise[0] = sum / left[0].Count;
    return noise;
}

// The whole fit where it shows it, otherwise the set that stands out most.
std::optional<Misfit> FindMisfit() {
    constexpr double Deviations = 5.0; // a sentence wants to be surer than a look
    const std::vector<Residuals> left = ResidualsOf(Work);
    if (left[0].Count < EnoughPoints) return std::nullopt;
    const std::vector<double> noise = NoiseBySet(left);
    std::optional<Misfit> most;
    for (std::size_t set = 0; set < left.size(); ++set) {
        if (!left[set].StandOut(noise[set], left[0].Count, Deviations)) continue;
        const Misfit found{set, left[set].SumSq / left[set].Count, noise[set]};
        if (set == 0) return found;
        if (!most || found.MeanSquare / found.Noise > most->MeanSquare / most->Noise) most = found;
    }
    return most;
}

// A saved fit says nothing of its end when it had converged.
bool StandsAtMinimum() {
    const bool converged = Work.Outcome.End == FitEnd::Converged || Work.Outcome.End == FitEnd::NotRun;
    return Work.FitDone && converged && Work.NumPts <= Work.PtFit.Hi();
}

std::string RmsText(double meanSquare) {
    return FormatNumber(std::sqrt(meanSquare), "0.000E-##");
}

std::string PlaceText(const Misfit& misfit) {
    return misfit.Set == 0 ? "" : " in set " + std::to_string(misfit.Set);
}

} // namespace

double NoiseVariance() {
    return VarianceOf(SharesOfNoise()[0]);
}

bool LeavesMoreThanNoise(const Workspace& fit) {
    constexpr double Deviations = 4.0;
    const std::vector<Residuals> left = ResidualsOf(fit);
    const double points = left[0].Count;
    if (points < EnoughPoints) return false;
    const double noise = std::max(NoiseVariance(), LeastVariance());
    return std::any_of(left.begin(), left.end(),
                       [&](const Residuals& part) { return part.StandOut(noise, points, Deviations); });
}

// [decision: misfit-remark]
std::string MisfitText() {
    if (!StandsAtMinimum()) return "";
    const std::optional<Misfit> misfit = FindMisfit();
    if (!misfit) return "";
    return "The fit leaves more than the noise of the data" + PlaceText(*misfit) + " (rms " +
           RmsText(misfit->MeanSquare) + ", noise " + RmsText(misfit->Noise) +
           "): a wrong model, or another minimum. Search for Other Minima.";
}

std::string MisfitStateText() {
    if (!StandsAtMinimum()) return "";
    const std::optional<Misfit> misfit = FindMisfit();
    return misfit ? ", more than the noise" + PlaceText(*misfit) : "";
}

} // namespace Quillon
