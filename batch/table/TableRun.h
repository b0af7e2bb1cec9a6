#pragma once
// A job as a recipe: one fit for each row of a table, and a line about each of them.
//
// The summary is CSV: the number of the row, the columns of the table, then status, reason, converged,
// minimum, sum_of_squares, rms, degrees_of_freedom, runs_z, and for each parameter before slot 8 that the
// model uses its name and "NAME error", in the order in which rows first have them. Each row is a run of its
// own: its line hangs on nothing but the row, so that a table may be shared out by rows and put together
// again.

#include "batch/job/RunJob.h"
#include "batch/options/Options.h"

#include <functional>
#include <string>

namespace Quillon {

// One run with the outputs of a row; hands back its exit status and tells how the fit ended. The fit stands
// in Work then. What is wrong with the row is a RuntimeError.
using RowRun = std::function<int(const Options& options, const JobRow& row, RunEnd& end)>;

// Runs the rows wanted, as many at a time as there are cores or options.Threads says, and hands back the
// summary. status becomes 2 when a row failed. What is wrong with the recipe or the table, before any fit, is
// a RuntimeError in one line: a placeholder without a column, a job and outputs without any placeholder, a
// column that is named like one of the summary, outputs of two rows under one name. So is Ctrl-C.
std::string RunTable(const Options& options, const RowRun& run, int& status);

// The summary of all rows from those of parts, given by their names: the bytes that a run of the whole table
// writes. Parts of different tables, a row that stands twice and one that is missing are a RuntimeError.
std::string MergedSummary(const std::vector<std::string>& paths);

} // namespace Quillon
