#pragma once
// Where the outputs of a run go, seen before it starts: that none takes the place of what the run reads, or
// of another output, and that each can be written.

#include "batch/job/JobFile.h"
#include "batch/options/Options.h"

#include <string>
#include <vector>

namespace Quillon {

// A file that the run reads.
struct RunInput {
    std::string Path;
    std::string Section, Key; // where the job names it; "" the job or the saved fit itself
};

// The scans and baselines of a job, and the job itself.
std::vector<RunInput> InputsOf(const Job& job);

// True when two outputs are one, however they are spelt; "-" is the standard output, and whatever file that
// leads to.
bool IsSameOutput(const std::string& a, const std::string& b);

// An output that cannot be written is a RuntimeError with one line: better before a long fit than after it.
void CheckOutputPlaces(const Options& options);

// The name of the output that would write over an input, by device and number of the file, so that links of
// either kind do not hide it; "" when there is none. A saved fit alone may be saved over.
std::string OutputOver(const Options& options, const std::string& input, bool maySave);

// An output that would write over an input is a RuntimeError with one line. Nothing has been read but the
// job.
void CheckInputsStay(const Options& options, const Job& job);
void CheckGraphFilesStay(const Options& options); // those that pictures are made of, with a job or without
void CheckSavedFitStays(const Options& options);

} // namespace Quillon
