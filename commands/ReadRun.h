#pragma once
// From the folder or the archive of a run to the table of data sets.

#include <string>

namespace Quillon {

// The menu command: asks for an archive of a run, or for any scan in its folder.
void ReadRunCommand();

// Sorts the run at a place, tells what lies there (cell, speed, wavelength, count of scans and whether they
// are at equilibrium) and, after a Yes, opens the table with the last scan of each group. More sets than the
// table holds are told with their counts, and nothing is read. Scans of an archive are laid into a new folder
// NAME-scans beside it first. A place that cannot be read is a RuntimeError.
void ReadRunAt(const std::string& place);

// The archives by their endings: .tar, .tar.gz, .tgz, .zip.
bool NamesArchive(const std::string& path);

} // namespace Quillon
