#pragma once
// The results of a run as JSON (RFC 8259, UTF-8): one object, its members in a fixed order.
//
//     program, version            who wrote it
//     converged, message, iterations
//     model                       number, name, nonideal, separate_k
//     sum_of_squares, rms_residual, degrees_of_freedom, runs_z
//     confidence                  level, ratio, searched
//     parameters                  a record for each slot that the model uses: slot, name, unit, state
//                                 (fitted, held or tied), internal, value, error, lower, upper, at_bound
//     correlations                slots in the order of the fitted parameters, matrix (lower triangle)
//     sets                        what was measured and how well it is fitted (batch/outputs/MeasuredJson.h)
//     derived                     Kd, log10 K and Delta G of the association constants, with limits
//     starts                      behind restarts alone: failed, minima (sum_of_squares, count, parameters:
//                                 the fitted ones before slot 8, value by slot), lowest first, the first fit
//                                 counted
//     resampling                  behind --resample alone (batch/outputs/ResamplingOutputs.h)
//     reasons                     only where a number could not be made: its name, and what went wrong
//
// value, error, lower and upper are in user units, lower and upper are the confidence limits. Numbers read
// back give the same bits. What does not exist is null: statistics of a fit that did not converge, the error
// of a held parameter, limits that were not searched. There is no NaN.

#include "batch/outputs/MeasuredJson.h"
#include "studies/methods/OtherMinima.h"
#include "studies/methods/Resampling.h"

#include <string>

namespace Quillon {

// The text for the analysis in the workspace. Runs the runs test and the correlations of a converged fit;
// message is what the program said of one that did not converge; starts is what restarts have met;
// files is how a job has named the scans; resampled is what resampling has found.
std::string ResultsJson(const std::string& message, const MinimaMet* starts = nullptr,
                        const FilesAsWritten& files = {}, const Resampling* resampled = nullptr);

} // namespace Quillon
