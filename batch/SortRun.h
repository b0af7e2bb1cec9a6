#pragma once
// --sort: what lies in the folder or archive of a run, and the job of its last scans.

#include "batch/options/Options.h"

#include <string>
#include <utility>
#include <vector>

namespace Quillon {

// What a sorting hands back to be written.
struct SortOutputs {
    std::string Csv;
    std::vector<std::pair<std::string, std::string>> Graphs; // path and bytes
};

// Sorts the run that the options name, writes the job that they want with the scans of an archive beside it,
// and makes the CSV and the graphs. What the user is to be told goes to the console. A failure is a
// RuntimeError with one line; nothing has been written then.
SortOutputs RunSorting(const Options& options);

} // namespace Quillon
