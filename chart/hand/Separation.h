#pragma once
// Separation of data sets: each set is shifted by its own amount, so that curves that lie on each other can
// be told apart.

#include "chart/records/Records.h"
#include "platform/Arrays.h"

namespace Quillon {

// The values of Chart.SeparateMode.
namespace SeparateModes {
inline constexpr std::int16_t Both = 0, AlongX = 1, AlongY = 2;
}

// True when sets move in pairs: where they alternate as symbols and lines, each line goes with its symbols.
bool SeparatesPairs();

// Sets in SetShift: the number of sets, or of such pairs.
int SeparationCount();

// Shifts the stored data of each set by SetShift along X, Y or both after SeparateMode, scales and lays out
// afresh, and shows the graph. Shifts are in the units that the scale shows, on a logarithmic one in
// logarithms; a manual or zoomed scale becomes an autorange, and so do the scales that LastZoom leads back to
// along the axis. They add up; a point without a value stays so,
// and one that leaves the range of a single is missing.
void ApplySeparation();

// The same with amounts of its own for each axis, by set or pair from 1; an empty list leaves its axis alone.
void SeparateBy(const OneBased<float>& alongX, const OneBased<float>& alongY);

// True when sets stand shifted along one of the axes of a mode.
bool IsSeparated(std::int16_t mode);

// Takes everything that was added along the axes of a mode back, bit for bit, and shows the graph.
void TakeBackSeparation(std::int16_t mode);

} // namespace Quillon
