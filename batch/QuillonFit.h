#pragma once
// The program quillon-fit, without its main.

#include <string>
#include <vector>

namespace Quillon {

inline constexpr int ExitDone = 0;  // the fit converged and all was written
inline constexpr int ExitBad = 1;   // command line, job or file
inline constexpr int ExitNoFit = 2; // not converged, singular, arithmetic, cancelled

// Runs the program with the arguments behind its name and gives its exit status. Nothing is thrown.
int RunQuillonFit(const std::vector<std::string>& arguments);

} // namespace Quillon
