#pragma once
// What the report warns of before a reader takes its numbers for those of the sample: constants that nobody
// has set, and temperatures that change sigma from set to set.

#include <string>
#include <vector>

namespace Quillon {

// The constants that the units in use rest on (v-bar and density of molar masses; the coefficient of the
// concentrations) and that stand at the values of a program that knows nothing of the sample, in one line;
// and a line for each set whose temperature does not go with that of the first one. None where there is
// nothing to say. Of species B only in models that have one.
std::vector<std::string> ConstantWarnings();

} // namespace Quillon
