#pragma once
// The analysis as a job of the batch program: what was fitted by mouse can be repeated, changed and run in
// numbers. The job starts from the values that the latest fit started from, as they stand inside the program,
// so that it gives the same fit bit for bit; without a fit of this session (one restored from a file, or none
// yet) from the present values.

#include "workspace/records/Workspace.h"

#include <functional>
#include <string>

namespace Quillon {

// How a job goes on behind its fit.
struct JobSettings {
    PerSlot<float> Start; // the values to start from; empty: those above
    long Restarts = 0;    // with this seed
    std::uint64_t Seed = 1;
    std::function<std::string(const std::string& path)> FileName; // how the job names a file; none: as it is
};

// The text of the job. Sections of sets have the numbers of their rows.
std::string AnalysisAsJob(const JobSettings& settings = {});

// path as a job in directory names it: without the directory where the file lies in it or below, else as it
// is.
std::string NameFrom(const std::string& directory, const std::string& path);

// The menu command: asks for a file and writes the job. A failure is told.
void SaveAsJob();

} // namespace Quillon
