#pragma once
// Sets of different noise in one fit: absorbance beside interference, a strong scan beside a weak one.
//
// With a noise given for every set of the fit, residuals and derivatives of a set s are multiplied by
//
//     noise(set 1) / noise(s)
//
// before they enter the sums (weighted least squares: Bevington, section 6-3; the weights are the inverse
// variances in units of the first set's). The sum of squares, the rms and the errors that follow from them
// are so in the units of the first set; a loading constraint has the weight of its set. Noises that are all
// equal, or not given, leave every bit as it is.

#include "workspace/records/Counts.h"

namespace Quillon {

// True when every set of the fit has a noise in Work.SetNoise.
bool SetsHaveNoise();

// The factor of a set's residuals; 1 where not every set has a noise.
double NoiseWeight(SetNo set);

// The ratio of the largest noise to the smallest one that NoisesOfFit hands back.
inline constexpr double LargestNoiseRatio = 10.0;

// The noise of each row as the fit that stands shows it: the root mean square of the residuals of the true
// points of its set, raised where it would weigh that set by more than LargestNoiseRatio against the
// noisiest; 0 for rows outside the fit. A set without a residual at all, beside none that has any, has 0 as
// well.
PerRow<float> NoisesOfFit();

} // namespace Quillon
