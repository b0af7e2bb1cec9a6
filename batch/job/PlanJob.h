#pragma once
// A job planned in place of a fit: the errors to be expected of its design, and of others by its section
// [plan].

#include "batch/job/JobFile.h"

#include <string>

namespace Quillon {

// The table as CSV: slot,name,value,expected_error, with a section [plan] speed_factor,loading_factor before
// them; a parameter that a design does not determine has an empty error. The values of the job are the truth;
// a parameter that it does not list is an error of the job, zero offsets apart, and so is a noise that is not
// above 0. A design that has no errors is told. Empty when none has any, and after a cancel, which has been
// told.
std::string PlanJob(const Job& job);

} // namespace Quillon
