#pragma once
// A resampling for other programs: its record in the results, and its fits as CSV.
//
// The record: kind, count, failed, seed, level, block_lengths (for each set; null for the parametric kind),
// parameters (slot, name, mean, sd, median, lower, upper, lower_error, upper_error: the standard errors of
// the two limits), correlations (slots, matrix: lower triangle), derived (slot, name, quantity, unit, the
// same numbers, and correlations: with each of the slots), limits (how well they are known, in words). Units
// of display; what does not exist is null.
//
// The CSV: draw,converged,sum_of_squares and a column slot_N for each fitted slot, a row for each fit; one
// that has failed has empty values.

#include "studies/methods/Resampling.h"

#include <string>

namespace Quillon {

std::string ResamplingJson(const Resampling& resampling);
std::string DrawsCsv(const Resampling& resampling);

// "slot,name" and a column "slot_N" for each fitted slot; a row for each with its correlations, all of the
// symmetric table, and a row for each derived quantity. The head alone where no fit has converged.
std::string CorrelationsCsv(const Resampling& resampling);

} // namespace Quillon
