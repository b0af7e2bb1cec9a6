#pragma once
// The studies that options ask for: many fits behind the one of the job (studies/).

#include "batch/job/RunJob.h"
#include "batch/options/Options.h"

namespace Quillon {

// What an option needs and the job does not have is a RuntimeError with one line, before anything is fitted.
// The job is nullptr for a saved fit.
void CheckStudies(const Options& options, const Job* job);

// Runs them behind the fit of the job, whatever its end was, with lines of progress; Work stays as it is. One
// that Ctrl-C has cancelled is told, leaves no result and makes the run incomplete.
void RunStudies(const Options& options, const Job* job, RunEnd& end);

} // namespace Quillon
