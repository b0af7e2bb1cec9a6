#pragma once
// The length of blocks in which residuals go together.

#include <vector>

namespace Quillon {

// The block length for residuals in order of the radius, 1 or more: the optimal one for a mean, from the
// autocovariances up to where they vanish in noise (D. N. Politis and H. White, Econometric Reviews 23 (2004)
// 53, with the constant of A. Patton, D. N. Politis and H. White, ibid. 28 (2009) 372, for circular blocks).
long BlockLength(const std::vector<double>& residuals);

} // namespace Quillon
