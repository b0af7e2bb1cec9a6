#pragma once
// Experiments with a known truth as files: scans and the job that fits them.

#include "tests/support/ScriptedPlatform.h"
#include "tests/support/Simulate.h"

#include <string>

namespace Quillon {

// The scan of a row as the instrument writes it, each number with all its digits.
std::string ScanText(const Workspace& w, long row);

// Writes the scans of a simulated experiment into the script's directory and gives the text of a job that
// fits it: model, units, constants, ranges, constraints. Parameters are not in it.
std::string JobTextOf(const Workspace& truth, Script& script);

// The section [parameters] with every slot in use at its true value, fitted or held as the truth has it.
std::string ParameterTextOf(const Workspace& truth);

// A small experiment: monomer and dimer, two sets of so many points.
ModelCase SmallCase(int points = 40);

} // namespace Quillon
