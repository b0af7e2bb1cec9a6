#pragma once
// Separation of data sets: each set is shifted by its own amount.

namespace Quillon {

// Sets in SetShift: the number of sets, or of pairs where sets alternate as symbols and lines.
int SeparationCount();

// Shifts the stored data of each set by SetShift along X, Y or both after SeparateMode, scales and lays out
// afresh, and shows the graph.
void ApplySeparation();

} // namespace Quillon
