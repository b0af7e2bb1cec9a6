#pragma once
// Signals of absorbance scans are absorbance units, those of interference scans fringes: the units of
// concentrations know both kinds.

namespace Quillon {

// The code of the units of the same kind (signal, weight, molar) for the optics of the present scans.
int UnitsOfOptics(int concUnits);

// Takes Work.ConcUnits over to the optics of the present scans, with names, scales and the default bounds
// that belong to them: a zero offset of six fringes is none of six absorbance units.
void UnitsFollowOptics();

} // namespace Quillon
