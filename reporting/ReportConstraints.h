#pragma once
// The report's last part: how well the fit met the concentration constraints, and which zero offsets were
// tied.

#include <string>
#include <vector>

namespace Quillon {

// The lines before they are wrapped and paged, of the fit that stands; empty without constraints and ties.
std::vector<std::string> PrintConstraintText();

} // namespace Quillon
