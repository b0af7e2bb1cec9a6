#pragma once
// The report's first part: model, data sets, and the constants that its numbers are based on.

#include <string>
#include <vector>

namespace Quillon {

// The lines before they are wrapped and paged, of the analysis that stands. The width of a line in characters
// decides what shares one with what.
std::vector<std::string> PrintModelText(int columns);

} // namespace Quillon
