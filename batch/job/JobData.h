#pragma once
// From the sets of a job to the data set table and the flat vectors of the fit.

#include "batch/job/JobFile.h"

namespace Quillon {

// Fills the rows of the data set table: scans, channels, ranges, baselines, constraints. Expects a fresh
// workspace with the job's constants. Whatever is wrong with a file or a range is a RuntimeError with the
// job's one line.
void ReadJobData(const Job& job);

} // namespace Quillon
