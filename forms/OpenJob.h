#pragma once
// Jobs on the desktop.

#include <string>

namespace Quillon {

// Makes the open analysis that of a job: its data, model, units and parameters, and the fit that it asks for,
// by the functions of quillon-fit. What is set for the desktop stays. The monitor shows the fit and the
// searches behind it, and cancels them. False when the job cannot be read or left no fit; a job that cannot
// be read, or whose fit was cancelled, leaves the analysis as it was. Why is told.
bool OpenJobFile(const std::string& path);

} // namespace Quillon
