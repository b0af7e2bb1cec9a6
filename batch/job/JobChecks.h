#pragma once
// What the settings of a job owe each other.

#include "batch/job/JobFile.h"

namespace Quillon {

// Raises the first contradiction between settings that stand by themselves, as FailJob does.
void CheckJob(const Job& job);

} // namespace Quillon
