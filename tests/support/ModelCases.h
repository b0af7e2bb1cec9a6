#pragma once
// Experiments for all 22 models and their options, as data: true parameters that let every species show in
// the signal, and sets of data that determine what is fitted.

#include "tests/support/Simulate.h"

namespace Quillon {

// Every model plain, non-ideal (1 to 5, both signs), with separate constants (2 to 6, 8, 9), with
// concentration constraints, with tied zero offsets, and a few with other widths of the sets' optics, rows of
// the table, temperatures and units. Names are "Model08", "Model08SeparateK", ...
const std::vector<ModelCase>& ModelCases();

// The case of that name; a std::out_of_range without one.
const ModelCase& ModelCaseNamed(const std::string& name);

} // namespace Quillon
