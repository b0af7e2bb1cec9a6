#pragma once
// How much more viscous than water a solution is. Factors of solutes are multiplied, those of the salts
// together being one, 1 + sum B c with the B coefficients of the ions at 25 degrees (H. D. B. Jenkins and Y.
// Marcus, Chem. Rev. 95 (1995) 2695). Of the amount c, mol/L (K. Kawahara and C. Tanford, J. Biol. Chem. 241
// (1966) 3228, 25 degrees):
//
//     urea                    1 + 0.0375 c + 0.00315 c^2 + 0.00031 c^3
//     guanidinium chloride    1 + 0.005 c^0.5 + 0.008 c + 0.00254 c^3
//
// Glycerol: N.-S. Cheng, Ind. Eng. Chem. Res. 47 (2008) 3285. Sucrose, of the mole fraction y, at t degrees
// Celsius (E. J. Barber, Natl. Cancer Inst. Monogr. 21 (1966) 219, to 48 percent by weight), in mPa s:
//
//     log10(viscosity) = A(y) + B(y) / (t + C(y)),
//     C = 146.06635 - 25.251728 (1 + (y / 0.070674842)^2)^0.5,   A and B polynomials of y

#include "planning/solution/Buffer.h"

namespace Quillon {

struct RelativeViscosity {
    double Value = 1.0;   // over water of the same temperature
    double KnownTo = 0.0; // part of the whole that it may miss
};

// At a temperature, degrees Celsius, 0 to 50 with anything dissolved.
RelativeViscosity ViscosityOf(const std::vector<Solute>& solutes, double celsius);

} // namespace Quillon
