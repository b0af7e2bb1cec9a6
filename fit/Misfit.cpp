#include "fit/Misfit.h"

#include "fit/LongWaves.h"
#include "fit/equations/NoiseWeights.h"
#include "fit/equations/NormalEquations.h"
#include "input/NUMINPUT.h"
#include "platform/Fingerprint.h"
#include "workspace/records/Roads.h"
#include "workspace/records/Workspace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
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

// The weights of sets that come one behind the other, each asked for once.
class Weights {
public:
    double Of(std::int16_t set) {
        if (set != Latest) Weight = NoiseWeight(SetNo(set));
        Latest = set;
        return Weight;
    }

private:
    std::int16_t Latest = -1;
    double Weight = 1.0;
};

// The square of how far point p of values lies from the line between its neighbours, in variances of a point;
// below 0 where it has no two. values takes the number of a point.
template <class Values>
double ShareOfNoise(const Workspace& points, long p, Weights& weights, Values&& values) {
    if (points.PtSet[p - 1] != points.PtSet[p + 1] || points.PtX[p + 1] == PointMarker) return -1.0;
    const double before = static_cast<double>(points.PtX[p] - points.PtX[p - 1]);
    const double both = static_cast<double>(points.PtX[p + 1] - points.PtX[p - 1]);
    if (!(before >= 0.0 && both > before)) return -1.0;
    const double w = before / both;
    const double line = (1.0 - w) * values(p - 1) + w * values(p + 1);
    const double off = weights.Of(points.PtSet[p]) * (values(p) - line);
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

// That of all points together at 0, and as far as there are places those by set from 1.
using Variances = std::vector<double>;

template <class Values> Variances VariancesOf(std::size_t places, Values&& values) {
    const Workspace& w = Work; // the thread's own is looked up once
    std::vector<Shares> shares(places);
    shares[0].reserve(static_cast<std::size_t>(std::max<long>(w.NumPts, 0)));
    Weights weights;
    for (long p = 2; p < w.NumPts; ++p)
        if (const double share = ShareOfNoise(w, p, weights, values); share >= 0.0) {
            shares[0].push_back(share);
            const auto set = static_cast<std::size_t>(w.PtSet[p]);
            if (set < places) shares[set].push_back(share);
        }
    Variances variances;
    for (Shares& each : shares)
        variances.push_back(VarianceOf(std::move(each)));
    return variances;
}

double ResidualAt(const Workspace& fit, long p) {
    return static_cast<double>(fit.PtY[p]) - static_cast<double>(fit.PtFit[p]);
}

// Of the readings and of the residuals the lower one: what a steep signal bends within three points is no
// noise, and what a wrong curve bends there is none either.
Variances MeasuredNoise(const Workspace& fit, std::size_t places) {
    const double least = LeastVariance();
    const Workspace& w = Work; // the thread's own is looked up once
    Variances noise = VariancesOf(places, [&w](long p) { return static_cast<double>(w.PtY[p]); });
    const Variances left = VariancesOf(places, [&](long p) { return ResidualAt(fit, p); });
    for (std::size_t set = 0; set < noise.size(); ++set)
        noise[set] = std::max(std::min(noise[set], left[set]), least);
    return noise;
}

// --- what is left

// Squared residuals, and how they fall into waves along the cell.
struct Residuals {
    WaveSquares All;
    Waves Parts;

    void Add(const Residuals& other) {
        All.Add(other.All);
        Parts.Long.Add(other.Parts.Long);
        Parts.Middle.Add(other.Parts.Middle);
        Parts.Others.Add(other.Parts.Others);
    }
};

// One point: its residual, and the signal that singles round.
struct PointLeft {
    double Residual = 0.0;
    double Signal = 0.0;
};

// Noise below what singles know of a set's signals is none: rounded parameters leave long waves of their own.
void RaiseToRounding(WaveSquares& noise, const std::vector<PointLeft>& points) {
    double largest = 0.0;
    for (const PointLeft& point : points)
        largest = std::max(largest, std::fabs(point.Signal));
    noise.Sum = std::max(noise.Sum, RoundingOfSingles * largest * RoundingOfSingles * largest * noise.Count);
}

Residuals ResidualsOf(const std::vector<PointLeft>& points, FirstWave& wave) {
    Residuals left;
    std::vector<double> values;
    values.reserve(points.size());
    for (const PointLeft& point : points) {
        left.All.Add({point.Residual * point.Residual, 1.0});
        values.push_back(point.Residual);
    }
    left.Parts = WavesOf(values, wave);
    RaiseToRounding(left.Parts.Middle, points);
    RaiseToRounding(left.Parts.Others, points);
    return left;
}

// A model's curves are long waves, so that each fitted parameter takes one of them up: behind 932 right fits
// the deviations of what is left were those of chance. Half of the waves stay in any case, since a parameter
// that the data do not determine takes none.
void TakeUpWaves(std::vector<Residuals>& left, long parameters) {
    const double all = left[0].Parts.Long.Count;
    if (!(all > 0.0)) return;
    const double staying = std::max(1.0 - static_cast<double>(parameters) / all, 0.5);
    for (Residuals& part : left)
        part.Parts.Long.Count *= staying;
}

// The residuals of the true points from p on that are of one set; p is left behind its last point.
std::vector<PointLeft> PointsOfSet(const Workspace& fit, long& p, Weights& weights) {
    const std::int16_t set = fit.PtSet[p];
    std::vector<PointLeft> points;
    for (; p <= fit.NumPts && fit.PtSet[p] == set; ++p) {
        if (fit.PtX[p] == PointMarker) continue;
        const double weight = weights.Of(set);
        points.push_back({weight * ResidualAt(fit, p), weight * static_cast<double>(fit.PtY[p])});
    }
    return points;
}

// By set from 1, those of all at 0.
std::vector<Residuals> MeasuredResiduals(const Workspace& fit) {
    std::vector<Residuals> left(Places(fit));
    Weights weights;
    FirstWave wave;
    for (long p = 1; p <= fit.NumPts;) {
        const auto set = static_cast<std::size_t>(fit.PtSet[p]);
        const std::vector<PointLeft> points = PointsOfSet(fit, p, weights);
        if (!points.empty()) left[set].Add(ResidualsOf(points, wave));
    }
    for (std::size_t set = 1; set < left.size(); ++set)
        left[0].Add(left[set]);
    TakeUpWaves(left, fit.NumFree);
    return left;
}

// --- the fit that stands is asked for its noise by all who tell of it: once for the same points

// Of all that the measures hang on; noises and rows of the sets give their weights.
Fingerprint FingerprintOfWork() {
    const Workspace& w = Work; // the thread's own is looked up once
    Fingerprint print;
    for (const OneBased<float>* column : {&w.PtX, &w.PtY, &w.PtFit})
        print.Add(*column);
    print.Add(w.PtSet);
    print.Add(w.SetNoise);
    print.Add(w.SetRow);
    for (const long number : {long{w.NumPts}, long{w.NumSets}, long{w.NumFree}})
        print.Add(number);
    return print;
}

struct Measures {
    std::optional<Fingerprint> Of;
    double Noise = 0.0; // the variance of all points together
    std::vector<Residuals> Left;
};
thread_local Measures Last;

const Measures& MeasuresOfWork() {
    const Fingerprint print = FingerprintOfWork();
    if (Last.Of != print) Last = {print, MeasuredNoise(Work, 1)[0], MeasuredResiduals(Work)};
    return Last;
}

std::vector<Residuals> ResidualsOf(const Workspace& fit) {
    return &fit == &Work ? MeasuresOfWork().Left : MeasuredResiduals(fit);
}

constexpr double EnoughPoints = 20.0;

// How far the mean square stands above a noise that so many points tell.
double SumDeviations(const Residuals& left, double noise, double points) {
    if (!(left.All.Count > 0.0)) return 0.0;
    return (left.All.Mean() / noise - 1.0) / std::sqrt(2.0 / left.All.Count + 9.0 / points);
}

// How far the long waves of a part stand above a noise, and the mean square of that.
struct WaveMisfit {
    double Deviations = 0.0;
    double Noise = 0.0;
};

// By the strictest measure: the other waves of all sets, those of its own, or those of middle length.
WaveMisfit WaveMisfitOf(const Residuals& part, const Residuals& all) {
    std::optional<WaveMisfit> strictest;
    for (const WaveSquares& noise : {all.Parts.Others, all.Parts.Middle, part.Parts.Others}) {
        const double deviations = DeviationsAbove(part.Parts.Long, noise);
        if (!strictest || deviations < strictest->Deviations)
            strictest = WaveMisfit{deviations, deviations > 0.0 ? noise.Mean() : 0.0};
    }
    return *strictest;
}

struct Misfit {
    std::size_t Set = 0;   // 0 for the fit as a whole
    bool InWaves = false;  // only the long waves show it
    double MeanSquare = 0; // of the residuals, or of their long waves
    double Noise = 0;      // the variance
};

// The variances by which each set is measured: that of all, or its own where that is larger. At 0 their mean
// over all points.
Variances NoiseBySet(const std::vector<Residuals>& left) {
    Variances noise = MeasuredNoise(Work, left.size());
    double sum = 0.0;
    for (std::size_t set = 1; set < noise.size(); ++set) {
        noise[set] = std::max(noise[set], noise[0]);
        sum += noise[set] * left[set].All.Count;
    }
    noise[0] = sum / left[0].All.Count;
    return noise;
}

// The part that stands out most by deviations, which takes its place: all together where they do, otherwise a
// set. Nothing below least.
template <class Deviations>
std::optional<std::size_t> PartThatStandsOut(std::size_t parts, double least, Deviations&& deviations) {
    std::optional<std::size_t> most;
    for (std::size_t set = 0; set < parts; ++set) {
        const double found = deviations(set);
        if (!(found > least)) continue;
        if (set == 0) return set;
        if (!most || found > deviations(*most)) most = set;
    }
    return most;
}

// A look costs time and nothing else; a sentence wants to be surer. Of nine parts one comes to 3.2 in its
// waves by chance in one of two hundred fits, to 4 in one of three thousand.
struct Sureness {
    double InSum;
    double InWaves;
};
constexpr Sureness ForALook{4.0, 3.2};
constexpr Sureness ForASentence{5.0, 4.0};

// The normal deviate that chance exceeds in a share p of cases, 0 < p < 0.5, to 0.003 (M. Abramowitz and I.
// A. Stegun, Handbook of Mathematical Functions, 1964, formula 26.2.22).
double DeviateExceededBy(double p) {
    const double t = std::sqrt(-2.0 * std::log(p));
    return t - (2.30753 + 0.27061 * t) / (1.0 + t * (0.99229 + 0.04481 * t));
}

// What the farthest one of so many parts exceeds by chance in a share of all fits.
Sureness ByChanceIn(double share, std::size_t parts) {
    const double deviate = DeviateExceededBy(share / static_cast<double>(std::max<std::size_t>(parts, 1)));
    return {deviate, deviate};
}
constexpr double FitsWithAGlance = 0.2;
constexpr double FitsInSomeDoubt = 0.05;

// By how many standard deviations a part stands above the noise.
struct PartAbove {
    double InSum = 0.0, InWaves = 0.0;
};

bool IsAbove(const PartAbove& part, const Sureness& sure) {
    return part.InSum > sure.InSum || part.InWaves > sure.InWaves;
}

// All together at 0, sets from 1. Nothing stands above it where the points are too few.
std::vector<PartAbove> PartsAbove(const std::vector<Residuals>& left, double noise) {
    std::vector<PartAbove> parts(left.size());
    const double points = left[0].All.Count;
    if (points < EnoughPoints) return parts;
    for (std::size_t set = 0; set < left.size(); ++set)
        parts[set] = {SumDeviations(left[set], noise, points), WaveMisfitOf(left[set], left[0]).Deviations};
    return parts;
}

// How far the sum of squares may fall at most by another curve through a set, which is made of waves of some
// length: by its long ones, and by what those of middle length stand above a deviation less than their noise.
double MostToGain(const Residuals& part, double noise) {
    const double count = part.Parts.Middle.Count;
    const double byChance = noise * (count - std::sqrt(2.0 * count));
    return part.Parts.Long.Sum + std::max(part.Parts.Middle.Sum - byChance, 0.0);
}

// Whether parts that stand above the noise by a little may hide another minimum.
bool IsWorthAGlance(const Workspace& fit, const std::vector<Residuals>& left,
                    const std::vector<PartAbove>& parts, double noise) {
    const Sureness sure = ByChanceIn(FitsWithAGlance, parts.size() - 1);
    double gain = 0.0;
    for (std::size_t part = 0; part < parts.size(); ++part)
        if (IsAbove(parts[part], sure)) gain += MostToGain(left[part], noise);
    return gain > (1.0 - MuchLower) * fit.SumSq;
}

// What a part leaves above the noise, in all or in long waves: about as much as a better curve would take up.
double Excess(const Residuals& part, double noise) {
    return std::max(part.All.Sum - noise * part.All.Count,
                    part.Parts.Long.Sum - noise * part.Parts.Long.Count);
}

// Of all points together, or of the sets that stand out as in one fit of twenty. Of many points the long
// waves stand out by what is next to nothing in the sum.
bool LeavesAHundredth(const std::vector<Residuals>& left, const std::vector<PartAbove>& parts) {
    constexpr double AHundredth = 0.01;
    const double noise = left[0].Parts.Others.Mean();
    const double enough = AHundredth * left[0].All.Sum;
    if (IsAbove(parts[0], ByChanceIn(FitsInSomeDoubt, 1)) && Excess(left[0], noise) > enough) return true;
    const Sureness sure = ByChanceIn(FitsInSomeDoubt, parts.size() - 1);
    double excess = 0.0;
    for (std::size_t set = 1; set < parts.size(); ++set)
        if (IsAbove(parts[set], sure)) excess += Excess(left[set], noise);
    return excess > enough;
}

// What stands out in its sum by the noise of its own set does by that of all, which is the lower one.
std::optional<Misfit> FindMisfitInSum(const std::vector<Residuals>& left) {
    const double points = left[0].All.Count;
    const auto find = [&](auto&& noise) {
        return PartThatStandsOut(left.size(), ForASentence.InSum, [&](std::size_t part) {
            return SumDeviations(left[part], noise(part), points);
        });
    };
    const double ofAll = NoiseVariance(Work);
    if (!find([&](std::size_t) { return ofAll; })) return std::nullopt;
    const Variances noise = NoiseBySet(left);
    const auto set = find([&](std::size_t part) { return noise[part]; });
    return set ? std::optional(Misfit{*set, false, left[*set].All.Mean(), noise[*set]}) : std::nullopt;
}

std::optional<Misfit> FindMisfit() {
    const std::vector<Residuals> left = ResidualsOf(Work);
    if (left[0].All.Count < EnoughPoints) return std::nullopt;
    if (const auto misfit = FindMisfitInSum(left)) return misfit;
    if (const auto set = PartThatStandsOut(left.size(), ForASentence.InWaves, [&](std::size_t part) {
            return WaveMisfitOf(left[part], left[0]).Deviations;
        }))
        return Misfit{*set, true, left[*set].Parts.Long.Mean(), WaveMisfitOf(left[*set], left[0]).Noise};
    return std::nullopt;
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

double NoiseVariance(const Workspace& fit) {
    return &fit == &Work ? MeasuresOfWork().Noise : MeasuredNoise(fit, 1)[0];
}

std::vector<double> DeviationsOfSets(const Workspace& fit) {
    std::vector<double> deviations;
    for (const PartAbove& part : PartsAbove(ResidualsOf(fit), NoiseVariance(fit)))
        deviations.push_back(std::max(part.InSum, part.InWaves));
    return deviations;
}

Doubt DoubtAbout(const Workspace& fit) {
    const std::vector<Residuals> left = ResidualsOf(fit);
    const double noise = NoiseVariance(fit);
    const std::vector<PartAbove> parts = PartsAbove(left, noise);
    const auto isClear = [](const PartAbove& part) { return IsAbove(part, ForALook); };
    if (std::any_of(parts.begin(), parts.end(), isClear)) return Doubt::Clear;
    if (LeavesAHundredth(left, parts)) return Doubt::Some;
    return IsWorthAGlance(fit, left, parts, noise) ? Doubt::Slight : Doubt::None;
}

bool LeavesMoreThanNoise(const Workspace& fit) {
    return DoubtAbout(fit) == Doubt::Clear;
}

// [decision: misfit-remark]
std::string MisfitText() {
    if (!StandsAtMinimum()) return "";
    const std::optional<Misfit> misfit = FindMisfit();
    if (!misfit) return "";
    return "The fit leaves more than the noise of the data" + PlaceText(*misfit) +
           (misfit->InWaves ? " (long waves in the residuals " : " (rms ") + RmsText(misfit->MeanSquare) +
           ", noise " + RmsText(misfit->Noise) +
           "): a wrong model, or another minimum. Search for Other Minima.";
}

std::string MisfitStateText() {
    if (!StandsAtMinimum()) return "";
    const std::optional<Misfit> misfit = FindMisfit();
    return misfit ? ", more than the noise" + PlaceText(*misfit) : "";
}

} // namespace Quillon
