#pragma once
// Density and viscosity of a buffer from what is dissolved in a litre of it.
//
// Density. Volumes add up: a solute of the concentration c (mol/L) and the molar mass M takes the volume
// c phi, and water the rest,
//
//     rho = sum c M + rho_w (1 - sum c phi)
//
// Salts: phi = V + S w sqrt(I), with V the volume at infinite dilution, the sum of those of the ions (F. J.
// Millero, Chem. Rev. 71 (1971) 147, 25 degrees; of Na, K and Cl at 0 and 50 degrees as well, a parabola
// through the three), I the ionic strength, w = sum n z^2 / 2 of the salt and S = 1.868 mL/mol (mol/L)^-1/2,
// the limiting slope at 25 degrees (O. Redlich and D. M. Meyer, Chem. Rev. 64 (1964) 221). Urea and
// guanidinium chloride of the weight fraction W: rho / rho_w = 1 + a W + 0.0330 W^2, a = 0.2658 and 0.2710,
// 25 degrees (K. Kawahara and C. Tanford, J. Biol. Chem. 241 (1966) 3228). Glycerol: A. Volk and C. J.
// Kaehler, Experiments in Fluids 59 (2018) 75. Sucrose: 0.6157 + 0.0098 W + 0.0170 W^2 mL/g, which the
// densities of the Handbook of Chemistry and Physics (concentrative properties of aqueous solutions, 20
// degrees) give to 60 percent.
//
// Viscosity: planning/solution/Viscosity.h.
//
// A solute whose volume is in none of these sources (Tris, HEPES) is not in the list: a guess would look like
// a number. Such a buffer is measured.

#include "planning/solution/Solutes.h"

#include <string>
#include <vector>

namespace Quillon {

struct BufferValues {
    double Density = 0.0;          // g/mL
    double DensityKnownTo = 0.0;   // g/mL: what volumes at 25 degrees and the limiting slope may miss
    double Viscosity = 0.0;        // mPa s
    double ViscosityKnownTo = 0.0; // mPa s: what coefficients of 25 degrees may miss
    std::string DensitySource, ViscositySource; // of all that has gone in
};

// Of a solution at a temperature, degrees Celsius: 0 to 100 for water, 0 to 50 with anything in it. Outside
// of it is a RuntimeError in words; so is more in a litre than water can hold.
BufferValues ValuesOfBuffer(const std::vector<Solute>& solutes, double celsius);

} // namespace Quillon
