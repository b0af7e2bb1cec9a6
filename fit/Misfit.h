#pragma once
// Whether a fit leaves more than the noise of its data, which a minimum does for one of two reasons: the
// model is another one, or the minimum is.
//
// The noise is read off the data by themselves, by how far a point lies from the line between its two
// neighbours: with w the share of the way from the one to the other, y - (1 - w) y1 - w y2 has the variance
// of a point times 1 + w^2 + (1 - w)^2. The median of the squares over 0.4549, that of chi-square with one
// degree of freedom, is the variance; of few points that lie where the signal bends it takes no notice. Where
// many do, the residuals tell it better, in the same way; the lower one of the two is taken.
// Residuals stand out where their mean square is so many standard deviations above that: sqrt(2 / n) of the
// mean of n squares, and sqrt(9 / N) of the noise, which N points tell. They stand out as well where they run
// in long waves that noise does not have (fit/LongWaves.h), which tells of a sum that is a tenth too high
// where the mean square tells of one that is half too high. Each fitted parameter takes up one of the long
// waves. Points count with the weight of their set (fit/equations/NoiseWeights.h); pseudo-points do not.
// Fewer than twenty points tell nothing.

#include <string>
#include <vector>

namespace Quillon {

struct Workspace;

// The variance of a point, in signal units of the first set squared, by the data in Work and the fitted
// values of fit; at least what singles know (LeastVariance, fit/equations/NormalEquations.h).
double NoiseVariance(const Workspace& fit);

// Of the sum of squares at a minimum; what is found below that is another one.
inline constexpr double MuchLower = 0.999;

// How much there is to be doubted about a fit of the data in Work.
enum class Doubt {
    None,
    // Sets stand above the noise as far as the farthest one of a fit does by chance in one of five, and what
    // lies in the waves of their residuals that a curve could take up would make another minimum. Of many
    // points a set may stand out by chance and have nothing to give.
    Slight,
    // All points together, or sets, stand above it as far as by chance in one of twenty, and what they leave
    // above the noise, in long waves or in all, is a hundredth of the sum of squares.
    Some,
    Clear // LeavesMoreThanNoise
};
Doubt DoubtAbout(const Workspace& fit);

// Of a fit of the data in Work: true when all points together, or those of one set, lie further from it than
// their noise by four standard deviations, or in long waves by 3.2. A set that is caught hardly shows in the
// sum of many. It is asked where looking further costs time and nothing else.
bool LeavesMoreThanNoise(const Workspace& fit);

// Of a fit of the data in Work: by how many standard deviations each set lies above the noise, in the mean
// square or in long waves, whichever is more; by set from 1, all points together at 0. Zeros for fewer than
// twenty points.
std::vector<double> DeviationsOfSets(const Workspace& fit);

// What is to be said of the fit in Work when it has converged at a minimum and leaves more than the noise by
// five standard deviations, or in long waves by four, where a set that is noisier than others is measured by
// its own noise: a sentence with both as root mean squares, with the set where only one shows it. Empty for
// most, and where there is no such fit.
std::string MisfitText();

// The same in a few words behind the rms residual: ", more than the noise in set 3".
std::string MisfitStateText();

} // namespace Quillon
