#pragma once
// Ceres Solver on a problem. linearSolver is "schur", "dogleg", "dense" or "sparse".

#include "bench/Problem.h"

#include <string>

namespace Quillon::Bench {

// With hand-written derivatives, and with the library's own numeric differences.
Solution RunCeresAnalytic(const Problem& p, const std::string& linearSolver);
Solution RunCeresNumeric(const Problem& p);

} // namespace Quillon::Bench
