#pragma once
// The dense least squares of the GNU Scientific Library on a problem.

#include "bench/Problem.h"

namespace Quillon::Bench {

Solution RunGsl(const Problem& p);

} // namespace Quillon::Bench
