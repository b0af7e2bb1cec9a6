#pragma once
// From the folder or the archive of a run to the table of data sets.

#include <string>

namespace Quillon {

// The menu command: asks for an archive of a run, or for any scan in its folder.
void ReadRunCommand();

// Sorts the run at a place, shows it (commands/RunForm.h) and opens the table of data sets with what was
// ticked; scans that stand in it are replaced after a question. Scans of an archive are laid into a new
// folder NAME-scans beside it first, or NAME-scans-2 where that is taken. A place that cannot be read is
// told.
void ReadRunAt(const std::string& place);

// The command: how the scans of a set's cell, speed and wavelength came to the last one. Asks for the set,
// sorts the folder that its scan lies in and shows the graph (graphs/kinds/ApproachGraph.h); why there is
// none is told.
void GraphApproach();

// The archives by their endings: .tar, .tar.gz, .tgz, .zip.
bool NamesArchive(const std::string& path);

} // namespace Quillon
