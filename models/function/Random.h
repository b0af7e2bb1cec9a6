#pragma once
// Normal deviates: the polar method (G. Marsaglia and T. A. Bray, SIAM Review 6, 1964) on the uniform
// generator of the seam, shuffled (C. Bays and S. D. Durham, ACM Transactions on Mathematical Software 2,
// 1976).

#include <cstdint>

namespace Quillon {

// Forgets the spare deviate and the table of the shuffle, so that the next deviate seeds the generator and
// depends on nothing that was drawn before. Run at the start of each simulation. What is kept between
// deviates belongs to the thread.
void RestartRandom();

// A normal deviate of mean 0 and standard deviation 1. seed is handed on to ShuffledUniform.
double GaussianNoise(std::int16_t& seed);

// A uniform number on [0, 1). A seed below 0, or a first call, seeds the generator of the seam, discards 97
// numbers, fills the table with 97 more and sets seed to 1.
float ShuffledUniform(std::int16_t& seed);

} // namespace Quillon
