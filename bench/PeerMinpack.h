#pragma once
// MINPACK in C on a problem.

#include "bench/Problem.h"

namespace Quillon::Bench {

Solution RunMinpack(const Problem& p);

} // namespace Quillon::Bench
