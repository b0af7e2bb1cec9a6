#pragma once
// How long a column takes to equilibrium, from the mass that is expected.
//
//     sigma = M (1 - v-bar rho) w^2 / (R T)                                  (Svedberg and Pedersen 1940)
//     D     = k T / (6 pi eta f),  f = (f/f0) R0,  R0 = (3 M v-bar / 4 pi N)^(1/3)   (Stokes, Einstein)
//     s     = sigma D / w^2                                                  (Svedberg)
//
// The estimate (K. E. van Holde and R. L. Baldwin, J. Phys. Chem. 62 (1958) 734): from an evenly filled
// column of the height h and the middle radius r, the rise of concentration from meniscus to bottom is within
// the part epsilon of that at equilibrium after
//
//     t = -h^2 / (D pi^2 U) ln( pi^2 epsilon U^2 / (4 (1 + cosh(1 / (2 alpha)))) )
//     alpha = 1 / (sigma r h),      U = 1 + 1 / (4 pi^2 alpha^2)
//
// which is the slowest term of the solution in a column of parallel walls. The other time is that of the Lamm
// equation in the sector (planning/approach/LammSolver.h), which may start from another speed as well.

#include "planning/approach/LammSolver.h"

namespace Quillon {

// What is expected. Radii in cm, as everywhere.
struct ApproachInput {
    double MassKDa = 0.0;
    double VBar = 0.73;       // mL/g
    double Density = 1.0;     // g/mL
    double Viscosity = 1.002; // mPa s
    double Celsius = 20.0;
    double FrictionalRatio = 1.25; // f/f0: 1.2 to 1.3 for compact proteins
    double Rpm = 0.0;
    double FormerRpm = 0.0; // at whose equilibrium the column is before; 0: evenly filled
    double Meniscus = 0.0, Bottom = 0.0;
    double Epsilon = 0.001; // part of the rise that may still be missing
};

struct ApproachTimes {
    double Sigma = 0.0;     // cm^-2
    double Diffusion = 0.0; // cm^2/s
    double Svedberg = 0.0;  // s, in 1e-13 s
    double SigmaX = 0.0;    // sigma times half the difference of the squared radii: ln of the ratio of ends
    double EstimateSeconds = 0.0; // of van Holde and Baldwin, from an evenly filled column
    double SolvedSeconds = 0.0;   // of the Lamm equation, from the former speed where there was one
};

// A value that makes no experiment (mass, v-bar, viscosity, speed of 0 or below, radii in the wrong order, a
// frictional ratio below 1, a temperature at which water is not liquid, epsilon outside 0 to 1, a solute as
// light as the solvent, which never settles) is a RuntimeError in words.
ApproachTimes TimesOf(const ApproachInput& input);

// Column and constants of that experiment at a speed.
LammColumn ColumnOf(const ApproachInput& input, double rpm);

inline double Hours(double seconds) {
    return seconds / 3600.0;
}

} // namespace Quillon
