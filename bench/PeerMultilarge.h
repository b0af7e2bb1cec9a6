#pragma once
// The least squares of the GNU Scientific Library for many rows on a problem.

#include "bench/Problem.h"

namespace Quillon::Bench {

Solution RunMultilarge(const Problem& p);

} // namespace Quillon::Bench
