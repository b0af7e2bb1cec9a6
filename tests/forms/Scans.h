#pragma once
// Scan files of a simulated experiment, for the table of data sets.

#include <string>
#include <vector>

namespace Quillon {

inline constexpr double TrueMass = 40.0;    // kDa
inline constexpr double TrueConstant = 3.0; // dimer over monomer squared, as signal

// Three scans of a monomer-dimer system at three speeds, in channel A of a six-channel cell; written into a
// folder. The true parameters are those above.
std::vector<std::string> WriteScans(const std::string& folder);

// The same as data in the workspace at once, accepted and with model 2 chosen: where the road that leads
// there is not what a test is about. Menus are brought up to date.
void UseSimulatedData();

// The same with as many sets as the table holds, twelve points each.
void UseAllSets();

// A single species in one set, whose residuals may be written as a baseline, and its fit.
void UseOneSet();

// A fit of those data that has converged; the results have not been shown.
void UseFinishedFit();

// The radii of channel A that the scans are meant for.
void UseChannelRadii();

} // namespace Quillon
