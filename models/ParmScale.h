#pragma once
// The road between internal parameters and displayed ones: a factor for masses, stoichiometries, the
// virial coefficient and zero offsets, an addend for everything that is held as a natural logarithm.

#include <cstdint>

namespace Quillon {

// True for slots whose displayed value is internal + ParmScale, false where it is internal * ParmScale.
bool IsAdditiveSlot(long slot);

// A value of a slot in user units from its internal value, and back, with Work.ParmScale. The work is
// double precision; the results are rounded to single.
float ToUserUnits(long slot, float internal);
float ToInternal(long slot, float displayed);

// Rebuilds Work.ParmScale from units, coefficients, first set and model. Fills masses and stoichiometries
// that are exactly 0 with their defaults first. A coefficient that is not positive where a logarithm needs
// it is a RuntimeError.
void BuildParmScale();

// Work.Bounds in user units as a fresh start has them, for the current model and units. A change of units
// carries the bounds that stand instead (RefreshUnits).
void SetDefaultBounds();

// After a change of units or coefficients: names, formats and scale are rebuilt, and every bound is carried
// over so that its internal value stays; one that the new unit has no number for stands at the end of the
// range of singles.
void RefreshUnits();

// After a change of model or of separate constants, in units that stand: slots that stand at their former
// default bounds, or that hold a constant now and did not before (or the other way round), take the default
// bounds of the new model; bounds that the user set stay.
void CarryBoundsToModel(std::int16_t oldModel, std::int16_t oldSeparateK);

// True when masses are shown in kDa (buoyant or true), false for sigma.
bool MassInKiloDalton();

} // namespace Quillon
