#pragma once
// Goodness of fit: runs test and correlations. Residuals come from fit/Sums.h, errors of the parameters from
// fit/Undetermined.h.

#include "chart/scale/AxisScale.h" // LogBase10, which displays and charts share

#include "workspace/records/Counts.h"

#include <cstdint>
#include <vector>

namespace Quillon {

// Sets Work.RunsZ from the signs of the residuals. Counts sign changes within the sets, so that the count
// is lower than the textbook number of runs by the number of sets. 0 or 1 points are a RuntimeError.
void RunsTest();

// Points by the sign of their residual, and how often the sign changes from one point of a set to the next.
struct SignCounts {
    long Positive = 0, Negative = 0, Changes = 0;

    // Counts a point; former is the sign of the one before it in its set, its own where there is none.
    void Add(bool positive, bool former) {
        Positive += positive;
        Negative += !positive;
        Changes += positive != former; // [decision: changes-not-runs]
    }
};

// The same Z of the residuals of one set, by their signs in order; at least two of them.
double RunsZFrom(const SignCounts& counts);

// value rounded to a number of significant digits, half away from zero; 0 stays 0.
double RoundSignificant(double value, int digits);

// Fills the lower triangle of Work.CorrMatrix from NormMatrix, the inverse at the solution, and counts the
// pairs above HighCorrelation and VeryHighCorrelation in magnitude. A pair above the second one counts as
// high too.
void ComputeCorrelations(std::int16_t& highCount, std::int16_t& veryHighCount);

} // namespace Quillon
