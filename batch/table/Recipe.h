#pragma once
// A job as a recipe, before any row of it is run: what its rows would write, and where that goes.

#include "batch/job/JobTable.h"
#include "batch/options/Options.h"

#include <string>
#include <vector>

namespace Quillon {

// A table that cannot be run: a RuntimeError of the program with the reason in one line.
[[noreturn]] void FailTable(const std::string& reason);

// The options of the run of one row: its cells stand in the paths of the outputs, and nothing of the table is
// left.
Options OptionsOfRow(Options options, const JobRow& row);

// What is wrong with a recipe, the text of a job, over rows of a table is a RuntimeError in one line: a name
// in braces without a column, a job and outputs without any, a column that is named like one of the summary,
// outputs of two rows under one name, and an output, of a row or the summary, that would take the place of
// the job, of the table or of what any of the rows reads. A row whose job is none is passed over: it fails by
// itself, later.
void CheckRecipe(const Options& options, const std::string& job, const JobTable& table,
                 const std::vector<long>& rows);

} // namespace Quillon
