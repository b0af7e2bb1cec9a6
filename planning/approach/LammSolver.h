#pragma once
// The approach to equilibrium of one ideal species in a sector-shaped cell: the equation of O. Lamm (Arkiv
// Mat. Astr. Fysik 21B (1929) no. 2),
//
//     dc/dt = (1/r) d/dr ( r D dc/dr - s w^2 r^2 c )
//
// In the coordinate xi = r^2 / 2, in which a sector has equal volumes in equal steps, with sigma = s w^2 / D:
//
//     dc/dt = d/dxi J,      J = 2 xi D (dc/dxi - sigma c),      J = 0 at meniscus and bottom
//
// Cells of equal width h in xi hold mean concentrations. The flux between two of them is that of the local
// solution with a constant J / (2 xi): with P = sigma h and B(P) = P / (exp(P) - 1),
//
//     J = 2 xi D / h ( B(P) c(right) - B(-P) c(left) )
//
// (D. N. de G. Allen and R. V. Southwell, Quart. J. Mech. Appl. Math. 8 (1955) 129; D. L. Scharfetter and H.
// K. Gummel, IEEE Trans. Electron Devices 16 (1969) 64.) It vanishes where c rises by exp(P) from cell to
// cell: the state of rest of the cells is the equilibrium exp(sigma xi) itself, and what leaves a cell enters
// its neighbour, so that nothing is lost. Time goes by steps of trapezoid and backward differences (R. E.
// Bank et al., IEEE Trans. Computer-Aided Design 4 (1985) 436, TR-BDF2), second order and stable for steps of
// any size.
//
// Units: cm, s, degrees nowhere. Concentrations in any unit. All work is double precision.

#include <vector>

namespace Quillon {

// A column and what moves in it.
struct LammColumn {
    double Meniscus = 0.0, Bottom = 0.0; // radii, cm; 0 < meniscus < bottom
    double Diffusion = 0.0;              // D, cm^2/s, above 0
    double Sigma = 0.0;                  // s w^2 / D, cm^-2; 0 and below too (what floats)
    int Cells = 400;                     // 2 or more
};

// The state of a column at a time.
struct LammState {
    LammColumn Column;
    double Seconds = 0.0;
    std::vector<double> Mean; // of each cell, from the meniscus
};

// Evenly filled with a concentration at the time 0. A column that is none (radii, diffusion or cells outside
// what is said above, sigma times the column above 300) is a RuntimeError in words.
LammState FilledColumn(const LammColumn& column, double concentration);

// The same at equilibrium, filled with that mean concentration.
LammState ColumnAtRest(const LammColumn& column, double concentration);

// Moves on to a time that is not before that of the state, in so many steps, 1 or more, each longer than the
// one before it by growth (1: all equal).
void AdvanceTo(LammState& state, double seconds, int steps, double growth = 1.0);

// The sector's content per angle and height, concentration times cm^2: what nothing changes.
double MassOf(const LammState& state);

// The concentration at a radius; beyond the ends of the column that at the ends. Between the cells c
// exp(-sigma xi) is linear, so that an equilibrium is met exactly.
double ConcentrationAt(const LammState& state, double radius);

// Concentration at the bottom less that at the meniscus.
double RiseOf(const LammState& state);

} // namespace Quillon
