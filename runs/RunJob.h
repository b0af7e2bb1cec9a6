#pragma once
// The job of a sorted run: model 1 over the last scans, as a start.

#include "runs/RunSets.h"

#include <string>

namespace Quillon {

// The text of a job with the sets, masses in sigma: file, channel and radii of each, its extinction ratios
// (as a comment where they are not known) and the set whose concentrations it shares. nameOf
// is how the job names a scan's file.
std::string RunJobText(const SortedRun& run, const std::vector<RunSet>& sets, const ScanPath& nameOf);

// --- scans of an archive -----------------------------------------------------------------------------------

// The name that a scan gets in a folder: that of its file with nothing in it but letters, digits, ".", "_"
// and "-"; scans of other folders that would have the same name get a number in front.
std::vector<std::string> NamesForFolder(const SortedRun& run, const std::vector<std::size_t>& scans);

// Makes the folder and writes the scans named, whose bytes were kept, into it. Whatever fails is a
// RuntimeError that names the file; the files written so far are then gone again. Nothing is overwritten.
void LayScans(const SortedRun& run, const std::vector<std::size_t>& scans,
              const std::vector<std::string>& names, const std::string& folder);

// The scans of sets, as subscripts of run.Scans, each once.
std::vector<std::size_t> ScansOf(const SortedRun& run, const std::vector<RunSet>& sets);

} // namespace Quillon
