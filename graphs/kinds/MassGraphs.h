#pragma once
// Apparent masses: the weight-average molar mass that the local slope of a scan implies, against
// concentration or against radius.
//
// A window of n radial points runs along each set. In each place a straight line is fitted to ln(c) against
// r^2/2, and with its slope s, speed w, temperature T and the gas constant R
//
//     M = s R T / ((1 - rho vbar_A) w^2)        buoyant mass without the factor of buoyancy
//
// (Svedberg and Pedersen, The Ultracentrifuge, 1940). c is the signal without the fitted zero offset. Sums
// are doubles about the middle of each window: the slope is a small difference of large numbers.

#include "graphs/kinds/AllSets.h"

#include <string>
#include <vector>

namespace Quillon {

enum class MassAxis { Concentration, Radius };

inline constexpr long FewestMassPoints = 10;
inline constexpr long UsualMassPoints = 20;

struct MassChoice {
    bool OfFit = false;            // the fitted function in place of the data
    long Points = UsualMassPoints; // radial points of a window
    bool SpeciesB = false;         // whose coefficients turn signals into concentrations
};

// The masses of a set, window by window from the centre of rotation outward.
struct MassCurve {
    std::vector<double> X;    // concentration in the unit in force, or radius relative to the middle, cm
    std::vector<double> Mass; // g/mol
    long LeftOut = 0;         // windows with a value that is not positive
};
MassCurve ApparentMasses(MassAxis axis, SetNo set, const MassChoice& choice);

// True for buoyant masses: where units show no true ones.
bool MassesAreBuoyant();

// The longest window: the points of the longest set.
long MostMassPoints();

// Builds the graph of one set, or of AllSets, without showing its window; false when the chart refused
// it. Sets shorter than the window have no points; when no window is left a RuntimeError says so. How many
// were left out stands in the status line of the chart window.
bool MakeMassGraph(MassAxis axis, SetNo set, const MassChoice& choice);

// The commands: ask for data or fit, for the window and, where it matters, for the species; build and show.
// A cancelled box ends the command. The window is kept until the program ends.
void GraphMvsC();
void GraphMvsR();

} // namespace Quillon
