#pragma once
// Jobs on the desktop.

#include <string>

namespace Quillon {

// Makes the open analysis that of a job: its data, model, units and parameters, and the fit that it asks for,
// by the functions of quillon-fit. What is set for the desktop stays. False when the job cannot be read or
// left no fit; a job that cannot be read leaves the analysis as it was. Why is told.
bool OpenJobFile(const std::string& path);

} // namespace Quillon
