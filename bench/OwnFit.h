#pragma once
// The program's own engine on the problems of the benchmarks.

#include "bench/Problem.h"

namespace Quillon::Bench {

// Puts the problem into the workspace, at the start; then RunFit is the program's own solver.
void LoadWorkspace(const Problem& p);
Solution RunQuillon(const Problem& p);

} // namespace Quillon::Bench
