#pragma once
// A saved fit in place of a job: restored as it stands, and fitted again when asked.

#include "batch/job/RunJob.h"

#include <string>

namespace Quillon {

// True when a file of that name is a saved fit: it ends with ".quil" or ".fit", in any case.
bool NamesSavedFit(const std::string& path);

// Restores the fit in bytes into a fresh workspace. Bytes that are no fit of this program and version are a
// RuntimeError with one line.
void RestoreSavedFit(const std::string& bytes, const std::string& path);

// The end of the restored fit. With refit it is fitted again from the saved parameters, with what was fitted
// then and no question of new guesses, and from restarts random starts behind that; otherwise the end tells
// whether a finished fit stands in the file.
RunEnd RunSavedFit(const std::string& path, bool refit, long restarts);

} // namespace Quillon
