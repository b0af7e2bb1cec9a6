#pragma once
// Small fits in Work for the tests of the engine.

#include "models/SEDEQ3.h"
#include "workspace/records/Workspace.h"

#include <vector>

namespace Quillon {

// Sets of different speed, path and extinction with a signal near the model's, in plain rows of the table.
void MakeSets(long sets, long points, unsigned seed);

// A model with every slot that it uses fitted, at parameters that give all species some share.
void ChooseModel(int model, bool nonIdeal, bool separateK);

// Numbers the fitted slots of Work.FreeMap in rising order and sizes what hangs on their count.
void NumberFitted();

// A fit that is linear: each set is a level alone, without any signal, so that the fitted value is its zero
// offset and the derivative exactly 1. Offsets start at 0 and are all fitted; sigma and concentrations are
// held. No monitor, wide bounds. The sum of squares of a set of n points at the offset p is
// sum (y - mean)^2 + n (p - mean)^2.
void MakeLevels(const std::vector<std::vector<float>>& levels);

// The offset of a set.
float& Level(long set = 1);

// From the truth in Work.Parms to a start as a user has it who knows the substance roughly: masses a few
// percent off, constants by a third, concentrations by a tenth, less non-ideality than there is, no offsets.
void MoveAwayFromTruth();

} // namespace Quillon
