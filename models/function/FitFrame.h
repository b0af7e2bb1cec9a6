#pragma once
// What is constant for a data set at given parameters: everything of the fitted function that does not hang
// on the point.
//
// At sedimentation equilibrium an ideal species of molar mass M has, at the radius r,
//
//     c(r) = c0 exp(sigma (r^2 - r0^2) / 2),   sigma = M (1 - vbar rho) w^2 / (R T)
//
// (T. Svedberg and K. O. Pedersen, The Ultracentrifuge, Clarendon Press 1940, part I; C. Tanford, Physical
// Chemistry of Macromolecules, Wiley 1961, chapter 4). A signal is the sum of its species' exponentials (R.
// H. Haschemeyer and W. F. Bowers, Biochemistry 9 (1970) 435), and at every radius the complexes stand in the
// proportions of mass action to the monomers there (Tanford, chapter 4), so that their concentrations are
// products of powers of the monomers': no complex has a sigma of its own.
//
// A frame is in two halves. The geometry follows from the set alone (speed, path, extinction ratios, molar
// coefficients). The constants follow from the parameters as well; StepFrame derives again exactly those
// that a stepped slot touches. Work.Parms is single precision and is widened as it is read.

#include "workspace/records/Counts.h"

#include <cstdint>

namespace Quillon {

struct FitFrame {
    SetNo CurSet;   // set of the last point
    RowNo CurRow;   // of that set
    RowNo FirstRow; // of set 1
    std::int16_t ConstraintsOn = 0;
    SlotNo SetBase; // first slot of the set
    // The slots that stand for ln c of A and B: the set's own, or those of the set that it follows, TieX cm^2
    // further in at the reference radius (models/function/SharedConcentrations.h).
    SlotNo LeadA, LeadB;
    double TieX = 0.0;

    // Geometry. Signals per 1 molar of a species in the set's own cell (g...), factors from products of
    // monomer signals to molar (k...).
    double ScaleA = 1.0, ScaleB = 1.0; // set signal over first set's signal, species A and B
    double RefPath = 0.0;              // path of set 1, cm
    double SigmaScale = 1.0;
    double kAB = 0.0, kABB = 0.0, kAAB = 0.0, kA = 0.0, kB = 0.0;
    double gA = 0.0, gB = 0.0, gAB = 0.0, gABB = 0.0, gAAB = 0.0, gBB = 0.0;

    // From the parameters.
    double SigmaA = 0.0, SigmaB = 0.0; // of this set, cm^-2
    double LnA = 0.0, LnB = 0.0;       // ln of the monomer signals at the reference radius
    double BFactor = 0.0;              // the non-ideality factor: Parms[7] * Parms[0]
    double PowerN = 0.0, PowerM = 0.0;
    double LnK1 = 0.0, LnK2 = 0.0, LnKAB = 0.0;
    double K1 = 0.0, K2 = 0.0; // exp of LnK1, LnK2
    double Offset = 0.0;

    // Molar concentrations of the complexes over products of the monomer signals a and b: AB = cAB a b,
    // AB2 = cABB a b b, A2B = cAAB a a b, ABBA = cABBA (a b)^2, B2 = cBB b b (a signal in models 12, 13).
    double cAB = 0.0, cABB = 0.0, cAAB = 0.0, cABBA = 0.0, cBB = 0.0;
    double cFirstAB = 0.0, cOtherAB = 0.0; // cAB site by site where the two sites differ (10, 13, 14)

    // Start values of the non-ideal solution, from the point before.
    double LastMonomer = 0.0, LastTotal = 0.0, LastN = 0.0, LastM = 0.0;

    // The parameters that the constants were derived from: eight global ones, three of the set, LeadA, LeadB.
    float From[13] = {};
};

// Fills geometry and constants for a set at the current Work.Parms and resets the start values.
void LoadFrame(FitFrame& frame, SetNo set);

// Derives the constants again for the current Work.Parms, all of them.
void LoadConstants(FitFrame& frame);

// True when Work.Parms still holds what the frame's constants were derived from.
bool FrameIsCurrent(const FitFrame& frame);

// The base frame with one slot of Work.Parms stepped, the stepped value being in Work.Parms already: derives
// what that slot touches and nothing else.
void StepFrame(FitFrame& stepped, const FitFrame& base, SlotNo slot);

} // namespace Quillon
