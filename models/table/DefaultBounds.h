#pragma once
// The default bounds of the parameters in user units, and the way of bounds through a change of units or
// model.

#include <cstdint>

namespace Quillon {

// Work.Bounds in user units as a fresh start has them, for the current model and units. A change of units
// carries the bounds that stand instead (RefreshUnits).
void SetDefaultBounds();

// After a change of units or coefficients: names, formats and scale are rebuilt, and every bound is carried
// over so that its internal value stays; one that the new unit has no number for stands at the end of the
// range of singles. Where 1 - vbar rho changes its sign, the bounds of a mass change places; where they would
// leave no positive molar mass, they are the default ones.
void RefreshUnits();

// After a change of model or of separate constants, in units that stand: slots that stand at their former
// default bounds, or that hold a constant now and did not before (or the other way round), take the default
// bounds of the new model; bounds that the user set stay.
void CarryBoundsToModel(std::int16_t oldModel, std::int16_t oldSeparateK);

} // namespace Quillon
