#pragma once
// The length of blocks in which residuals go together.

#include <vector>

namespace Quillon {

// The block length for residuals in order of the radius, 1 or more: the optimal one for a mean, from the
// autocovariances up to where they vanish in noise (D. N. Politis and H. White, Econometric Reviews 23 (2004)
// 53, with the constant of A. Patton, D. N. Politis and H. White, ibid. 28 (2009) 372, for circular blocks).
long BlockLength(const std::vector<double>& residuals);

// The length to draw limits with: twice that one, no more than a third of the residuals; 1 stays 1. What is
// best for a variance trades what blocks cut off against how much they scatter; limits suffer from the first
// alone, since the second is allowed for below (Y. Sun, P. C. B. Phillips and S. Jin, Econometrica 76 (2008)
// 175).
long BlockForLimits(const std::vector<double>& residuals);

// By how much residuals in blocks are stretched so that limits of 95% hold what they say: the variance that
// few blocks tell is too small, since their mean is taken off, and is not well known. The quotient of the
// critical values with and without that, 1 + 1.515 b + 0.212 b^2 - 0.272 b^3 with b the block as a share of
// the points (N. M. Kiefer and T. J. Vogelsang, Econometric Theory 21 (2005) 1130, table 1, Bartlett, 97.5%).
// 1 of single residuals.
double BlockStretch(long block, long points);

} // namespace Quillon
